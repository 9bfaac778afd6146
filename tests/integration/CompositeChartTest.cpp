#include "tests/integration/TerminalFixture.h"

using namespace terminal;

namespace {

/// Asks the formula service for the prices of the running day, as a chart of the kind does.
class CompositeChart : public tests::TerminalFixture {
protected:
    TC::CFormulaParam param(const QString &market, const QString &code) {
        TC::CFormulaParam made;
        made.mRequestId = (market + code).toStdString();
        made.mMarket = market;
        made.mCode = code;
        made.mFormulaName = "REALTIME";
        made.mDataMode = 1;
        made.mDataDemand = 3;
        made.mStart = {dayOf(mToday) * 1000LL, 0};
        made.mEnd = {timeOf(mToday, 900), 0};
        return made;
    }
    void request(const TC::CFormulaParam &made) {
        QVector<TC::CFormulaParam> params{made};
        mServices->formulas().requestFormulas(
            params,
            [this](const TC::FormulaMetaPtr &, const TC::FormulaResultPtr &result, const QString &, int,
                   const QString &, bool) { mSeries = *result; },
            [this](int, const QString &, const TC::FormulaInstantPtr &) { ++mPoints; });
    }
    double lastPrice(const QString &key) {
        return mServices->exchange().dayBars(key, dayOf(mToday)).back().price;
    }
    double lastClose(const QString &key) {
        return TC::CSingletonT<TC::CStockManager>::instance().getCurrentDateLastClose(key, dayOf(mToday));
    }

    se::RPCFormulaResult mSeries;
    int mPoints = 0;
};

} // namespace

TEST_F(CompositeChart, AUserDefinedIndexIsComputedFromItsMembersAndRuns) {
    TC::CFormulaParam index = param("CD", "CD100002");
    index.mStockKind = TC::eUserIndex;
    index.mEnd = {2147483632000LL, 0};
    request(index);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !mSeries.mTimes.empty(); }, 10000));
    EXPECT_EQ(mSeries.mTimes.back().first, mNow) << "a point for every minute up to now";
    const double expected =
        1000.0 * 0.5 *
        (lastPrice("SH600519") / lastClose("SH600519") + lastPrice("SZ000858") / lastClose("SZ000858"));
    EXPECT_NEAR(mSeries.mValues[0].back(), expected, 1e-9);
    mServices->clock().setTime(mNow + 60000);
    EXPECT_TRUE(QTest::qWaitFor([this] { return mPoints > 0; }, 10000));
}

TEST_F(CompositeChart, APortfolioIsWorthItsPositions) {
    TC::CFormulaParam portfolio = param("TZZH", "1");
    portfolio.mStockKind = TC::ePortfolio;
    request(portfolio);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !mSeries.mTimes.empty(); }, 10000));
    EXPECT_NEAR(mSeries.mValues[0].back(),
                20000 * lastPrice("SH600000") + 100 * lastPrice("SH600519") + 50000 * lastPrice("SH510300"),
                1e-6);
}
