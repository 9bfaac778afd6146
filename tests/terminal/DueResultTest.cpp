#include "terminal/formula/DueResult.h"

#include <gtest/gtest.h>

using namespace terminal;
using Due = DueResult::Due;

TEST(DueResult, NothingIsDueWithoutAChange) {
    DueResult due(100);
    EXPECT_FALSE(due.wait(0));
    due.note(SeriesChange::None);
    EXPECT_FALSE(due.wait(0));
    EXPECT_EQ(due.take(), Due::Nothing);
}

TEST(DueResult, AFirstChangeIsDueAtOnce) {
    DueResult due(100);
    due.note(SeriesChange::LastPoint);
    EXPECT_EQ(due.wait(5), 0);
    EXPECT_EQ(due.take(), Due::Point);
    EXPECT_FALSE(due.wait(5)) << "it has been taken";
}

TEST(DueResult, TheIntervalLiesBetweenTwoResults) {
    DueResult due(100);
    due.sent(1000);
    due.note(SeriesChange::NewPoint);
    EXPECT_EQ(due.wait(1000), 100);
    EXPECT_EQ(due.wait(1040), 60);
    EXPECT_EQ(due.wait(1100), 0);
    EXPECT_EQ(due.wait(9000), 0);
}

TEST(DueResult, WithoutAnIntervalNothingWaits) {
    DueResult due;
    due.sent(1000);
    due.note(SeriesChange::LastPoint);
    EXPECT_EQ(due.wait(1000), 0);
}

TEST(DueResult, OneCallIsAwaitedAtATime) {
    DueResult due(100);
    due.sent(0);
    due.note(SeriesChange::LastPoint);
    due.await();
    due.note(SeriesChange::LastPoint);
    EXPECT_FALSE(due.wait(50));
    EXPECT_EQ(due.take(), Due::Point);
    due.note(SeriesChange::LastPoint);
    EXPECT_EQ(due.wait(60), 40) << "the call has come";
}

TEST(DueResult, ChangesOfTheLastPointGoOutAsOnePoint) {
    DueResult due;
    due.note(SeriesChange::NewPoint);
    due.note(SeriesChange::LastPoint);
    due.note(SeriesChange::LastPoint);
    EXPECT_EQ(due.take(), Due::Point);
}

TEST(DueResult, TwoPointsGoOutAsTheWholeSeries) {
    DueResult due;
    due.note(SeriesChange::LastPoint);
    due.note(SeriesChange::NewPoint);
    EXPECT_EQ(due.take(), Due::Whole);
}

TEST(DueResult, TheWholeSeriesTakesPointsWithIt) {
    DueResult due;
    due.note(SeriesChange::Whole);
    due.note(SeriesChange::LastPoint);
    due.note(SeriesChange::NewPoint);
    EXPECT_EQ(due.take(), Due::Whole);
    EXPECT_EQ(due.take(), Due::Nothing);
}
