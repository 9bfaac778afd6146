#include "tests/chartdata/PartsFixture.h"

using namespace TC;

namespace tests {
namespace {

using Day = PartsFixture;

TEST_F(Day, LastTradingDayIsLive) {
    EXPECT_EQ(mDay.date(), kDay);
    EXPECT_TRUE(mDay.isLive());
    mDay.set(kDay - 86400, mView);
    EXPECT_FALSE(mDay.isLive());
}

TEST_F(Day, NoDayIsThatOfTheViewOrNone) {
    mHost.mStocks.mLastTradingDay = 0;
    mDay.set(0, mView);
    EXPECT_EQ(mDay.date(), 0);
    EXPECT_FALSE(mDay.isLive()) << "though the market knows no other";
    mView.mGetTradeDateFunc = [] { return kDay - 86400; };
    mDay.set(0, mView);
    EXPECT_EQ(mDay.date(), kDay - 86400);
    mDay.set(kDay, mView);
    EXPECT_EQ(mDay.date(), kDay);
}

TEST_F(Day, OnlyAReplayHasSomethingAhead) {
    const qint64 ten = QDateTime(QDate(2024, 3, 15), QTime(10, 0)).toMSecsSinceEpoch();
    mDay.setReplayTime(ten + 999);
    EXPECT_EQ(mDay.replayTime(), QTime(10, 0));
    EXPECT_FALSE(mDay.isAhead(QTime(10, 1)));
    mDay.setReplayed(true);
    EXPECT_TRUE(mDay.isAhead(QTime(10, 1)));
    EXPECT_FALSE(mDay.isAhead(QTime(10, 0)));
}

} // namespace
} // namespace tests
