#include "terminal/formula/TimeLimit.h"

#include <gtest/gtest.h>

#include <thread>

namespace terminal {
namespace {

void computeUntil(std::chrono::steady_clock::time_point end) {
    while (std::chrono::steady_clock::now() < end) {
    }
}

TEST(TimeLimitTest, OnlyTheTimeOfItsOwnThreadCounts) {
    const TimeLimit limit(20);
    std::thread other([] { computeUntil(std::chrono::steady_clock::now() + std::chrono::milliseconds(60)); });
    other.join(); // this thread waits
    EXPECT_FALSE(limit.isOver());
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!limit.isOver() && std::chrono::steady_clock::now() < end) {
    }
    EXPECT_TRUE(limit.isOver());
}

} // namespace
} // namespace terminal
