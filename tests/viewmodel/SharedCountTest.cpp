#include "viewmodel/SharedCount.h"

#include <gtest/gtest.h>

#include <thread>

using namespace TC;

namespace {

TEST(SharedCountTest, ReadsAndWritesLikeAnInt) {
    SharedCount count;
    EXPECT_EQ(count, 0);
    count = 7;
    EXPECT_EQ(count, 7);
    EXPECT_EQ(count - 1, 6);
    const int copied = count;
    EXPECT_EQ(copied, 7);
}

TEST(SharedCountTest, ACopyIsACountOfItsOwn) {
    SharedCount count(3);
    SharedCount copy(count);
    count = 4;
    EXPECT_EQ(copy, 3);
    copy = count;
    count = 5;
    EXPECT_EQ(copy, 4);
}

TEST(SharedCountTest, WhatOneThreadWritesAnotherReadsMeanwhile) {
    SharedCount count;
    std::thread writer([&count] {
        for (int i = 1; i <= 100000; ++i) {
            count = i;
        }
    });
    int last = 0;
    bool ascending = true;
    while (last < 100000) {
        const int seen = count;
        ascending = ascending && seen >= last;
        last = seen;
    }
    writer.join();
    EXPECT_TRUE(ascending);
}

} // namespace
