// Styles that are lines, pixel by pixel.

#include "tests/toolkit/DrawStyleDrawing.h"

#include <gtest/gtest.h>

namespace {

using namespace tests;

TEST(CDrawStyleLinesTest, ALevelLineIsOnePixelHighFromColumnToColumn) {
    const Series series = seriesOf(0, {{40, 40, 40}});
    const QImage image = drawn([&](QPainter *painter) { drawLine(painter, series, 0, 2); });
    EXPECT_EQ(inked(image), QRect(0, 60, 21, 1));
    EXPECT_EQ(countOf(image, kRed), 21);
}

TEST(CDrawStyleLinesTest, ALevelLineAtRatioTwoIsTwoSharpDevicePixelsHigh) {
    const Series series = seriesOf(0, {{40, 40, 40}});
    const QImage image = drawn([&](QPainter *painter) { drawLine(painter, series, 0, 2); }, 2.0);
    EXPECT_EQ(inked(image), QRect(0, 120, 42, 2));
    EXPECT_EQ(countOf(image, kRed), 84);
}

TEST(CDrawStyleLinesTest, RisingAndFallingLinesAreEquallyThick) {
    const Series falling = seriesOf(0, {{90, 80}});
    const Series rising = seriesOf(0, {{80, 90}});
    for (const double ratio : {1.0, 2.0}) {
        const QImage down = drawn([&](QPainter *painter) { drawLine(painter, falling, 0, 1); }, ratio);
        const QImage up = drawn([&](QPainter *painter) { drawLine(painter, rising, 0, 1); }, ratio);
        EXPECT_EQ(countOf(up, kRed), countOf(down, kRed)) << ratio;
        const QRect part(QPoint(0, 10) * ratio, QSize(11, 11) * ratio);
        EXPECT_EQ(up.copy(part).mirrored(true, false), down.copy(part)) << ratio;
    }
}

TEST(CDrawStyleLinesTest, ALineIsSharpUnderAnAntialiasingPainterToo) {
    const Series series = seriesOf(0, {{10, 90, 20, 70}});
    const auto draw = [&](QPainter *painter) { drawLine(painter, series, 0, 3); };
    const QImage antialiased = drawn([&](QPainter *painter) {
        painter->setRenderHint(QPainter::Antialiasing);
        draw(painter);
        EXPECT_TRUE(painter->testRenderHint(QPainter::Antialiasing));
    });
    EXPECT_EQ(antialiased, drawn(draw));
    EXPECT_EQ(countOf(antialiased, kRed) + countOf(antialiased, kBlack), 101 * 101);
}

TEST(CDrawStyleLinesTest, ALinePassesThroughItsPoints) {
    const Series series = seriesOf(0, {{0, 100, 35, 80, 80, 5, 99, 50, 1, 100, 0}});
    const QImage image = drawn([&](QPainter *painter) { drawLine(painter, series, 0, 10); });
    for (int i = 0; i <= kLast; ++i) {
        EXPECT_EQ(image.pixel(10 * i, 100 - int(series.result.mValues[0][std::size_t(i)])), kRed) << i;
    }
}

TEST(CDrawStyleLinesTest, AGapIsReallyEmpty) {
    const Series series = seriesOf(0, {{50, 50, kGap, 50, 50}});
    const QImage image = drawn([&](QPainter *painter) { drawLine(painter, series, 0, 4); });
    EXPECT_TRUE(isFilled(image, QRect(0, 50, 11, 1), kRed));
    EXPECT_TRUE(isFilled(image, QRect(11, 0, 19, 101), kBlack));
    EXPECT_TRUE(isFilled(image, QRect(30, 50, 11, 1), kRed));
}

TEST(CDrawStyleLinesTest, InvalidUnsetAndInfinitePointsAreGaps) {
    for (const double value : {kInfinity, -kInfinity, kNaN, TC::kUnsetValue, 50.0}) {
        Series series = seriesOf(0, {{50, 50, 50, 50, 50}});
        series.result.mValues[0][2] = value;
        series.result.mValid[2] = value == 50.0 ? 0 : 1;
        const QImage image = drawn([&](QPainter *painter) { drawLine(painter, series, 0, 4); });
        EXPECT_TRUE(isFilled(image, QRect(11, 0, 19, 101), kBlack)) << value;
        EXPECT_EQ(countOf(image, kRed), 22) << value;
    }
}

TEST(CDrawStyleLinesTest, APointAloneIsADot) {
    const Series series = seriesOf(0, {{kGap, 30, kGap, 70}});
    const QImage image = drawn([&](QPainter *painter) { drawLine(painter, series, 0, 3); });
    EXPECT_EQ(countOf(image, kRed), 2);
    EXPECT_EQ(image.pixel(10, 70), kRed);
    EXPECT_EQ(image.pixel(30, 30), kRed);
    const QImage twice = drawn([&](QPainter *painter) { drawLine(painter, series, 1, 1); }, 2.0);
    EXPECT_EQ(inked(twice), QRect(20, 140, 2, 2));
}

TEST(CDrawStyleLinesTest, ThePartThatLeadsToAPointHasItsColour) {
    Series series = seriesOf(0, {{50, 50, 50}});
    series.result.mExtra1[0] = {kPackedRed, kPackedBlue, se::kDefaultColor};
    const QImage image = drawn([&](QPainter *painter) { drawLine(painter, series, 0, 2); });
    EXPECT_TRUE(isFilled(image, QRect(0, 50, 10, 1), kBlue));
    EXPECT_TRUE(isFilled(image, QRect(11, 50, 10, 1), kRed));
}

TEST(CDrawStyleLinesTest, AFixedLineKeepsItsColourWhateverItsPointsSay) {
    Series series = seriesOf(0, {{50, 50}});
    series.result.mExtra1[0] = {kPackedBlue, kPackedBlue};
    series.meta.mLineFlags = {se::kLineFixedColor};
    const QImage image = drawn([&](QPainter *painter) { drawLine(painter, series, 0, 1); });
    EXPECT_EQ(countOf(image, kRed), 11);
    EXPECT_EQ(countOf(image, kBlue), 0);
}

TEST(CDrawStyleLinesTest, ALineWithoutAColourTakesTheThemesInTurn) {
    Series series = seriesOf(0, std::vector<std::vector<double>>(9, {50, 50}));
    series.meta.mLineColors.assign(9, se::kDefaultColor);
    const char *const keys[] = {"ic_clr_index_line_1", "ic_clr_index_line_2", "ic_clr_index_line_8",
                                "ic_clr_index_line_1"};
    const int lines[] = {0, 1, 7, 8};
    for (int i = 0; i < 4; ++i) {
        const QImage image = drawn([&](QPainter *painter) {
            Draw::drawSimpleLine(painter, kRect, series, kRange, lines[i], 0, 1, kLast, Qt::SolidLine, 1, true,
                                 false, 1.0f, false, true);
        });
        EXPECT_EQ(countOf(image, theme(keys[i])), 11) << lines[i];
    }
}

TEST(CDrawStyleLinesTest, AHiddenLineIsNotDrawn) {
    Series series = seriesOf(0, {{50, 50}});
    series.meta.mLineAxis = {se::eLineHidden};
    EXPECT_TRUE(inked(drawn([&](QPainter *painter) { drawLine(painter, series, 0, 1); })).isNull());
    EXPECT_TRUE(Draw::touchedRect(kRect, series, 0, 0, 1, kLast).isNull());
}

TEST(CDrawStyleLinesTest, NothingIsDrawnOutsideTheRectangle) {
    const QRect rect(20, 30, 50, 40);
    Series series = seriesOf(0, {{-500, 700, 50, 1e300, -1e300, 50, 200, -20, 120, -5, 50}});
    series.result.mTexts[0].assign(11, "text");
    series.result.mExtra2 = {{700, -500, 900, 0, 0, 5, -7, 3, 50, 60, 400}};
    QPixmap image(15, 15);
    image.fill(Qt::green);
    const auto inside = [&](const char *name, const std::function<void(QPainter *)> &draw) {
        for (const double ratio : {1.0, 2.0}) {
            const QRect touched = inked(drawn(draw, ratio));
            const QRect allowed(rect.topLeft() * ratio, rect.size() * ratio);
            EXPECT_TRUE(allowed.contains(touched)) << name << " at ratio " << ratio;
            EXPECT_FALSE(touched.isNull()) << name;
        }
    };
    using P = QPainter *;
    inside("line", [&](P p) { drawLine(p, series, 0, 10, rect); });
    inside("tail", [&](P p) { drawLine(p, series, 2, 5, rect); });
    inside("dotted", [&](P p) { drawLine(p, series, 0, 10, rect, Qt::DotLine); });
    inside("gradient", [&](P p) { drawLine(p, series, 0, 10, rect, Qt::SolidLine, true); });
    inside("dot", [&](P p) { Draw::drawCircleDot(p, rect, series, kRange, 0, 0, 10, kLast, 1, true, true); });
    inside("stick", [&](P p) {
        Draw::drawColorStick(p, rect, series, kRange, 0, 0, 10, kLast, Qt::SolidLine, 1, true, false, true);
    });
    inside("volume", [&](P p) {
        Draw::drawVolStick(p, rect, series, kRange, 0, 0, 10, kLast, 1, false, true, 1.0, true);
    });
    inside("candle",
           [&](P p) { Draw::drawKLine(p, rect, series, kRange, 0, 0, 10, kLast, 1, 60, false, 1.0f, 2); });
    inside("text", [&](P p) { Draw::drawText(p, rect, series, kRange, 0, 0, 10, kLast, 1); });
    inside("fixed text", [&](P p) { Draw::drawTextEx(p, rect, series, kRange, 0, kLast, 1); });
    inside("number", [&](P p) { Draw::drawNumber(p, rect, series, kRange, 0, 0, 10, kLast, 1, false); });
    inside("icon", [&](P p) { Draw::drawIcon(p, rect, series, kRange, 0, 0, 10, kLast, image, 1); });
    inside("bar", [&](P p) { Draw::drawStickKline(p, rect, series, kRange, 0, 0, 10, kLast, 1, false); });
    inside("bool",
           [&](P p) { Draw::drawBoolLine(p, rect, series, kRange, 0, 0, 10, kLast, Qt::SolidLine, 1); });
    inside("segment", [&](P p) { Draw::drawSegmentLine(p, rect, series, kRange, 0, 0, 10, kLast, 1, false); });
    inside("stack",
           [&](P p) { Draw::drawStackVolstick(p, rect, series, kRange, 0, 0, 10, kLast, 1, true, true); });
    inside("upright",
           [&](P p) { Draw::drawVertLine(p, rect, series, kRange, 0, 0, 10, kLast, Qt::DotLine, 1); });
}

TEST(CDrawStyleLinesTest, TheClipOfThePainterIsRespectedAndKept) {
    const Series series = seriesOf(0, {{-50, 150, -50, 150, -50, 150, -50, 150, -50, 150, -50}});
    const QRect clip(10, 20, 30, 25);
    const QImage image = drawn([&](QPainter *painter) {
        painter->setClipRect(clip);
        drawLine(painter, series, 0, 10);
        painter->fillRect(QRect(0, 0, 11, 21), Qt::blue);
    });
    EXPECT_TRUE(clip.contains(inked(image)));
    EXPECT_EQ(countOf(image, kBlue), 1); // what comes after is clipped as before
    drawn([&](QPainter *painter) {
        drawLine(painter, series, 0, 10);
        EXPECT_FALSE(painter->hasClipping());
    });
}

TEST(CDrawStyleLinesTest, SegmentsBridgeGaps) {
    const Series series = seriesOf(41, {{40, kGap, kGap, 40, 40}});
    const auto draw = [&](int start, int end) {
        return drawn([&](QPainter *painter) {
            Draw::drawSegmentLine(painter, kRect, series, kRange, 0, start, end, kLast, 1, false);
        });
    };
    EXPECT_EQ(inked(draw(0, 4)), QRect(0, 60, 41, 1));
    // A drawing that begins in a gap bridges it from the last point before.
    EXPECT_EQ(inked(draw(2, 4)), QRect(0, 60, 41, 1));
    EXPECT_EQ(Draw::touchedRect(kRect, series, 0, 2, 3, kLast), QRect(0, 0, 31, 101));
}

TEST(CDrawStyleLinesTest, ABoolLineHasTheColoursOfRiseAndFall) {
    Series series = seriesOf(37, {{-50, -50, 50, 50}});
    series.meta.mLineColors.clear();
    const QImage image = drawn([&](QPainter *painter) {
        Draw::drawBoolLine(painter, kRect, series, {100.0, -100.0}, 0, 0, 3, kLast, Qt::SolidLine, 1);
    });
    EXPECT_TRUE(isFilled(image, QRect(0, 75, 10, 1), theme("ic_clr_index_default_fall")));
    EXPECT_TRUE(isFilled(image, QRect(21, 25, 10, 1), theme("ic_clr_index_default_rise")));
}

TEST(CDrawStyleLinesTest, UprightLinesStandAtPointsThatAreNotZero) {
    const Series series = seriesOf(14, {{0, 1, kGap, -3, 0}});
    const QImage image = drawn([&](QPainter *painter) {
        Draw::drawVertLine(painter, kRect, series, {TC::kUnsetValue, kNaN}, 0, 0, 4, kLast, Qt::SolidLine, 1);
    });
    EXPECT_TRUE(isFilled(image, QRect(10, 0, 1, 101), kRed));
    EXPECT_TRUE(isFilled(image, QRect(30, 0, 1, 101), kRed));
    EXPECT_EQ(countOf(image, kRed), 202);
}

TEST(CDrawStyleLinesTest, DottedUprightLinesHaveOnePixelInThree) {
    const Series series = seriesOf(15, {{1}});
    const QImage image = drawn([&](QPainter *painter) {
        Draw::drawVertLine(painter, kRect, series, kRange, 0, 0, 0, kLast, Qt::DotLine, 1);
    });
    for (int y = 0; y <= 100; ++y) {
        EXPECT_EQ(image.pixel(0, y), y % 3 == 0 ? kRed : kBlack) << y;
    }
}

TEST(CDrawStyleLinesTest, ADottedLevelLineHasOnePixelInThree) {
    const Series series = seriesOf(4, {{50, 50, 50, 50}});
    const QImage image = drawn([&](QPainter *painter) { drawLine(painter, series, 0, 3, kRect, Qt::DotLine); });
    for (int x = 0; x <= 30; ++x) {
        EXPECT_EQ(image.pixel(x, 50), x % 3 == 0 ? kRed : kBlack) << x;
    }
    EXPECT_EQ(countOf(image, kRed), 11);
}

TEST(CDrawStyleLinesTest, TheGradientFillsTheAreaBeneathTheLineAndNotTheGaps) {
    const Series series = seriesOf(0, {{60, 60, kGap, 20, 20}});
    const QImage image =
        drawn([&](QPainter *painter) { drawLine(painter, series, 0, 4, kRect, Qt::SolidLine, true); });
    EXPECT_TRUE(isFilled(image, QRect(0, 0, 11, 40), kBlack));
    EXPECT_TRUE(isFilled(image, QRect(0, 40, 11, 1), kRed));
    EXPECT_NE(image.pixel(0, 41), kBlack);
    EXPECT_NE(image.pixel(10, 41), kBlack);
    EXPECT_EQ(image.pixel(0, 41), image.pixel(10, 41)); // one colour a row
    EXPECT_TRUE(isFilled(image, QRect(11, 0, 19, 101), kBlack));
    EXPECT_EQ(image.pixel(30, 90), image.pixel(5, 90)); // wherever the line is
    EXPECT_TRUE(isFilled(image, QRect(30, 0, 11, 80), kBlack));
}

} // namespace
