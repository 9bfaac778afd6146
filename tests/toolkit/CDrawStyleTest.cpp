// What holds for all drawing helpers: parts and the whole, value ranges, hostile input.

#include "tests/toolkit/DrawStyleDrawing.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace tests;

// Two halves and the whole

/// Draws two halves in turn at every point, and compares each time with the whole.
void expectHalvesLikeWhole(const char *name, double ratio,
                           const std::function<void(QPainter *, int start, int end)> &draw, int end) {
    const QSize size(241, 101);
    const QImage whole = drawn([&](QPainter *painter) { draw(painter, 0, end); }, ratio, size);
    for (int middle = 0; middle <= end; ++middle) {
        const QImage halves = drawn(
            [&](QPainter *painter) {
                draw(painter, 0, middle);
                draw(painter, middle, end);
            },
            ratio, size);
        ASSERT_EQ(halves, whole) << name << " at ratio " << ratio << ", parted at " << middle;
    }
}

TEST(CDrawStyleTest, TwoHalvesGiveThePixelsOfTheWhole) {
    std::mt19937 random(20240315);
    std::uniform_real_distribution<double> value(-10.0, 110.0);
    const QRect rect(1, 3, 239, 95);
    constexpr int kEnd = 60;
    Series series = seriesOf(0, std::vector<std::vector<double>>(4, std::vector<double>(kEnd + 1)));
    for (std::vector<double> &line : series.result.mValues) {
        for (double &point : line) {
            point = value(random);
        }
    }
    for (const int gap : {0, 7, 8, 20, 22, 23, 24, 60}) {
        series.result.mValid[std::size_t(gap)] = 0;
    }
    for (int i = 30; i < 40; ++i) {
        series.result.mExtra1[0][std::size_t(i)] = i % 3 ? kPackedBlue : se::kDefaultColor;
    }
    using P = QPainter *;
    for (const double ratio : {1.0, 2.0}) {
        for (const Qt::PenStyle pen : {Qt::SolidLine, Qt::DotLine, Qt::DashDotLine}) {
            const auto line = [&](P p, int start, int end) {
                Draw::drawSimpleLine(p, rect, series, kRange, 0, start, end, kEnd, pen, 1, true, false, 1.0f,
                                     false, true);
            };
            expectHalvesLikeWhole("line", ratio, line, kEnd);
        }
        const auto segment = [&](P p, int start, int end) {
            Draw::drawSegmentLine(p, rect, series, kRange, 0, start, end, kEnd, 1, false);
        };
        expectHalvesLikeWhole("segment", ratio, segment, kEnd);
        const auto signs = [&](P p, int start, int end) {
            Draw::drawBoolLine(p, rect, series, kRange, 1, start, end, kEnd, Qt::SolidLine, 1);
        };
        expectHalvesLikeWhole("bool", ratio, signs, kEnd);
        const auto stick = [&](P p, int start, int end) {
            Draw::drawColorStick(p, rect, series, kRange, 0, start, end, kEnd, Qt::SolidLine, 1, true, false,
                                 true);
        };
        expectHalvesLikeWhole("stick", ratio, stick, kEnd);
        const auto column = [&](P p, int start, int end) {
            Draw::drawVolStick(p, rect, series, kRange, 2, start, end, kEnd, 1, false, true, 1.0, false);
        };
        expectHalvesLikeWhole("column", ratio, column, kEnd);
        const auto candle = [&](P p, int start, int end) {
            Draw::drawKLine(p, rect, series, kRange, 0, start, end, kEnd, 1, 60, false, 1.0f, 2);
        };
        expectHalvesLikeWhole("candle", ratio, candle, kEnd);
        const auto dot = [&](P p, int start, int end) {
            Draw::drawCircleDot(p, rect, series, kRange, 3, start, end, kEnd, 1, true, true);
        };
        expectHalvesLikeWhole("dot", ratio, dot, kEnd);
    }
}

/// The area of a gradient lets the ground through, so that no column may be filled twice. The line itself covers
/// what lies beneath it, and a second half puts its gradient over the end of the first line; only what is free of
/// the line is compared.
TEST(CDrawStyleTest, TwoHalvesOfAGradientFillNoColumnTwice) {
    const Series series = seriesOf(0, {{90, 60, 80, 40, kGap, 50, 70, 60, 90, 80, 70}});
    for (const double ratio : {1.0, 2.0}) {
        const auto draw = [&](QPainter *painter, int start, int end) {
            drawLine(painter, series, start, end, kRect, Qt::SolidLine, true);
        };
        const QImage whole = drawn([&](QPainter *painter) { draw(painter, 0, 10); }, ratio);
        for (int middle = 0; middle <= 10; ++middle) {
            const QImage halves = drawn(
                [&](QPainter *painter) {
                    draw(painter, 0, middle);
                    draw(painter, middle, 10);
                },
                ratio);
            const QRect beneath(0, int(62 * ratio), halves.width(), int(39 * ratio));
            EXPECT_EQ(halves.copy(beneath), whole.copy(beneath)) << middle << " at ratio " << ratio;
        }
    }
}

TEST(CDrawStyleTest, WhatIsDrawnLiesInsideTheTouchedRectangle) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> value(0.0, 100.0);
    const auto isLine = [](int style) { return style == 0 || style == 37 || style == 41; };
    const int styles[] = {0, 1, 2, 10, 12, 14, 36, 37, 40, 41, 42};
    for (const int style : styles) {
        Series series = seriesOf(style, {std::vector<double>(11)});
        series.result.mExtra2 = {std::vector<double>(11, 50.0)};
        for (double &point : series.result.mValues[0]) {
            point = value(random);
        }
        for (int start = 0; start <= kLast; ++start) {
            for (int end = start; end <= kLast; end += 3) {
                const QRect ink = inked(drawn([&](QPainter *p) {
                    const auto &s = series;
                    Draw::Range r = kRange;
                    switch (style) {
                    case 0:
                        drawLine(p, s, start, end);
                        break;
                    case 1:
                        Draw::drawCircleDot(p, kRect, s, r, 0, start, end, kLast, 1, true, true);
                        break;
                    case 2:
                        drawSticks(p, s, start, end, true);
                        break;
                    case 10:
                        Draw::drawVolStick(p, kRect, s, r, 0, start, end, kLast, 1, 0, 1, 0.0, true);
                        break;
                    case 12:
                        Draw::drawKLine(p, kRect, s, r, 0, start, end, kLast, 1, 60, false, 1.0f, 2);
                        break;
                    case 14:
                        Draw::drawVertLine(p, kRect, s, r, 0, start, end, kLast, Qt::SolidLine, 1);
                        break;
                    case 36:
                        Draw::drawStickKline(p, kRect, s, r, 0, start, end, kLast, 1, false);
                        break;
                    case 37:
                        Draw::drawBoolLine(p, kRect, s, r, 0, start, end, kLast, Qt::SolidLine, 1);
                        break;
                    case 40:
                        Draw::drawVolStick(p, kRect, s, r, 0, start, end, kLast, 1, 0, 1, 1.0, false);
                        break;
                    case 41:
                        Draw::drawSegmentLine(p, kRect, s, r, 0, start, end, kLast, 1, false);
                        break;
                    default:
                        Draw::drawStackVolstick(p, kRect, s, r, 0, start, end, kLast, 1, true, true);
                        break;
                    }
                }));
                const QRect touched = Draw::touchedRect(kRect, series, 0, start, end, kLast);
                if (start < end || !isLine(style)) { // of one point among others there is no line
                    EXPECT_FALSE(ink.isNull()) << style;
                    EXPECT_TRUE(touched.contains(ink)) << style << " from " << start << " to " << end;
                    const QRect rows =
                        Draw::touchedRect(kRect, series, kRange, 0, start, end, kLast, style == 2);
                    EXPECT_TRUE(rows.contains(ink)) << style << " from " << start << " to " << end;
                    EXPECT_TRUE(touched.contains(rows)) << style;
                    if (isLine(style)) {
                        EXPECT_LE(rows.height(), ink.height() + 4) << style;
                    }
                } else {
                    EXPECT_TRUE(ink.isNull()) << style;
                }
                // It is no wider than a minute on either side.
                EXPECT_LE(touched.width(), 10 * (end - start) + 11) << style;
            }
        }
    }
}

TEST(CDrawStyleTest, TheTouchedRectangleOfTextsIsTheWholeAndOfUnknownStylesNone) {
    for (const int style : {13, 26, 28, 31}) {
        EXPECT_EQ(Draw::touchedRect(kRect, seriesOf(style, {{1, 2, 3}}), 0, 2, 2, kLast), kRect) << style;
    }
    for (const int style : {-1, 3, 7, 9, 11, 20, 25, 29, 30, 32, 35, 38, 39, 43, 1000}) {
        EXPECT_TRUE(Draw::touchedRect(kRect, seriesOf(style, {{1, 2, 3}}), 0, 0, 2, kLast).isNull()) << style;
    }
    const Series line = seriesOf(0, {{1, 2, 3}});
    EXPECT_EQ(Draw::touchedRect(kRect, line, 0, 1, 2, kLast), QRect(10, 0, 11, 101));
    EXPECT_TRUE(Draw::touchedRect(kRect, line, 0, 2, 1, kLast).isNull());
    EXPECT_TRUE(Draw::touchedRect(kRect, line, 1, 0, 2, kLast).isNull());
    EXPECT_TRUE(Draw::touchedRect(QRect(), line, 0, 0, 2, kLast).isNull());
}

TEST(CDrawStyleTest, TheTouchedRowsAreThoseOfTheInkWithAPixelToSpare) {
    const auto rows = [](const Series &series, int start, int end, bool toBottom = false) {
        return Draw::touchedRect(kRect, series, kRange, 0, start, end, kLast, toBottom);
    };
    const Series line = seriesOf(0, {{20, 30.5, kGap, 130, -10}}); // rows 80, 69.5, above, beneath
    EXPECT_EQ(rows(line, 0, 1), QRect(QPoint(0, 68), QPoint(10, 81)));
    EXPECT_EQ(rows(line, 0, 1, true), QRect(QPoint(0, 68), QPoint(10, 100))) << "a gradient";
    EXPECT_TRUE(rows(line, 2, 2).isNull()) << "a gap";
    EXPECT_EQ(rows(line, 3, 4), QRect(30, 0, 11, 101));
    EXPECT_EQ(rows(seriesOf(10, {{20, 40}}), 1, 1), QRect(QPoint(10, 59), QPoint(10, 100)));
    EXPECT_EQ(rows(seriesOf(2, {{20, 40}}), 1, 1, true), QRect(QPoint(8, 59), QPoint(12, 100)));
    const Series deep = seriesOf(41, {{90, kGap, 20, 25}}); // gaps are bridged from the point before
    EXPECT_EQ(rows(deep, 1, 2), QRect(QPoint(0, 9), QPoint(20, 81)));
    EXPECT_EQ(rows(seriesOf(12, {{20}, {20}, {20}, {20}}), 0, 0).height(), kRect.height()) << "not told";
    EXPECT_EQ(Draw::touchedRect(kRect, line, {kNaN, 0.0}, 0, 0, 1, kLast, false).height(), kRect.height());
}

TEST(CDrawStyleTest, SticksOfBothSignsTouchTheZeroRow) {
    const Series sticks = seriesOf(2, {{30, -20}});
    const Draw::Range range(50.0, -50.0); // zero on row 50
    EXPECT_EQ(Draw::touchedRect(kRect, sticks, range, 0, 0, 0, kLast, false),
              QRect(QPoint(0, 19), QPoint(2, 51)));
    EXPECT_EQ(Draw::touchedRect(kRect, sticks, range, 0, 1, 1, kLast, false),
              QRect(QPoint(8, 49), QPoint(12, 71)));
}

// Ranges

struct MaxMin {
    bool found;
    double max;
    double min;
};

MaxMin rangeOf(Series series, int first, int count, bool validOnly = true, bool fromZero = false,
               float scale = 1.0f, bool prices = false) {
    MaxMin result{false, TC::kUnsetValue, TC::kUnsetValue};
    result.found = Draw::calcMaxMin(result.max, result.min, first, count, series, kRect, validOnly, fromZero,
                                    scale, prices);
    return result;
}

void expectRange(const MaxMin &range, double max, double min) {
    EXPECT_TRUE(range.found);
    EXPECT_DOUBLE_EQ(range.max, max);
    EXPECT_DOUBLE_EQ(range.min, min);
}

TEST(CDrawStyleTest, TheRangeTakesAllLinesOverTheAskedPoints) {
    const Series series = seriesOf(0, {{5, 7, 6, 99}, {4, 8, -1, 0}});
    expectRange(rangeOf(series, 0, 3), 8, -1);
    expectRange(rangeOf(series, 1, 1), 8, 7);
    expectRange(rangeOf(series, 2, 1000), 99, -1);
    expectRange(rangeOf(series, -5, 6), 5, 4); // indices -5 to 0
    expectRange(rangeOf(series, 3, std::numeric_limits<int>::max()), 99, 0);
}

TEST(CDrawStyleTest, WithoutAValueTheRangeStaysAsItWas) {
    const Series series = seriesOf(0, {{kGap, kGap}});
    for (const MaxMin &range : {rangeOf(series, 0, 2), rangeOf(series, 2, 5), rangeOf(series, 0, 0),
                                rangeOf(series, 0, -3), rangeOf(Series(), 0, 241)}) {
        EXPECT_FALSE(range.found);
        EXPECT_EQ(range.max, TC::kUnsetValue);
        EXPECT_EQ(range.min, TC::kUnsetValue);
    }
    double max = 3.0;
    double min = 2.0;
    for (const int line : {-1, 0, 1, 99}) {
        EXPECT_FALSE(Draw::calcMaxMin(max, min, 0, 2, series, line, kRect));
    }
    EXPECT_EQ(max, 3.0);
    EXPECT_EQ(min, 2.0);
}

TEST(CDrawStyleTest, TheRangeLeavesOutInvalidUnsetAndInfiniteValues) {
    Series series = seriesOf(0, {{5, kInfinity, TC::kUnsetValue, -kInfinity, kNaN, 7, 100}});
    series.result.mValid = {1, 1, 1, 1, 1, 1, 0};
    expectRange(rangeOf(series, 0, 7), 7, 5);
    expectRange(rangeOf(series, 0, 7, false), 100, 5);
    series.result.mValid = {1};
    expectRange(rangeOf(series, 0, 7), 5, 5);
}

TEST(CDrawStyleTest, TheRangeTakesZeroInAndMultiplies) {
    const Series series = seriesOf(0, {{5, 7}});
    expectRange(rangeOf(series, 0, 2, true, true), 7, 0);
    expectRange(rangeOf(series, 0, 2, true, false, 2.0f), 14, 10);
}

TEST(CDrawStyleTest, HiddenLinesAndThoseOfAnAxisOfTheirOwnDoNotCount) {
    Series series = seriesOf(0, {{5, 7}, {1, 100}, {-3, 50}});
    series.meta.mLineAxis = {se::eLineShared, se::eLineHidden, se::eLineOwn};
    expectRange(rangeOf(series, 0, 2), 7, 5);
    double max = 0.0;
    double min = 0.0;
    ASSERT_TRUE(Draw::calcMaxMin(max, min, 0, 2, series, 1, kRect));
    EXPECT_EQ(max, 100.0);
    EXPECT_EQ(min, 1.0);
    ASSERT_TRUE(Draw::calcMaxMin(max, min, 0, 2, series, 2, kRect));
    EXPECT_EQ(max, 50.0);
    EXPECT_EQ(min, -3.0);
}

TEST(CDrawStyleTest, AmongPricesSticksDoNotCount) {
    for (const int style : {2, 10, 40, 42}) {
        Series series = seriesOf(0, {{5, 7}, {1000, 2000}});
        series.meta.mLineStyles[1] = style;
        expectRange(rangeOf(series, 0, 2, true, false, 1.0f, true), 7, 5);
        expectRange(rangeOf(series, 0, 2), 2000, 5);
    }
}

TEST(CDrawStyleTest, ValuesThatAreNoPlacesOnTheAxisDoNotCount) {
    for (const int style : {14, 15, 16, 17, 18, 19, 31}) {
        Series series = seriesOf(0, {{5, 7}, {1, 0}});
        series.meta.mLineStyles[1] = style;
        expectRange(rangeOf(series, 0, 2), 7, 5);
    }
    Series icons = seriesOf(26, {{0, 7, 6}});
    expectRange(rangeOf(icons, 0, 3), 7, 6);
}

TEST(CDrawStyleTest, ABarCountsWithBothEnds) {
    Series series = seriesOf(36, {{5, 7}});
    series.result.mExtra2 = {{9, 2}};
    expectRange(rangeOf(series, 0, 2), 9, 2);
}

// Hostile input

/// Calls every drawing with one set of arguments.
void drawEverything(QPainter *painter, const QRect &rect, const Series &series, const Draw::Range &range,
                    int line, int start, int end, int last) {
    QPixmap image(4, 4);
    image.fill(Qt::blue);
    for (const Qt::PenStyle pen :
         {Qt::NoPen, Qt::SolidLine, Qt::DotLine, Qt::DashDotDotLine, Qt::CustomDashLine}) {
        for (const bool gradient : {false, true}) {
            Draw::drawSimpleLine(painter, rect, series, range, line, start, end, last, pen, 1, true, false,
                                 1.0f, gradient, true);
        }
        Draw::drawVertLine(painter, rect, series, range, line, start, end, last, pen, 1);
        Draw::drawBoolLine(painter, rect, series, range, line, start, end, last, pen, 1);
    }
    Draw::drawCircleDot(painter, rect, series, range, line, start, end, last, 1, true, true);
    for (const bool volume : {false, true}) {
        Draw::drawColorStick(painter, rect, series, range, line, start, end, last, Qt::SolidLine, 1, true,
                             volume, true);
        Draw::drawVolStick(painter, rect, series, range, line, start, end, last, 1, false, true,
                           volume ? kNaN : 1e300, volume);
    }
    Draw::drawKLine(painter, rect, series, range, line, start, end, last, 1, 60, false, 1.0f, 1000000);
    Draw::drawText(painter, rect, series, range, line, start, end, last, 1);
    Draw::drawTextEx(painter, rect, series, range, line, last, 1);
    Draw::drawIcon(painter, rect, series, range, line, start, end, last, image, 1);
    Draw::drawNumber(painter, rect, series, range, line, start, end, last, 1, false);
    Draw::drawStickKline(painter, rect, series, range, line, start, end, last, 1, false);
    Draw::drawSegmentLine(painter, rect, series, range, line, start, end, last, 1, false);
    Draw::drawStackVolstick(painter, rect, series, range, line, start, end, last, 1, true, true);
}

Series fullSeries() {
    Series series = seriesOf(42, {{10, 90, 50}, {20, 30, 40}});
    series.result.mTexts[0] = {"一", "\xff\xfe", std::string(500, 'x')};
    series.result.mExtra2 = {{1, 2, 3}, {4, 5, 6}};
    return series;
}

TEST(CDrawStyleTest, NoPainterAnInactiveOneOrAnEmptyRectangleDrawsNothing) {
    const Series series = fullSeries();
    drawEverything(nullptr, kRect, series, kRange, 0, 0, 2, kLast);
    QPainter inactive;
    drawEverything(&inactive, kRect, series, kRange, 0, 0, 2, kLast);
    for (const QRect &rect : {QRect(), QRect(5, 5, 0, 10), QRect(5, 5, 10, 0), QRect(5, 5, -10, -10)}) {
        const QImage image =
            drawn([&](QPainter *painter) { drawEverything(painter, rect, series, kRange, 0, 0, 2, kLast); });
        EXPECT_TRUE(inked(image).isNull());
    }
}

TEST(CDrawStyleTest, IndicesAndLinesThatAreNotThereDrawNothing) {
    const Series series = fullSeries();
    const int outside[][2] = {{3, 9}, {-9, -1}, {2, 1}, {std::numeric_limits<int>::max(), 0}};
    for (const auto &span : outside) {
        const QImage image = drawn([&](QPainter *painter) {
            drawLine(painter, series, span[0], span[1]);
            drawSticks(painter, series, span[0], span[1], true);
            Draw::drawText(painter, kRect, series, kRange, 0, span[0], span[1], kLast, 1);
        });
        EXPECT_TRUE(inked(image).isNull()) << span[0];
    }
    for (const int line : {-1, 2, std::numeric_limits<int>::min(), std::numeric_limits<int>::max() - 3}) {
        const QImage image = drawn(
            [&](QPainter *painter) { drawEverything(painter, kRect, series, kRange, line, 0, 2, kLast); });
        EXPECT_TRUE(inked(image).isNull()) << line;
    }
}

TEST(CDrawStyleTest, AnAxisThatEndsBeforeItBeginsDrawsNothingAndOneOfAnIndexOnePoint) {
    const Series series = fullSeries();
    for (const int last : {-1, -1000, std::numeric_limits<int>::min()}) {
        const QImage image =
            drawn([&](QPainter *painter) { drawEverything(painter, kRect, series, kRange, 0, 0, 2, last); });
        EXPECT_TRUE(inked(image).isNull()) << last;
    }
    const QImage image = drawn([&](QPainter *painter) {
        Draw::drawSimpleLine(painter, kRect, series, kRange, 0, 0, 2, 0, Qt::SolidLine, 1, true, false, 1.0f,
                             false, true);
    });
    EXPECT_EQ(inked(image), QRect(0, 90, 1, 1));
}

TEST(CDrawStyleTest, IndicesFarOutsideAreHeldToTheSeries) {
    const Series series = fullSeries();
    const int huge = std::numeric_limits<int>::max();
    EXPECT_EQ(drawn([&](QPainter *painter) { drawLine(painter, series, -huge, huge); }),
              drawn([&](QPainter *painter) { drawLine(painter, series, 0, 2); }));
}

TEST(CDrawStyleTest, AnUnusableRangeDrawsNoLinesAndAFlatOneTheMiddleRow) {
    const Series series = seriesOf(0, {{50, 60}});
    for (const Draw::Range &range : {Draw::Range(TC::kUnsetValue, TC::kUnsetValue), Draw::Range(kNaN, kNaN),
                                     Draw::Range(kInfinity, 0.0), Draw::Range(0.0, -kInfinity)}) {
        const QImage image = drawn([&](QPainter *painter) {
            drawEverything(painter, kRect, series, range, 0, 2, 3, kLast);
            Draw::drawSimpleLine(painter, kRect, series, range, 0, 0, 1, kLast, Qt::SolidLine, 1, true, false,
                                 1.0f, true, true);
        });
        EXPECT_TRUE(inked(image).isNull());
    }
    const QImage flat = drawn([&](QPainter *painter) {
        Draw::drawSimpleLine(painter, kRect, series, {55.0, 55.0}, 0, 0, 1, kLast, Qt::SolidLine, 1, true,
                             false, 1.0f, false, true);
    });
    EXPECT_EQ(inked(flat), QRect(0, 50, 11, 1));
}

TEST(CDrawStyleTest, ShortAndMissingVectorsAreSurvived) {
    Series bare;
    bare.result.mValues = {{10, 20, 30}};
    drawn([&](QPainter *painter) { drawEverything(painter, kRect, bare, kRange, 0, 0, 2, kLast); });
    EXPECT_TRUE(
        inked(drawn([&](QPainter *painter) { drawLine(painter, bare, 0, 2); })).isNull()); // none is valid
    bare.result.mValid = {1, 1};
    bare.result.mExtra1 = {{kPackedBlue}};
    const QImage image = drawn([&](QPainter *painter) { drawLine(painter, bare, 0, 2); });
    EXPECT_EQ(inked(image), QRect(0, 80, 11, 11));
    drawn([&](QPainter *painter) { drawEverything(painter, kRect, bare, kRange, 0, 0, 2, kLast); });
    drawn([&](QPainter *painter) { drawEverything(painter, kRect, Series(), kRange, 0, 0, 2, kLast); });
}

TEST(CDrawStyleTest, HugeAndTinyRectanglesAndValuesAreSurvived) {
    Series series = fullSeries();
    series.result.mValues[0] = {1e300, -1e300, 1.7e308};
    const QRect rects[] = {QRect(0, 0, 1, 1), QRect(-5, -5, 3, 200), QRect(0, 0, 100000, 100000),
                           QRect(-1000000000, -1000000000, 2000000000, 2000000000),
                           QRect(-1000000000, 0, 2000000000, 5)};
    const Draw::Range ranges[] = {{100.0, 0.0}, {1e308, -1e307}, {1e-300, 0.0}, {5e-324, 0.0}, {0.0, 100.0}};
    for (const QRect &rect : rects) {
        for (const Draw::Range &range : ranges) {
            drawn([&](QPainter *painter) { drawEverything(painter, rect, series, range, 0, 0, 2, kLast); },
                  2.0);
        }
        Draw::touchedRect(rect, series, 0, 0, 2, kLast);
    }
}

TEST(CDrawStyleTest, ATranslatedPainterDrawsTheSameElsewhere) {
    const Series series = seriesOf(0, {{10, 90, 20, 70}});
    for (const double ratio : {1.0, 2.0}) {
        const QImage plain = drawn([&](QPainter *painter) { drawLine(painter, series, 0, 3); }, ratio);
        const QImage moved = drawn(
            [&](QPainter *painter) {
                painter->translate(20, 10);
                drawLine(painter, series, 0, 3);
            },
            ratio, QSize(121, 111));
        EXPECT_EQ(moved.copy(QRect(QPoint(20, 10) * ratio, plain.size())), plain);
    }
}

TEST(CDrawStyleTest, AChangedThemeChangesTheColoursAtOnce) {
    Series series = seriesOf(0, {{50, 50}});
    series.meta.mLineColors.clear();
    const auto draw = [&] { return drawn([&](QPainter *painter) { drawLine(painter, series, 0, 1); }); };
    GZ::CUiResource &resource = GZ::CUiResource::instance();
    const QString before = resource.theme();
    for (const char *name : {"dark", "light"}) {
        ASSERT_TRUE(resource.setTheme(QLatin1String(name)));
        EXPECT_EQ(countOf(draw(), theme("ic_clr_index_line_1")), 11) << name;
    }
    ASSERT_TRUE(resource.setTheme(before));
}

} // namespace
