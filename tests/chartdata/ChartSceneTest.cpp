// One description of a drawing: whatever in it the price band is drawn from tells two bands apart, and nothing else.

#include "chartdata/ChartScene.h"

#include "tests/chartdata/PartsFixture.h"

#include <functional>

using namespace TC;

namespace tests {
namespace {

class Scene : public PartsFixture {
protected:
    Scene() {
        mPrice.meta = mVolume.meta = *makeMeta(1);
        mPrice.result = *makeResult(minuteTimes(kDay, 570, 3), {10.0, 10.1, 10.2});
        mVolume.result = *makeResult(minuteTimes(kDay, 570, 3), {100.0, 200.0, 300.0});
    }
    ChartScene scene() const {
        ChartScene scene;
        scene.pane = QSize(300, 200);
        scene.theme = 1;
        scene.columns = {61, 121};
        scene.rows = {0, 20};
        scene.hasVolumeBand = true;
        scene.end = 2;
        for (const bool volume : {false, true}) {
            SceneSeries series;
            series.series = volume ? &mVolume : &mPrice;
            series.inVolumeBand = volume;
            series.target = volume ? QRect(1, 136, 298, 60) : QRect(1, 3, 298, 128);
            series.end = 2;
            series.last = 240;
            SceneLine line;
            line.range = {11.0, 9.0};
            series.lines = {line};
            scene.lines.push_back(series);
        }
        return scene;
    }

    se::RPCFormulaResultCache mPrice;
    se::RPCFormulaResultCache mVolume;
};

TEST_F(Scene, EqualScenesHaveEqualBands) {
    EXPECT_NE(priceBandDigest(scene()), 0u);
    EXPECT_EQ(priceBandDigest(scene()), priceBandDigest(scene()));
}

TEST_F(Scene, PriceBandDiffersWithEverythingThatItIsDrawnFrom) {
    using Change = std::function<void(ChartScene &)>;
    se::RPCFormulaResultCache other = mPrice;
    other.result.mValues[0][1] += 1e-9;
    const std::vector<Change> changes = {
        [](ChartScene &s) { s.pane.rwidth() += 1; },
        [](ChartScene &s) { s.pane.rheight() += 1; },
        [](ChartScene &s) { s.ratio = 2.0; },
        [](ChartScene &s) { s.theme = 2; },
        [](ChartScene &s) { s.columns[1] = 122; },
        [](ChartScene &s) {
            s.rows = {0, 20, 40};
        },
        [](ChartScene &s) { std::swap(s.columns, s.rows); },
        [](ChartScene &s) { s.end = 1; },
        [](ChartScene &s) { s.lines.erase(s.lines.begin()); },
        [&](ChartScene &s) { s.lines[0].series = &other; },
        [](ChartScene &s) { s.lines[0].target.translate(0, 1); },
        [](ChartScene &s) { s.lines[0].target.setHeight(90); },
        [](ChartScene &s) { s.lines[0].start = 1; },
        [](ChartScene &s) { s.lines[0].end = 1; },
        [](ChartScene &s) { s.lines[0].last = 241; },
        [](ChartScene &s) { s.lines[0].lines[0].line = 1; },
        [](ChartScene &s) { s.lines[0].lines[0].style = 5; },
        [](ChartScene &s) { s.lines[0].lines[0].range.first = 12.0; },
        [](ChartScene &s) { s.lines[0].lines[0].range.second = 8.0; },
        [](ChartScene &s) { s.lines[0].lines[0].gradient = true; },
        [](ChartScene &s) { s.lines[0].lines[0].volume = true; },
        [](ChartScene &s) { s.lines[0].lines[0].digits = 3; },
    };
    const quint64 before = priceBandDigest(scene());
    for (std::size_t i = 0; i < changes.size(); ++i) {
        ChartScene changed = scene();
        changes[i](changed);
        EXPECT_NE(priceBandDigest(changed), before) << "change " << i;
    }
}

TEST_F(Scene, VolumeLeavesThePriceBandAsItIs) {
    const quint64 before = priceBandDigest(scene());
    ChartScene changed = scene();
    changed.lines[1].lines[0].range.first = 900.0;
    mVolume.result.mValues[0][2] = 900.0;
    EXPECT_EQ(priceBandDigest(changed), before);
    changed.hasVolumeBand = false;
    EXPECT_EQ(priceBandDigest(changed), 0u) << "no band to draw by itself";
}

// What a scene is read from

TEST_F(Scene, LiveDayLeavesTheNewestSegmentToTheTail) {
    store(key("SH600000"), {10.0, 10.1, 10.2, 10.3});
    mRanges.adopt({{key("SH600000"), {11.0, 9.0}}}, true);
    const ChartScene still = mScene.still(QSize(300, 200), 1.0);
    EXPECT_EQ(still.end, 2);
    ASSERT_EQ(still.lines.size(), 1u);
    EXPECT_EQ(still.lines[0].end, 2);
    EXPECT_EQ(still.lines[0].last, 240);
    ASSERT_TRUE(mScene.hasTail());
    const SceneLines tail = mScene.tail(QSize(300, 200));
    ASSERT_EQ(tail.size(), 1u);
    EXPECT_EQ(tail[0].start, 2);
    EXPECT_EQ(tail[0].end, 3);
}

TEST_F(Scene, PastDayIsStillAsAWhole) {
    mDay.set(kDay - 86400, mView);
    store(key("SH600000"), {10.0, 10.1, 10.2, 10.3});
    EXPECT_EQ(mScene.lastStill(), 3);
    EXPECT_FALSE(mScene.hasTail());
}

TEST_F(Scene, SeriesWithoutADrawnRangeIsNotInIt) {
    store(key("SH600000"), {10.0, 10.1, 10.2});
    EXPECT_TRUE(mScene.still(QSize(300, 200), 1.0).lines.empty());
}

TEST_F(Scene, CandlesTakeTheDecimalsOfThePriceStep) {
    mHost.mStocks.mDetails.value(QStringLiteral("SH600000"))->mPriceTick = 0.001;
    store(key("SH600000"), {10.0, 10.1, 10.2}, 12);
    mRanges.adopt({{key("SH600000"), {11.0, 9.0}}}, true);
    const ChartScene still = mScene.still(QSize(300, 200), 1.0);
    ASSERT_EQ(still.lines.size(), 1u);
    ASSERT_EQ(still.lines[0].lines.size(), 1u);
    EXPECT_EQ(still.lines[0].lines[0].digits, 3);
}

TEST_F(Scene, VolumeBandCanBeDrawnByItselfOnWholePixelsWithoutFilledGaps) {
    EXPECT_TRUE(mScene.still(QSize(300, 200), 2.0).hasVolumeBand);
    EXPECT_FALSE(mScene.still(QSize(300, 200), 1.5).hasVolumeBand);
    mSeries.setFillsGaps(true);
    EXPECT_FALSE(mScene.still(QSize(300, 200), 2.0).hasVolumeBand);
    mSeries.setFillsGaps(false);
    mView.mShowVolume = false;
    EXPECT_FALSE(mScene.still(QSize(300, 200), 2.0).hasVolumeBand);
}

} // namespace
} // namespace tests
