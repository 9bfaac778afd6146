#include "terminal/formula/RunShare.h"

#include "terminal/formula/FormulaCosts.h"

#include <gtest/gtest.h>

using namespace terminal;
using std::chrono::milliseconds;

TEST(RunShare, AShortRunNeedsNoPause) {
    RunShare share;
    share.note(milliseconds(19), false, 0);
    EXPECT_FALSE(share.isLong());
    EXPECT_EQ(share.pause(), 0);
    share.note(milliseconds(99), true, 0);
    EXPECT_FALSE(share.isLong()) << "a whole series may take more";
}

TEST(RunShare, ALongRunIsFollowedByAPauseThatKeepsItToAFifthOfAProcessor) {
    RunShare share;
    share.note(milliseconds(900), false, 0);
    EXPECT_TRUE(share.isLong());
    EXPECT_EQ(share.pause(), 3600);
    EXPECT_FALSE(share.isTold());
}

TEST(RunShare, LongRunsAreToldWhenTheyGoOnForSeconds) {
    RunShare share;
    for (qint64 now = 1000; now < 4000; now += 500) {
        share.note(milliseconds(30), false, now);
        EXPECT_FALSE(share.isTold()) << now;
    }
    share.note(milliseconds(30), false, 4000);
    EXPECT_TRUE(share.isTold());
    share.note(milliseconds(1), false, 4500);
    EXPECT_FALSE(share.isTold());
    share.note(milliseconds(30), false, 5000);
    EXPECT_FALSE(share.isTold()) << "patience begins anew";
}

TEST(FormulaCosts, AFormulaKnownToBeLongStartsOnTheSlowLane) {
    FormulaCosts costs;
    EXPECT_EQ(costs.firstLane("A", WorkLane::First), WorkLane::First);
    EXPECT_EQ(costs.firstLane("A", WorkLane::Price), WorkLane::Price);
    costs.note("A", true);
    EXPECT_EQ(costs.firstLane("A", WorkLane::Price), WorkLane::Slow) << "whatever it draws";
    costs.note("A", false);
    EXPECT_EQ(costs.firstLane("A", WorkLane::First), WorkLane::Quick);
    EXPECT_EQ(costs.firstLane("A", WorkLane::Price), WorkLane::Price);
}
