// Styles that are upright bars, and those that are marks, pixel by pixel.

#include "tests/toolkit/DrawStyleDrawing.h"

#include <gtest/gtest.h>

namespace {

using namespace tests;

// Sticks

TEST(CDrawStyleSticksTest, VolumeSticksStandOnTheBottomAtTheirColumns) {
    const Series series = seriesOf(2, {{0, 30, kGap, 100, 50}});
    const QImage image = drawn([&](QPainter *painter) { drawSticks(painter, series, 0, 4, true); });
    // A minute is 10.1 pixels wide, a stick 0.6 of it: the next smaller odd number is 5.
    EXPECT_TRUE(isFilled(image, QRect(8, 70, 5, 31), kRed));
    EXPECT_TRUE(isFilled(image, QRect(28, 0, 5, 101), kRed));
    EXPECT_TRUE(isFilled(image, QRect(38, 50, 5, 51), kRed));
    EXPECT_EQ(countOf(image, kRed), 5 * (31 + 101 + 51)); // none for the gap, none for 0
}

TEST(CDrawStyleSticksTest, SticksAtTheEdgesAreCutByThem) {
    const Series series = seriesOf(2, {{20, 0, 0, 0, 0, 0, 0, 0, 0, 0, 20}});
    const QImage image = drawn([&](QPainter *painter) { drawSticks(painter, series, 0, 10, true); });
    EXPECT_TRUE(isFilled(image, QRect(0, 80, 3, 21), kRed));
    EXPECT_TRUE(isFilled(image, QRect(98, 80, 3, 21), kRed));
    EXPECT_EQ(countOf(image, kRed), 2 * 3 * 21);
}

TEST(CDrawStyleSticksTest, AVolumeIsColouredByThePriceOfItsMinuteAndThePointsColourWins) {
    Series series = seriesOf(2, {{50, 50, 50, 50}});
    series.meta.mLineColors = {se::kDefaultColor};
    series.result.mExtra2 = {{0.02, -0.01, 0.0, 0.02}};
    series.result.mExtra1 = {{se::kDefaultColor, se::kDefaultColor, se::kDefaultColor, kPackedBlue}};
    const QImage image = drawn([&](QPainter *painter) { drawSticks(painter, series, 0, 3, true); });
    EXPECT_EQ(image.pixel(0, 90), theme("ic_clr_index_default_rise"));
    EXPECT_EQ(image.pixel(10, 90), theme("ic_clr_index_default_fall"));
    EXPECT_EQ(image.pixel(20, 90), theme("ic_clr_realtime_colorstick"));
    EXPECT_EQ(image.pixel(30, 90), kBlue);
}

TEST(CDrawStyleSticksTest, OtherSticksStandOnTheZeroRowAndAreColouredBySign) {
    Series series = seriesOf(2, {{40, -30, 0}});
    series.meta.mLineColors.clear();
    const QImage image = drawn([&](QPainter *painter) {
        drawSticks(painter, series, 0, 2, false, {50.0, -50.0});
    });
    // Zero lies on row 50.
    EXPECT_TRUE(isFilled(image, QRect(0, 10, 3, 41), theme("ic_clr_index_default_rise")));
    EXPECT_TRUE(isFilled(image, QRect(8, 50, 5, 31), theme("ic_clr_index_default_fall")));
    EXPECT_EQ(inked(image), QRect(0, 10, 13, 71));
}

TEST(CDrawStyleSticksTest, VolumeColumnsAreOnePixelOrAWholeMinuteWide) {
    const Series series = seriesOf(10, {{0, 50, 0}});
    const auto draw = [&](double share, bool hollow) {
        return drawn([&](QPainter *painter) {
            Draw::drawVolStick(painter, kRect, series, kRange, 0, 0, 2, kLast, 1, false, true, share, hollow);
        });
    };
    const QImage thin = draw(0.0, true);
    EXPECT_TRUE(isFilled(thin, QRect(10, 50, 1, 51), kRed));
    EXPECT_EQ(countOf(thin, kRed), 51);
    const QImage wide = draw(1.0, false); // 10.1 pixels: 9
    EXPECT_TRUE(isFilled(wide, QRect(6, 50, 9, 51), kRed));
    EXPECT_EQ(countOf(wide, kRed), 9 * 51);
    const QImage hollow = draw(1.0, true);
    EXPECT_EQ(inked(hollow), QRect(6, 50, 9, 51));
    EXPECT_TRUE(isFilled(hollow, QRect(7, 51, 7, 49), kBlack));
    EXPECT_EQ(countOf(hollow, kRed), 9 * 51 - 7 * 49);
}

TEST(CDrawStyleSticksTest, ARisingCandleIsHollowAndAFallingOneSolid) {
    Series series = seriesOf(12, {{60, 40}, {40, 60}, {80, 70}, {30, 10}}); // close, open, high, low
    series.meta.mLineColors.clear();
    const QImage image = drawn([&](QPainter *painter) {
        Draw::drawKLine(painter, kRect, series, kRange, 0, 0, 1, kLast, 1, 60, false, 1.0f, 2);
    });
    const QRgb rise = theme("ic_clr_index_default_rise");
    const QRgb fall = theme("ic_clr_index_default_fall");
    // The first is cut by the left edge: columns 0 to 2 of a body of 5.
    EXPECT_TRUE(isFilled(image, QRect(0, 20, 1, 21), rise)); // high to close
    EXPECT_TRUE(isFilled(image, QRect(0, 60, 1, 11), rise)); // open to low
    EXPECT_TRUE(isFilled(image, QRect(0, 41, 2, 19), kBlack)); // the body
    EXPECT_TRUE(isFilled(image, QRect(2, 40, 1, 21), rise));
    EXPECT_TRUE(isFilled(image, QRect(8, 40, 5, 21), fall));
    EXPECT_TRUE(isFilled(image, QRect(10, 30, 1, 61), fall));
    EXPECT_EQ(countOf(image, fall), 5 * 21 + 10 + 30);
}

TEST(CDrawStyleSticksTest, ACandleWithoutFurtherLinesRunsFromCloseToClose) {
    Series series = seriesOf(12, {{40, 60, 60.001}});
    series.meta.mLineColors.clear();
    const QImage image = drawn([&](QPainter *painter) {
        Draw::drawKLine(painter, kRect, series, kRange, 0, 0, 2, kLast, 1, 60, false, 1.0f, 2);
    });
    EXPECT_TRUE(isFilled(image, QRect(8, 40, 1, 21), theme("ic_clr_index_default_rise")));
    // The third agrees with the close before in two decimals.
    EXPECT_TRUE(isFilled(image, QRect(18, 40, 5, 1), theme("ic_clr_index_default_flat")));
}

TEST(CDrawStyleSticksTest, ABarRunsFromTheValueToTheSecondValue) {
    Series series = seriesOf(36, {{70, 20, 50}});
    series.meta.mLineColors.clear();
    series.result.mExtra2 = {{40, 30}}; // the third point has none
    const QImage image = drawn([&](QPainter *painter) {
        Draw::drawStickKline(painter, kRect, series, kRange, 0, 0, 2, kLast, 1, false);
    });
    EXPECT_TRUE(isFilled(image, QRect(0, 30, 3, 31), theme("ic_clr_index_default_rise")));
    EXPECT_TRUE(isFilled(image, QRect(8, 70, 5, 11), theme("ic_clr_index_default_fall")));
    EXPECT_EQ(inked(image), QRect(0, 30, 13, 51));
}

TEST(CDrawStyleSticksTest, ColumnsOfTheSameStyleAreStacked) {
    Series series = seriesOf(42, {{20, 20}, {90, 90}, {30, 30}});
    series.meta.mLineStyles[1] = 0; // a line between them does not count
    series.meta.mLineColors = {kPackedRed, kPackedRed, kPackedBlue};
    const QImage image = drawn([&](QPainter *painter) {
        for (const int line : {0, 2}) {
            Draw::drawStackVolstick(painter, kRect, series, kRange, line, 1, 1, kLast, 1, true, true);
        }
    });
    EXPECT_TRUE(isFilled(image, QRect(8, 80, 5, 21), kRed));
    EXPECT_TRUE(isFilled(image, QRect(8, 50, 5, 30), kBlue));
    EXPECT_EQ(inked(image), QRect(8, 50, 5, 51));
    double max = 0.0;
    double min = 0.0;
    ASSERT_TRUE(Draw::calcMaxMin(max, min, 0, 2, series, 2, kRect));
    EXPECT_DOUBLE_EQ(max, 50.0);
    EXPECT_DOUBLE_EQ(min, 50.0);
}

// Marks

TEST(CDrawStyleSticksTest, DotsAreCentredOnTheirPoints) {
    const Series series = seriesOf(1, {{50, kGap, 20}});
    const QImage image = drawn([&](QPainter *painter) {
        Draw::drawCircleDot(painter, kRect, series, kRange, 0, 0, 2, kLast, 1, true, true);
    });
    // A dot is 5 pixels wide here, its corners missing; the first is cut by the left edge.
    EXPECT_TRUE(isFilled(image, QRect(0, 48, 2, 5), kRed));
    EXPECT_EQ(image.pixel(2, 48), kBlack);
    EXPECT_EQ(image.pixel(2, 49), kRed);
    EXPECT_TRUE(isFilled(image, QRect(18, 79, 5, 3), kRed));
    EXPECT_TRUE(isFilled(image, QRect(19, 78, 3, 5), kRed));
    EXPECT_EQ(countOf(image, kRed), 21 + 13);
}

TEST(CDrawStyleSticksTest, ImagesLieBeneathPointsThatAreNotZero) {
    const Series series = seriesOf(26, {{0, 50, kGap, 70}});
    QPixmap image(5, 4);
    image.fill(Qt::blue);
    const QImage picture = drawn(
        [&](QPainter *painter) { Draw::drawIcon(painter, kRect, series, kRange, 0, 0, 3, kLast, image, 1); });
    EXPECT_TRUE(isFilled(picture, QRect(8, 53, 5, 4), kBlue));
    EXPECT_TRUE(isFilled(picture, QRect(28, 33, 5, 4), kBlue));
    EXPECT_EQ(countOf(picture, kBlue), 40);
    EXPECT_TRUE(inked(drawn([&](QPainter *painter) {
                    Draw::drawIcon(painter, kRect, series, kRange, 0, 0, 3, kLast, QPixmap(), 1);
                })).isNull());
}

TEST(CDrawStyleSticksTest, TextsStandCentredOverTheirPoints) {
    Series series = seriesOf(13, {{50, 50, 50, 50, 50, 50}});
    series.result.mTexts[0] = {"", "", "", "", "", "ooo"};
    const QRect ink = inked(
        drawn([&](QPainter *painter) { Draw::drawText(painter, kRect, series, kRange, 0, 0, 5, kLast, 1); }));
    ASSERT_FALSE(ink.isNull());
    EXPECT_LE(ink.bottom(), 48); // two pixels over the row of the point
    EXPECT_GE(ink.bottom(), 40);
    EXPECT_NEAR(ink.center().x(), 50, 1);
}

TEST(CDrawStyleSticksTest, TextsAtTheEdgeAreMovedInside) {
    Series series = seriesOf(13, {{50, 50, 50, 50, 50, 50, 50, 50, 50, 50, 100}});
    series.result.mTexts[0].assign(11, "");
    series.result.mTexts[0][10] = "oooo";
    const QRect ink = inked(
        drawn([&](QPainter *painter) { Draw::drawText(painter, kRect, series, kRange, 0, 0, 10, kLast, 1); }));
    EXPECT_GE(ink.width(), 20);
    EXPECT_GE(ink.height(), 5);
    EXPECT_GT(ink.right(), 95);
}

TEST(CDrawStyleSticksTest, FixedTextsStandAtTheirShareOfTheHeight) {
    Series series = seriesOf(31, {{0.5, 0.5, 0.5}});
    series.result.mTexts[0] = {"", "", "oo"};
    const QRect ink = inked(drawn([&](QPainter *painter) {
        Draw::drawTextEx(painter, kRect, series, {TC::kUnsetValue, TC::kUnsetValue}, 0, kLast, 1);
    }));
    ASSERT_FALSE(ink.isNull());
    EXPECT_NEAR(ink.center().x(), 20, 1);
    EXPECT_NEAR(ink.center().y(), 50, 4);
}

TEST(CDrawStyleSticksTest, ANumberIsTheSecondValueElseTheValue) {
    Series series = seriesOf(28, {{50}});
    const auto draw = [&](const Series &numbers) {
        return drawn([&](QPainter *painter) {
            Draw::drawNumber(painter, kRect, numbers, kRange, 0, 0, 0, kLast, 1, false);
        });
    };
    const auto text = [&](const char *of) {
        Series texts = series;
        texts.result.mTexts[0] = {of};
        return drawn(
            [&](QPainter *painter) { Draw::drawText(painter, kRect, texts, kRange, 0, 0, 0, kLast, 1); });
    };
    EXPECT_EQ(draw(series), text("50"));
    series.result.mExtra2 = {{12.5}};
    EXPECT_EQ(draw(series), text("12.5"));
    series.result.mExtra2 = {{-0.00004}};
    EXPECT_EQ(draw(series), text("0"));
    series.result.mExtra2 = {{1000.0}};
    EXPECT_EQ(draw(series), text("1000"));
    series.result.mExtra2 = {{TC::kUnsetValue}};
    EXPECT_EQ(draw(series), text("50"));
}

} // namespace
