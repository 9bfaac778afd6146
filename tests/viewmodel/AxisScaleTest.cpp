#include "viewmodel/AxisScale.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace TC;

namespace {

const CFormulaKey kPrice(QStringLiteral("SH600000"), QStringLiteral("REALTIME"));
const CFormulaKey kVolume(QStringLiteral("SH600000"), QStringLiteral("REALTIMEVOL"));

class AxisPlan : public ::testing::Test {
protected:
    AxisPlan() {
        mLayout.height = 100;
        mLayout.fontHeight = 5; // rows of 16 pixels: 6 ticks
        mLayout.key = kPrice;
        mLayout.volumeKey = kVolume;
        mLayout.sessions = {{570, 690}, {781, 900}};
        mLayout.dayWidth = 482.0; // 2 pixels a minute, from 1
        mLayout.pointCount = 241;
        mLayout.lastClose = [this] {
            ++mCloseAsked;
            return 10.0;
        };
        mLayout.onlyValue = [this] {
            ++mOnlyAsked;
            return 20.0;
        };
    }
    QVector<double> values(const IndexBaseData::MaxMinMap &ranges) const {
        QVector<double> values;
        for (const AxisTick &tick : planAxis(ranges, mLayout).ticks) {
            values.append(tick.value);
        }
        return values;
    }

    AxisLayout mLayout;
    int mCloseAsked = 0;
    int mOnlyAsked = 0;
};

TEST_F(AxisPlan, MainPaneShowsItsRangeAndThatOfTheVolume) {
    mLayout.volume = true;
    EXPECT_EQ(values({{kPrice, {12.0, 8.0}}, {kVolume, {600.0, 0.0}}}),
              (QVector<double>{12.0, 11.0, 10.0, 9.0, 600.0, 300.0}));
    EXPECT_EQ(mCloseAsked + mOnlyAsked, 0);
}

TEST_F(AxisPlan, VolumeIsLeftOutWhereItIsNotShown) {
    EXPECT_EQ(values({{kPrice, {12.0, 6.0}}, {kVolume, {600.0, 0.0}}}),
              (QVector<double>{12.0, 11.0, 10.0, 9.0, 8.0, 7.0}));
}

TEST_F(AxisPlan, MainPaneWithoutRangeStandsAtTheLastClose) {
    EXPECT_EQ(values({}), QVector<double>(6, 10.0));
    EXPECT_EQ(mCloseAsked, 1);
}

TEST_F(AxisPlan, MainPaneTooLowForTwoTicksHasOneInTheMiddle) {
    mLayout.height = 31;
    const AxisShown shown = planAxis({{kPrice, {12.0, 8.0}}}, mLayout);
    ASSERT_EQ(shown.ticks.size(), 1);
    EXPECT_EQ(shown.ticks[0].value, 20.0);
    EXPECT_EQ(shown.ticks[0].y, 15);
    EXPECT_EQ(mOnlyAsked, 1);
}

TEST_F(AxisPlan, SubPaneRunsFromEdgeToEdgeAndStandsAtZeroWithoutRange) {
    mLayout.displayType = EIndexDisplayType::Sub;
    mLayout.height = 32;
    EXPECT_EQ(values({{kPrice, {4.0, 2.0}}}), (QVector<double>{4.0, 3.0, 2.0}));
    EXPECT_EQ(values({}), (QVector<double>{0.0, 0.0, 0.0}));
    mLayout.height = 15;
    EXPECT_EQ(values({{kPrice, {4.0, 2.0}}}), QVector<double>());
    EXPECT_EQ(mCloseAsked + mOnlyAsked, 0);
}

TEST_F(AxisPlan, TimeLinesAreColumnsOfTheDay) {
    EXPECT_EQ(planAxis({}, mLayout).timeLines, (QVector<int>{61, 121, 181, 241, 301, 361, 421}));
}

TEST(AxisScale, ShowsWhatBelongsTogether) {
    AxisScale scale;
    EXPECT_TRUE(scale.shown().ranges.isEmpty() && scale.shown().ticks.isEmpty());
    std::atomic<bool> done{false};
    std::thread writer([&] {
        for (int i = 1; i <= 2000; ++i) {
            scale.show({{{kPrice, {double(i), 0.0}}}, {{double(i), i}}, {i}});
        }
        done = true;
    });
    int reads = 0;
    int torn = 0;
    while (!done || reads == 0) {
        const AxisShown shown = scale.shown();
        ++reads;
        if (!shown.ticks.isEmpty()) {
            const int stamp = shown.timeLines.value(0);
            torn += shown.ticks[0].y != stamp || shown.ranges.value(kPrice).first != stamp;
        }
    }
    writer.join();
    EXPECT_EQ(torn, 0);
    EXPECT_EQ(scale.shown().timeLines, QVector<int>{2000});
}

TEST(StripScales, KnowAStripByItsAddressWhileItsScaleLives) {
    int places[2] = {};
    const auto *strip = reinterpret_cast<const CGraphAxisWidget *>(&places[0]);
    const auto *other = reinterpret_cast<const CGraphAxisWidget *>(&places[1]);
    StripScales scales;
    auto scale = std::make_shared<AxisScale>();
    scales.enter(strip, scale);
    EXPECT_EQ(scales.of(strip), scale);
    EXPECT_EQ(scales.of(other), nullptr);
    EXPECT_EQ(scales.of(nullptr), nullptr);
    scale.reset();
    EXPECT_EQ(scales.of(strip), nullptr) << "the strip has gone";
    scale = std::make_shared<AxisScale>();
    scales.enter(strip, scale);
    EXPECT_EQ(scales.of(strip), scale) << "another one stands in its place";
    scales.remove(strip);
    EXPECT_EQ(scales.of(strip), nullptr);
}

} // namespace
