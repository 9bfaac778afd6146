#include "chartdata/RegionFigures.h"

#include <gtest/gtest.h>

#include <cmath>

using TC::regionFigures;
using TC::RegionFigures;

namespace {

const std::vector<double> kPrices{10.0, 10.5, 9.5, 10.2};
const std::vector<double> kVolumes{100.0, 200.0, 300.0, 400.0};

TEST(RegionFiguresTest, TellsTheWholeDay) {
    const RegionFigures all = regionFigures(kPrices, kVolumes, 0, 3);
    EXPECT_DOUBLE_EQ(all.first, 10.0);
    EXPECT_DOUBLE_EQ(all.high, 10.5);
    EXPECT_DOUBLE_EQ(all.low, 9.5);
    EXPECT_DOUBLE_EQ(all.last, 10.2);
    EXPECT_DOUBLE_EQ(all.volume, 1000.0);
    EXPECT_DOUBLE_EQ(all.amount, 10030.0); // 1000 + 2100 + 2850 + 4080
    EXPECT_NEAR(all.change, 0.02, 1e-12);
    EXPECT_NEAR(all.average, 10.05, 1e-12);
    EXPECT_NEAR(all.amplitude, 0.1, 1e-12);
}

TEST(RegionFiguresTest, BothEndsOfAStretchCount) {
    const RegionFigures middle = regionFigures(kPrices, kVolumes, 1, 2);
    EXPECT_DOUBLE_EQ(middle.first, 10.5);
    EXPECT_DOUBLE_EQ(middle.last, 9.5);
    EXPECT_DOUBLE_EQ(middle.volume, 500.0);
    EXPECT_DOUBLE_EQ(middle.average, 10.0);
}

TEST(RegionFiguresTest, OneMinuteHasNoChangeAndNoAmplitude) {
    const RegionFigures one = regionFigures(kPrices, kVolumes, 2, 2);
    EXPECT_EQ(one.change, 0.0);
    EXPECT_EQ(one.amplitude, 0.0);
    EXPECT_EQ(one.average, 9.5);
}

TEST(RegionFiguresTest, ShorterVolumesEndTheirTotalsEarly) {
    const RegionFigures all = regionFigures(kPrices, {100.0, 200.0}, 0, 3);
    EXPECT_DOUBLE_EQ(all.volume, 300.0);
    EXPECT_DOUBLE_EQ(all.amount, 3100.0);
    EXPECT_NEAR(all.average, 10.05, 1e-12);
}

TEST(RegionFiguresTest, AStretchThatEndsBeforeItStartsHasNoTotals) {
    const RegionFigures none = regionFigures(kPrices, kVolumes, 3, 2);
    EXPECT_EQ(none.volume, 0.0);
    EXPECT_EQ(none.amount, 0.0);
    EXPECT_EQ(none.high, 0.0);
    EXPECT_TRUE(std::isnan(none.average)); // nothing by no minutes
    EXPECT_EQ(none.last, 9.5);
}

TEST(RegionFiguresTest, AFirstPriceOfZeroHasNoFiniteRatio) {
    const RegionFigures zero = regionFigures({0.0, 1.0}, {}, 0, 1);
    EXPECT_FALSE(std::isfinite(zero.change));
    EXPECT_FALSE(std::isfinite(zero.amplitude));
}

TEST(RegionFiguresTest, TheHighestIsNeverBelowZero) {
    const RegionFigures negative = regionFigures({-3.0, -2.0}, {}, 0, 1);
    EXPECT_EQ(negative.high, 0.0);
    EXPECT_EQ(negative.low, -3.0);
}

} // namespace
