#include "terminal/market/SimulatedHistory.h"

#include "host/services/CHostClock.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketWriter.h"
#include "tests/terminal/Samples.h"
#include "tests/terminal/StoreFixture.h"

#include <cmath>

using namespace terminal;
using tests::kShare;

namespace {

class StillClock : public TC::CHostClock {
public:
    QDateTime currentDateTime() const override { return marketDateTime(timeOf(QDate(2026, 11, 20), 630)); }
};

class SimulatedHistoryTest : public StoreFixture {
protected:
    void SetUp() override {
        mBefore = TC::CSingletonT<TC::CHostClock>::install(&mClock);
        openFilledStore(timeOf(mToday, 630));
        mRow = mStore.catalogue()->find(kShare)->id;
        mStored = mStore.days(mRow);
        ASSERT_GE(mStored.size(), 25);
    }
    void TearDown() override { TC::CSingletonT<TC::CHostClock>::install(mBefore); }

    QVector<int> missing(const QDate &first, const QDate &last) {
        return mHistory.missingDays(kShare, timeOf(first, 0), timeOf(last, 900));
    }
    double priceOf(int day) {
        const std::optional<DaySummary> summary = mStore.summary(mRow, day);
        return summary ? summary->close : 0.0;
    }

    const QDate mToday{2026, 11, 20};
    StillClock mClock;
    TC::CHostClock *mBefore = nullptr;
    qint64 mRow = 0;
    QVector<int> mStored;
    SimulatedHistory mHistory{mStore};
};

} // namespace

TEST_F(SimulatedHistoryTest, DaysInFrontOfTheStoredOnesAreMissingAndTradingDaysAlone) {
    const QDate first = dateOf(mStored.first());
    const QVector<int> days = missing(first.addDays(-10), mToday.addDays(30));
    ASSERT_FALSE(days.isEmpty());
    EXPECT_TRUE(std::is_sorted(days.begin(), days.end()));
    for (const int day : days) {
        EXPECT_LT(day, mStored.first()) << "the running day and those to come are not";
        EXPECT_LT(dateOf(day).dayOfWeek(), 6);
    }
    EXPECT_TRUE(missing(first, mToday).isEmpty());
}

TEST_F(SimulatedHistoryTest, UnknownInstrumentsHaveNoHistory) {
    EXPECT_TRUE(mHistory.missingDays("SH999999", 0, timeOf(mToday, 0)).isEmpty());
    EXPECT_FALSE(mHistory.fetchDay("SH999999", mStored.first()).isEmpty());
}

TEST_F(SimulatedHistoryTest, AFetchedDayLeadsUpToTheCloseThatTheNextOneStartsFrom) {
    const double base = mStore.catalogue()->find(kShare)->lastClose; // what the first stored day starts from
    const QVector<int> days = missing(dateOf(mStored.first()).addDays(-10), mToday);
    const int before = days.last();
    ASSERT_EQ(mHistory.fetchDay(kShare, before), "");
    EXPECT_NEAR(priceOf(before), base, 0.005);
    EXPECT_EQ(mStore.summary(mRow, before)->source, BarSource::Simulated);
    EXPECT_GT(mStore.bars(mRow, before).size(), 200u);
    EXPECT_FALSE(missing(dateOf(mStored.first()).addDays(-10), mToday).contains(before));
}

TEST_F(SimulatedHistoryTest, DaysFetchedBackwardsFollowEachOtherLikeAMarket) {
    QVector<int> days = missing(dateOf(mStored.first()).addDays(-20), mToday);
    std::reverse(days.begin(), days.end());
    for (const int day : days) {
        ASSERT_EQ(mHistory.fetchDay(kShare, day), "");
    }
    double before = 0.0;
    for (const int day : mStore.days(mRow)) {
        const DaySummary summary = *mStore.summary(mRow, day);
        EXPECT_GT(summary.low, 0.0);
        if (before > 0.0) {
            EXPECT_LE(std::fabs(summary.open / before - 1.0), 0.1) << "no day opens beyond the limit of 10 %";
        }
        before = summary.close;
    }
}

TEST_F(SimulatedHistoryTest, ADayThatWasLostInTheMiddleStartsFromTheDayBefore) {
    const int lost = mStored[mStored.size() / 2];
    const DaySummary was = *mStore.summary(mRow, lost);
    MarketWriter writer(mStore);
    QSqlQuery remove(mStore.connection());
    ASSERT_TRUE(
        remove.exec(QStringLiteral("DELETE FROM days WHERE instrument = %1 AND day = %2").arg(mRow).arg(lost)));
    ASSERT_TRUE(writer.commit());
    ASSERT_EQ(missing(dateOf(mStored.first()), mToday), QVector<int>{lost});
    ASSERT_EQ(mHistory.fetchDay(kShare, lost), "");
    EXPECT_EQ(priceOf(lost), was.close) << "the same day as before: the market is deterministic";
}

TEST(ClosingAt, AllPricesAreMultipliedAndVolumesStay) {
    MinuteBar bar;
    bar.open = 9.0;
    bar.high = 11.0;
    bar.low = 8.0;
    bar.price = 10.0;
    bar.average = 9.5;
    bar.volume = 300;
    bar.amount = 2850;
    const MinuteBars scaled = closingAt({bar}, 5.01, 0.01);
    EXPECT_NEAR(scaled[0].price, 5.01, 1e-9);
    EXPECT_NEAR(scaled[0].open, 4.51, 1e-9); // 4.509
    EXPECT_NEAR(scaled[0].high, 5.51, 1e-9); // 5.511
    EXPECT_NEAR(scaled[0].low, 4.01, 1e-9); // 4.008
    EXPECT_NEAR(scaled[0].average, 4.7595, 1e-9);
    EXPECT_EQ(scaled[0].volume, 300);
    EXPECT_NEAR(scaled[0].amount, 1427.85, 1e-9);
    EXPECT_TRUE(closingAt({}, 5.0, 0.01).empty());
}
