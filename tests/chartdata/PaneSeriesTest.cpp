#include "tests/chartdata/PartsFixture.h"

using namespace TC;

namespace tests {
namespace {

class Series : public PartsFixture {
protected:
    const CFormulaKey kMain = key("SH600000");
    const CFormulaKey kOverlay = key("SZ000001");

    void addOverlay() { mView.addStock(QStringLiteral("SZ000001"), QString(), true); }
    std::vector<double> values(const CFormulaKey &of) const { return mShown.value(of).result.mValues[0]; }
    SeriesPoint merge(const CFormulaKey &of, int minute, double value) {
        se::RPCFormulaResultCache *series = mSeries.find(of, mSeries.roleOf(of));
        const FormulaInstantPtr point = makePoint(minuteTime(kDay, minute), {value});
        return mSeries.merge(*series, mSeries.roleOf(of), findPlace(series->result.mTimes, point->mTime),
                             *point);
    }
};

TEST_F(Series, RolesFollowWhatTheViewShows) {
    EXPECT_EQ(mSeries.roleOf(kMain), ESeriesRole::Main);
    EXPECT_EQ(mSeries.roleOf(kOverlay), ESeriesRole::Ordinary);
    addOverlay();
    EXPECT_EQ(mSeries.roleOf(kOverlay), ESeriesRole::Overlay);
    EXPECT_EQ(mSeries.roleOf(key("SH600000", "MACD")), ESeriesRole::Ordinary);
    mFormulas = QList<QString>{"MACD"}; // the basic formula is not shown: another one is the chart
    EXPECT_EQ(mSeries.roleOf(key("SH600000", "MACD")), ESeriesRole::Main);
}

TEST_F(Series, LengthOfTheMainSeriesIsTheDataCountOfALiveDay) {
    store(kMain, {10.0, 10.1, 10.2});
    EXPECT_EQ(mView.dataCount(), 3);
    merge(kMain, 573, 10.3);
    EXPECT_EQ(mView.dataCount(), 4);
    mDay.set(kDay - 86400, mView);
    store(kMain, {10.0});
    EXPECT_EQ(mView.dataCount(), 4) << "a past day has no count to tell";
}

TEST_F(Series, OverlayIsShownOnThePointsOfTheMainSeriesOnceThatIsThere) {
    addOverlay();
    store(kOverlay, {20.0, 20.1, 20.2, 20.3});
    EXPECT_EQ(mSeries.align(kOverlay, 0).series, nullptr);
    EXPECT_FALSE(mShown.contains(kOverlay));
    store(kMain, {10.0, 10.1});
    ASSERT_EQ(mSeries.overlays().size(), 1u);
    const SeriesPoint changed = mSeries.align(kOverlay, 0);
    EXPECT_EQ(changed.index, 0u);
    EXPECT_EQ(changed.series, &*mShown.constFind(kOverlay));
    EXPECT_EQ(values(kOverlay), (std::vector<double>{20.0, 20.1}));
    EXPECT_EQ(mSeries.align(kOverlay, 0).series, nullptr) << "nothing is different now";
}

TEST_F(Series, OverlayIsShownAsItCameWhereGapsAreFilled) {
    addOverlay();
    mSeries.setFillsGaps(true);
    store(kMain, {10.0});
    store(kOverlay, {20.0, 20.1, 20.2});
    mSeries.align(kOverlay, 0);
    EXPECT_EQ(values(kOverlay), (std::vector<double>{20.0, 20.1, 20.2}));
}

TEST_F(Series, MergedPointIsToldWhereItIsShown) {
    addOverlay();
    store(kMain, {10.0, 10.1});
    store(kOverlay, {20.0, 20.1});
    EXPECT_EQ(merge(kMain, 570, 10.5).index, 0u);
    EXPECT_EQ(merge(kMain, 570, 10.5).series, nullptr) << "the same value";
    EXPECT_EQ(merge(kOverlay, 570, 20.5).series, nullptr) << "raw, it is not shown";
}

TEST_F(Series, OverlaysGoAndTheMainInstrumentStays) {
    addOverlay();
    mView.addStock(QStringLiteral("SH600000"), QString(), true); // laid over itself
    store(kMain, {10.0});
    store(kOverlay, {20.0});
    mSeries.align(kOverlay, 0);
    mSeries.removeOverlays(QStringLiteral("REALTIME"));
    EXPECT_EQ(mShown.keys(), QList<CFormulaKey>{kMain});
    EXPECT_TRUE(mSeries.overlays().empty());
}

} // namespace
} // namespace tests
