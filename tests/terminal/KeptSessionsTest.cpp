#include "terminal/market/KeptSessions.h"

#include <gtest/gtest.h>

using namespace terminal;

namespace {

const DaySessions kMorning({{570, 690}});
const DaySessions kEvening({{1260, 1380}});
constexpr int kSomeDay = 1774195200;

} // namespace

TEST(KeptSessions, ADayIsReadOnceUntilAllAreForgotten) {
    KeptSessions kept;
    int readings = 0;
    const auto read = [&] {
        ++readings;
        return kMorning;
    };
    EXPECT_EQ(kept.of(1, kSomeDay, read).table(), kMorning.table());
    EXPECT_EQ(kept.of(1, kSomeDay, read).table(), kMorning.table());
    EXPECT_EQ(readings, 1);
    kept.of(2, kSomeDay, read);
    kept.of(1, kSomeDay + 86400, read);
    EXPECT_EQ(readings, 3) << "another instrument and another day";
    kept.forget();
    kept.of(1, kSomeDay, read);
    EXPECT_EQ(readings, 4);
}

TEST(KeptSessions, WhatWasReadBeforeAChangeIsNotKept) {
    KeptSessions kept;
    const auto read = [&] {
        kept.forget(); // another thread has written meanwhile
        return kMorning;
    };
    EXPECT_EQ(kept.of(1, kSomeDay, read).table(), kMorning.table());
    EXPECT_EQ(kept.of(1, kSomeDay, [] { return kEvening; }).table(), kEvening.table());
}

TEST(KeptSessions, ThereAreNoMoreThanSoMany) {
    KeptSessions kept;
    int readings = 0;
    for (size_t i = 0; i <= KeptSessions::kMost; ++i) {
        kept.of(static_cast<qint64>(i), kSomeDay, [&] {
            ++readings;
            return kMorning;
        });
    }
    kept.of(0, kSomeDay, [&] {
        ++readings;
        return kMorning;
    });
    EXPECT_EQ(readings, static_cast<int>(KeptSessions::kMost) + 2);
}
