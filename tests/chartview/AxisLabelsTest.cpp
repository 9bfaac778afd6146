#include "chartview/AxisLabels.h"

#include "host/toolkit/Text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace TC;

namespace {

class AxisLabels : public ::testing::Test {
protected:
    AxisLabels() {
        mIn.width = 50;
        mIn.fontHeight = 10;
        mIn.lastClose = 10.0;
        mIn.tickDecimals = 3;
    }
    /// Ticks with these values, 20 pixels apart.
    void setTicks(const QVector<double> &ticks) {
        mIn.ticks.clear();
        for (double value : ticks) {
            mIn.ticks.append({value, static_cast<int>(mIn.ticks.size()) * 20});
        }
    }
    void setSide(bool right) { mIn.right = right; }
    QVector<AxisLabel> plan() const { return planAxisLabels(mIn); }
    QStringList texts() const {
        QStringList texts;
        for (const AxisLabel &label : plan()) {
            texts.append(GZ::formatDoubleNumber(label.number, label.decimals, label.flags, false, "非法值"));
        }
        return texts;
    }
    QStringList colors() const {
        QStringList colors;
        for (const AxisLabel &label : plan()) {
            colors.append(QString(label.color).remove("ic_clr_"));
        }
        return colors;
    }
    AxisLabelInput mIn;
};

TEST_F(AxisLabels, LeftStripIsAlignedToItsRightEdge) {
    setTicks({11.0, 10.5, 10.0});
    const QVector<AxisLabel> labels = plan();
    ASSERT_EQ(labels.size(), 3);
    EXPECT_EQ(labels[0].rect, QRect(0, 0, 48, 10));
    EXPECT_EQ(labels[0].alignment, 0x22);
    EXPECT_EQ(labels[1].rect, QRect(0, 10, 48, 20));
    EXPECT_EQ(labels[1].alignment, 0x82);
    EXPECT_EQ(labels[2].rect, QRect(0, 30, 48, 10));
    EXPECT_EQ(labels[2].alignment, 0x42);
}

TEST_F(AxisLabels, RightStripBeginsFortyEightPixelsFromItsRightEdge) {
    setTicks({11.0, 10.5, 10.0});
    setSide(true);
    mIn.width = 60;
    const QVector<AxisLabel> labels = plan();
    ASSERT_EQ(labels.size(), 3);
    EXPECT_EQ(labels[0].rect, QRect(12, 0, 50, 10));
    EXPECT_EQ(labels[0].alignment, 0x21);
    EXPECT_EQ(labels[1].rect, QRect(12, 10, 50, 20));
    EXPECT_EQ(labels[1].alignment, 0x81);
    EXPECT_EQ(labels[2].rect, QRect(12, 30, 50, 10));
    EXPECT_EQ(labels[2].alignment, 0x41);
}

TEST_F(AxisLabels, LeftStripShowsPricesAndVolumes) {
    mIn.volume = true;
    setTicks({11.0, 10.5, 10.0, 9.5, 23456.0, 11728.0});
    EXPECT_EQ(texts(), (QStringList{"11.000", "10.500", "10.000", "9.500", "2.35万", "1.17万"}));
}

TEST_F(AxisLabels, RightStripShowsPercentagesAndTheSameVolumes) {
    mIn.volume = true;
    setSide(true);
    setTicks({11.0, 10.5, 10.0, 9.5, 23456.0, 11728.0});
    EXPECT_EQ(texts(), (QStringList{"10.00%", "5.00%", "0.00%", "-5.00%", "2.35万", "1.17万"}));
}

TEST_F(AxisLabels, LastPercentageHasTheDecimalsOfThePrice) {
    setSide(true);
    setTicks({11.0, 10.5, 10.0, 9.5});
    EXPECT_EQ(texts(), (QStringList{"10.00%", "5.00%", "0.00%", "-5.000%"}));
}

TEST_F(AxisLabels, LastVolumeIsAlignedToItsTick) {
    mIn.volume = true;
    setTicks({11.0, 10.0, 700.0});
    const QVector<AxisLabel> labels = plan();
    EXPECT_EQ(labels[2].rect, QRect(0, 30, 48, 10));
    EXPECT_EQ(labels[2].alignment, 0x42);
    EXPECT_EQ(labels[2].flags, 0x40000);
    EXPECT_EQ(labels[2].decimals, 0);
}

TEST_F(AxisLabels, BothStripsOfASubPaneShowValues) {
    mIn.displayType = EIndexDisplayType::Sub;
    mIn.volume = true; // of the view; a sub pane has no band
    setTicks({11.0, 10.5, 10.0, 9.5, 9.0, 8.5});
    const QStringList expected{"11.000", "10.500", "10.000", "9.500", "9.000", "8.500"};
    EXPECT_EQ(texts(), expected);
    setSide(true);
    EXPECT_EQ(texts(), expected);
}

TEST_F(AxisLabels, FormulaPrecisionReplacesThatOfThePriceOnASubPaneOnly) {
    setTicks({11.0, 10.0});
    mIn.formulaPrecision = 1;
    EXPECT_EQ(texts(), (QStringList{"11.000", "10.000"}));
    mIn.displayType = EIndexDisplayType::Sub;
    EXPECT_EQ(texts(), (QStringList{"11.0", "10.0"}));
    mIn.formulaPrecision = 0;
    EXPECT_EQ(texts(), (QStringList{"11", "10"}));
}

TEST_F(AxisLabels, PriceAboveHundredThousandIsScaled) {
    mIn.tickDecimals = 2;
    setTicks({100000.1, 100000.0, -100000.1, -100000.0});
    EXPECT_EQ(texts(), (QStringList{"10.00万", "100000.00", "-10.00万", "-100000.00"}));
}

TEST_F(AxisLabels, PercentagesOfAHighPriceAreNotScaled) {
    setSide(true);
    mIn.lastClose = 200000.0;
    setTicks({220000.0, 200000.0});
    EXPECT_EQ(texts(), (QStringList{"10.00%", "0.000%"}));
}

TEST_F(AxisLabels, ColorsWithoutVolumeTurnInTheMiddle) {
    const QString rise = "index_default_rise";
    const QString fall = "index_default_fall";
    const QString middle = "realtime_axis_default_text";
    setTicks({6, 5, 4, 3, 2, 1});
    EXPECT_EQ(colors(), (QStringList{rise, rise, rise, middle, fall, fall}));
    setTicks({2, 1});
    EXPECT_EQ(colors(), (QStringList{rise, middle}));
    setSide(true);
    EXPECT_EQ(colors(), (QStringList{rise, middle}));
}

TEST_F(AxisLabels, ColorsWithVolumeTurnAfterAThirdAndEndWithTheBand) {
    const QString rise = "index_default_rise";
    const QString fall = "index_default_fall";
    const QString middle = "realtime_axis_default_text";
    const QString band = "realtime_colorstick";
    mIn.volume = true;
    setTicks({9, 8, 7, 6, 5, 4, 3, 2, 1});
    EXPECT_EQ(colors(), (QStringList{rise, rise, rise, middle, fall, fall, band, band, band}));
    setTicks({3, 2, 1});
    EXPECT_EQ(colors(), (QStringList{rise, middle, band}));
}

TEST_F(AxisLabels, SubPaneKeepsTheColorOfTheAxis) {
    mIn.displayType = EIndexDisplayType::Sub;
    setTicks({3, 2, 1});
    EXPECT_EQ(colors(), (QStringList{"realtime_axis_text", "realtime_axis_text", "realtime_axis_text"}));
}

TEST_F(AxisLabels, SingleTickShowsTheCloseOnTheLeft) {
    mIn.ticks = {{10.5, 20}};
    mIn.formulaPrecision = 1;
    const QVector<AxisLabel> labels = plan();
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels[0].rect, QRect(0, 10, 48, 20));
    EXPECT_EQ(labels[0].alignment, 0x82);
    EXPECT_EQ(colors(), QStringList{"realtime_axis_text"});
    EXPECT_EQ(texts(), QStringList{"10.500"});
}

TEST_F(AxisLabels, SingleTickShowsZeroPercentOnTheRight) {
    mIn.ticks = {{10.5, 20}};
    setSide(true);
    const QVector<AxisLabel> labels = plan();
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels[0].rect, QRect(2, 10, 50, 20));
    EXPECT_EQ(labels[0].alignment, 0x81);
    EXPECT_EQ(colors(), QStringList{"realtime_axis_text"});
    EXPECT_EQ(texts(), QStringList{"0.00%"}) << "though the tick lies above the last close";
}

TEST_F(AxisLabels, SingleTickOfASubPaneIsOnTheLeftOnlyAndIgnoresTheFormulaPrecision) {
    mIn.displayType = EIndexDisplayType::Sub;
    mIn.formulaPrecision = 1;
    mIn.ticks = {{10.5, 20}};
    EXPECT_EQ(texts(), QStringList{"10.500"});
    setSide(true);
    EXPECT_TRUE(plan().isEmpty());
}

TEST_F(AxisLabels, NoTicksHaveNoLabels) {
    EXPECT_TRUE(plan().isEmpty());
}

TEST_F(AxisLabels, ZeroCloseLeavesThePercentagesAtZero) {
    setSide(true);
    setTicks({11.0, 10.0});
    mIn.lastClose = 0.0;
    EXPECT_EQ(texts(), (QStringList{"0.00%", "0.000%"}));
    mIn.lastClose = 1e-5;
    EXPECT_EQ(texts(), (QStringList{"0.00%", "0.000%"})) << "the tolerance counts as zero";
}

TEST_F(AxisLabels, InvalidNumbersAreSaidToBe) {
    setTicks({std::nan(""), std::numeric_limits<double>::infinity(), kUnsetValue, 1.0});
    EXPECT_EQ(texts(), (QStringList{"非法值", "非法值", "非法值", "1.000"}));
}

TEST_F(AxisLabels, VolumesHaveDecimalsByTheirUnit) {
    mIn.volume = true;
    setTicks({1, 2, 3, 4, 5, 6, 9999.0, 12345678.0, 1234567890.0});
    EXPECT_EQ(texts().mid(6), (QStringList{"9999", "1234.6万", "12.35亿"}));
}

// The button

TEST(LastTickBand, LiesBetweenTheLastTickAndTheBottomEdge) {
    EXPECT_EQ(lastTickBand(QRect(0, 0, 50, 220), 10, 5), QRect(0, 180, 50, 40)) << "20 + 200 * 4 / 5";
    EXPECT_EQ(lastTickBand(QRect(0, 0, 50, 223), 10, 6), QRect(0, 189, 50, 34)) << "20 + 203 * 5 / 6";
    EXPECT_EQ(lastTickBand(QRect(0, 0, 50, 30), 10, 1), QRect(0, 20, 50, 10));
}

TEST(LastTickBand, IsNullWithoutTicks) {
    EXPECT_TRUE(lastTickBand(QRect(0, 0, 50, 220), 10, 0).isNull());
}

} // namespace
