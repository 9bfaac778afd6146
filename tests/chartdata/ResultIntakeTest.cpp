// What results come to: series, ranges, overlays that follow, and the newest average.

#include "chartdata/ResultIntake.h"
#include "tests/chartdata/PartsFixture.h"

using namespace TC;

namespace tests {
namespace {

class Results : public PartsFixture {
protected:
    Results() { mPicture.setRect(QRect(0, 0, 300, 200)); }
    /// Minutes from 09:30 on.
    static FormulaResultPtr minutes(std::vector<std::vector<double>> lines) {
        const int count = static_cast<int>(lines[0].size());
        return makeResult(minuteTimes(kDay, 570, count), std::move(lines));
    }
    Intake history(const CFormulaKey &of, const std::vector<std::vector<double>> &lines,
                   bool keepRange = false) {
        return mIntake.history(of, makeMeta(static_cast<int>(lines.size())), minutes(lines), keepRange);
    }
    std::vector<double> shown(const CFormulaKey &of) const { return mShown.value(of).result.mValues[0]; }

    const CFormulaKey kChart = key("SH600000");
    const CFormulaKey kLaidOver = key("SZ000001");
    ChartPicture mPicture{mScene, mView, [] { return false; }};
    ResultIntake mIntake{mSeries, mRanges, mPicture};
};

TEST_F(Results, WholeSeriesBringsItsRangeAndTheNewestAverage) {
    const Intake intake = history(kChart, {{10.0, 10.5}, {10.0, 10.2}});
    EXPECT_EQ(intake.flags, eSeriesChanged | eRangeChanged);
    EXPECT_EQ(intake.average, 10.2);
    EXPECT_NEAR(mWanted.value(kChart).first, 10.5, 1e-9);
    EXPECT_NEAR(mWanted.value(kChart).second, 9.5, 1e-9);
    EXPECT_EQ(history(kChart, {{10.0, 10.5}}).average, 0.0) << "without a line of averages";
}

TEST_F(Results, WhatIsNotTheChartTellsNoAverage) {
    EXPECT_FALSE(history(key("SH600000", "MACD"), {{1.0, 2.0}, {1.0, 2.0}}).average);
}

TEST_F(Results, RangeThatIsKeptAndStillHoldsChangesNothing) {
    history(kChart, {{10.0, 10.5}});
    EXPECT_EQ(history(kChart, {{10.0, 10.4}}, true).flags, eSeriesChanged);
    EXPECT_NEAR(mWanted.value(kChart).first, 10.5, 1e-9);
    EXPECT_EQ(history(kChart, {{10.0, 10.4}}, false).flags, eSeriesChanged | eRangeChanged);
    EXPECT_NEAR(mWanted.value(kChart).first, 10.4, 1e-9);
}

TEST_F(Results, NoPointStartsASeries) {
    const Intake intake = mIntake.point(kChart, *makePoint(minuteTime(kDay, 570), {10.0, 10.0}));
    EXPECT_EQ(intake.flags, eNothingChanged);
    EXPECT_FALSE(intake.average);
    EXPECT_TRUE(mShown.isEmpty());
}

TEST_F(Results, NewestPointChangesInPlaceAndTheNextOneIsAdded) {
    history(kChart, {{10.0, 10.5}, {10.0, 10.2}});
    Intake intake = mIntake.point(kChart, *makePoint(minuteTime(kDay, 571), {10.3, 10.1}));
    EXPECT_EQ(intake.flags, ePointChanged);
    EXPECT_EQ(intake.average, 10.1);
    EXPECT_EQ(shown(kChart), (std::vector<double>{10.0, 10.3}));
    intake = mIntake.point(kChart, *makePoint(minuteTime(kDay, 572), {10.4, 10.15}));
    EXPECT_EQ(intake.flags, ePointChanged | eSeriesChanged);
    EXPECT_EQ(shown(kChart), (std::vector<double>{10.0, 10.3, 10.4}));
}

TEST_F(Results, PointBeyondTheRangeWidensIt) {
    history(kChart, {{10.0, 10.5}});
    EXPECT_EQ(mIntake.point(kChart, *makePoint(minuteTime(kDay, 571), {11.0})).flags,
              ePointChanged | eRangeChanged);
    EXPECT_NEAR(mWanted.value(kChart).first, 11.0, 1e-9);
    EXPECT_NEAR(mWanted.value(kChart).second, 9.0, 1e-9) << "centred on the close before the day";
}

TEST_F(Results, OverlaysFollowTheMainSeries) {
    mView.addStock(QStringLiteral("SZ000001"), QString(), true);
    EXPECT_FALSE(history(kLaidOver, {{20.0, 20.1, 20.2}}).average);
    EXPECT_FALSE(mShown.contains(kLaidOver)) << "there is nothing yet to lie on";
    history(kChart, {{10.0, 10.1}});
    EXPECT_EQ(shown(kLaidOver), (std::vector<double>{20.0, 20.1}));
    mIntake.point(kChart, *makePoint(minuteTime(kDay, 572), {10.2}));
    EXPECT_EQ(shown(kLaidOver), (std::vector<double>{20.0, 20.1, 20.2}));
}

TEST_F(Results, WholeSeriesThatIsPushedGivesItsLastPointAlone) {
    EXPECT_EQ(mIntake.pushed(kChart, makeMeta(1), minutes({{10.0, 10.5}})).flags,
              eSeriesChanged | eRangeChanged)
        << "the first starts the series";
    const Intake intake = mIntake.pushed(kChart, makeMeta(1), minutes({{9.0, 9.0, 10.4}}));
    EXPECT_EQ(intake.flags, eSeriesChanged);
    EXPECT_EQ(shown(kChart), (std::vector<double>{10.0, 10.5, 10.4}));
}

} // namespace
} // namespace tests
