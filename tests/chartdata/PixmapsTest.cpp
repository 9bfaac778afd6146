#include "tests/chartdata/ProbeFixture.h"

#include "host/toolkit/CUiResource.h"
#include "tests/support/MessageGuard.h"

#include <cmath>
#include <functional>

using namespace tests;
using namespace TC;

namespace {

constexpr int kPastDay = kDay - 86400;
const QSize kSize(300, 150);

QColor themeColor(const char *key) {
    return GZ::CUiResource::instance().getColor(QLatin1String(key));
}

class Pixmaps : public ProbeFixture {
protected:
    Pixmaps() {
        mUiParam->mShowVolume = false;
        mData->setTradeDate(kPastDay);
    }
    void TearDown() override {
        mData->setAxisWidget(nullptr);
        GZ::CUiResource::instance().setTheme(GZ::CUiResource::instance().themes().first());
    }
    void enable(const QSize &size = kSize) {
        mData->setChartRect(QRect(QPoint(0, 0), size));
        mData->setDrawEnabled(true);
    }
    /// What a paint of the pane gives, on a canvas that is not the pane's colour.
    QImage painted(double ratio = 1.0, const QSize &size = kSize) { return paintedOf(*mData, ratio, size); }
    static QImage paintedOf(CRealtimeData &data, double ratio = 1.0, const QSize &size = kSize) {
        QImage image(size * ratio, QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::magenta);
        QPainter painter(&image);
        data.paintTo(&painter, QRect(QPoint(0, 0), size));
        return image;
    }
    /// An empty pane with something drawn over it.
    QImage drawn(const std::function<void(QPainter *)> &draw, double ratio = 1.0) {
        QImage image(kSize * ratio, QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        image.fill(themeColor("ic_clr_realtime_graph_bg"));
        QPainter painter(&image);
        painter.setClipRect(QRect(QPoint(0, 0), kSize));
        const QColor border = themeColor("ic_clr_realtime_axis_line_border");
        painter.fillRect(0, 0, kSize.width(), 1, border);
        painter.fillRect(0, kSize.height() - 1, kSize.width(), 1, border);
        painter.fillRect(0, 0, 1, kSize.height(), border);
        painter.fillRect(kSize.width() - 1, 0, 1, kSize.height(), border);
        draw(&painter);
        painter.end();
        return image;
    }
    QImage empty(double ratio = 1.0) {
        return drawn([](QPainter *) {}, ratio);
    }
    /// A wavy series of four lines, all of the given style.
    CFormulaKey putWaves(const QString &formula, int points, qint32 style) {
        std::vector<std::vector<double>> lines(4);
        for (int i = 0; i < points; ++i) {
            for (int line = 0; line < 4; ++line) {
                lines[std::size_t(line)].push_back(10.0 + 0.4 * std::sin(i * 0.3 + line));
            }
        }
        auto result = makeResult(minuteTimes(kPastDay, 570, points), lines);
        for (int i = 0; i < points; ++i) {
            result->mTexts[0][std::size_t(i)] = i % 20 == 0 ? "T" : "";
            result->mExtra2[0][std::size_t(i)] = 9.9;
        }
        auto meta = makeMeta(4, {style, 3, 3, 3}); // style 3 draws nothing
        const CFormulaKey key = put(*mData, kStock, formula, meta, result);
        mData->adoptMaxMin({{key, kRange}}, true);
        return key;
    }
    se::RPCFormulaResultCache seriesOf(const CFormulaKey &key) const { return mData->getData()[key]; }
    /// A live day of the main instrument with `values` as its price.
    CFormulaKey putLive(std::vector<double> values) {
        mData->setTradeDate(kDay);
        mUiParam->mDataCount = int(values.size());
        const CFormulaKey key = putPrice(std::move(values));
        mData->adoptMaxMin({{key, kRange}}, true);
        return key;
    }
    const CDrawStyle::Range kRange{11.0, 9.0};
    const QRect kPricePart{1, 3, kSize.width() - 2, kSize.height() - 5};
    const QString kOther = QStringLiteral("BAND");
};

} // namespace

// Background

TEST_F(Pixmaps, AnEmptyChartIsBackgroundAndFrame) {
    enable();
    EXPECT_EQ(painted(), empty());
}

TEST_F(Pixmaps, TheFrameIsOnePixelWideAtEveryRatio) {
    enable();
    EXPECT_EQ(painted(2.0), empty(2.0));
}

TEST_F(Pixmaps, GridLinesLieAtTheTicksAndTimeLinesOfTheStrip) {
    CGraphAxisWidget strip(mUiParam, mData, CGraphAxisWidget::eLeft);
    strip.resize(50, kSize.height());
    mUiParam->resize(QRect(QPoint(0, 0), kSize + QSize(100, 0)));
    strip.setMaxMinMap({{{kStock, QStringLiteral("REALTIME")}, kRange}});
    ASSERT_FALSE(strip.getTicks().isEmpty());
    ASSERT_FALSE(strip.getTimeLines().isEmpty());
    mData->setAxisWidget(&strip);
    enable();
    const QImage image = painted();
    const QRgb grid = themeColor("ic_clr_realtime_axis_line").rgb();
    const QRgb background = themeColor("ic_clr_realtime_graph_bg").rgb();
    const AxisTick tick = strip.getTicks().last();
    EXPECT_EQ(image.pixel(0, tick.y), grid); // over the frame, from edge to edge
    EXPECT_EQ(image.pixel(7, tick.y), grid);
    EXPECT_EQ(image.pixel(kSize.width() - 1, tick.y), grid);
    const int column = strip.getTimeLines().first();
    QSet<int> rows;
    for (const AxisTick &each : strip.getTicks()) {
        rows.insert(each.y);
    }
    for (int y = 1; y < kSize.height() - 1; ++y) { // one pixel on, one off
        EXPECT_EQ(image.pixel(column, y), y % 2 == 0 || rows.contains(y) ? grid : background) << y;
    }
    mData->setAxisWidget(nullptr);
}

TEST_F(Pixmaps, ADisabledChartDrawsNoSeriesUntilItIsEnabled) {
    mData->setChartRect(QRect(QPoint(0, 0), kSize));
    putWaves(kOther, 100, 0);
    QImage plain(kSize, QImage::Format_RGB32);
    plain.fill(themeColor("ic_clr_realtime_graph_bg"));
    EXPECT_EQ(painted(), plain);
    mData->setDrawEnabled(true);
    EXPECT_NE(painted(), empty());
}

TEST_F(Pixmaps, AZeroRectangleIsStoredAndDrawsNothing) {
    enable(QSize(0, 150));
    QImage untouched(kSize, QImage::Format_RGB32);
    untouched.fill(Qt::magenta);
    EXPECT_EQ(painted(), untouched);
    mData->setChartRect(QRect(0, 0, -5, -7));
    EXPECT_EQ(painted(), untouched);
}

TEST_F(Pixmaps, AHugeRectangleDrawsNothing) {
    putWaves(kOther, 100, 0);
    QImage untouched(kSize, QImage::Format_RGB32);
    untouched.fill(Qt::magenta);
    for (const QSize &size :
         {QSize(16385, 10), QSize(10, 16385), QSize(2000000000, 2000000000), QSize(16000, 16000)}) {
        enable(size);
        EXPECT_EQ(painted(), untouched);
    }
    enable();
    EXPECT_NE(painted(), untouched);
}

TEST_F(Pixmaps, AChangedThemeIsSeenAtTheNextPaint) {
    enable();
    const QImage dark = painted();
    ASSERT_TRUE(GZ::CUiResource::instance().setTheme(GZ::CUiResource::instance().themes().last()));
    EXPECT_EQ(painted(), empty());
    EXPECT_NE(painted(), dark);
}

// Series

TEST_F(Pixmaps, EachStyleIsDrawnByItsHelper) {
    using Draw = CDrawStyle;
    const int last = 240;
    const int end = 99;
    struct Case {
        int style;
        std::function<void(QPainter *, const se::RPCFormulaResultCache &)> draw;
    };
    const auto simple = [&](Qt::PenStyle pen, bool first) {
        return [this, pen, first](QPainter *painter, const se::RPCFormulaResultCache &series) {
            Draw::drawSimpleLine(painter, kPricePart, series, kRange, 0, 0, end, last, pen, 1, first, false,
                                 1.0f, false, first);
        };
    };
    const auto vertical = [&](Qt::PenStyle pen) {
        return [this, pen](QPainter *painter, const se::RPCFormulaResultCache &series) {
            Draw::drawVertLine(painter, kPricePart, series, kRange, 0, 0, end, last, pen, 1);
        };
    };
    const auto stick = [&](double factor, bool lastFlag) {
        return [this, factor, lastFlag](QPainter *painter, const se::RPCFormulaResultCache &series) {
            Draw::drawVolStick(painter, kPricePart, series, kRange, 0, 0, end, last, 1, false, true, factor,
                               lastFlag);
        };
    };
    const Case cases[] = {
        {0, simple(Qt::SolidLine, true)},
        {27, simple(Qt::SolidLine, true)},
        {4, simple(Qt::DotLine, false)},
        {6, simple(Qt::DotLine, false)},
        {8, simple(Qt::DotLine, false)},
        {5, simple(Qt::DashDotLine, false)},
        {14, vertical(Qt::SolidLine)},
        {19, vertical(Qt::SolidLine)},
        {15, vertical(Qt::DotLine)},
        {16, vertical(Qt::DotLine)},
        {17, vertical(Qt::DashDotLine)},
        {18, vertical(Qt::DashDotDotLine)},
        {10, stick(0.0, true)},
        {40, stick(1.0, false)},
        {1,
         [&](QPainter *painter, const auto &series) {
             Draw::drawCircleDot(painter, kPricePart, series, kRange, 0, 0, end, last, 1, true, true);
         }},
        {2,
         [&](QPainter *painter, const auto &series) {
             Draw::drawColorStick(painter, kPricePart, series, kRange, 0, 0, end, last, Qt::SolidLine, 1, true,
                                  false, true);
         }},
        {12,
         [&](QPainter *painter, const auto &series) {
             Draw::drawKLine(painter, kPricePart, series, kRange, 0, 0, end, last, 1, 60, false, 1.0f, 2);
         }},
        {13,
         [&](QPainter *painter, const auto &series) {
             Draw::drawText(painter, kPricePart, series, kRange, 0, 0, end, last, 1);
         }},
        {26,
         [&](QPainter *painter, const auto &series) {
             Draw::drawIcon(painter, kPricePart, series, kRange, 0, 0, end, last,
                            GZ::CUiResource::instance().getPixmap(QStringLiteral("ic_img_arrow_up")), 1);
         }},
        {28,
         [&](QPainter *painter, const auto &series) {
             Draw::drawNumber(painter, kPricePart, series, kRange, 0, 0, end, last, 1, false);
         }},
        {31, [&](QPainter *painter,
                 const auto &series) { Draw::drawTextEx(painter, kPricePart, series, kRange, 0, last, 1); }},
        {36,
         [&](QPainter *painter, const auto &series) {
             Draw::drawStickKline(painter, kPricePart, series, kRange, 0, 0, end, last, 1, false);
         }},
        {37,
         [&](QPainter *painter, const auto &series) {
             Draw::drawBoolLine(painter, kPricePart, series, kRange, 0, 0, end, last, Qt::SolidLine, 1);
         }},
        {41,
         [&](QPainter *painter, const auto &series) {
             Draw::drawSegmentLine(painter, kPricePart, series, kRange, 0, 0, end, last, 1, false);
         }},
        {42,
         [&](QPainter *painter, const auto &series) {
             Draw::drawStackVolstick(painter, kPricePart, series, kRange, 0, 0, end, last, 1, true, true);
         }},
    };
    ASSERT_EQ(mUiParam->mPointCount - 1, last);
    enable();
    for (const Case &each : cases) {
        const CFormulaKey key = putWaves(kOther, 100, each.style);
        mData->redraw();
        const se::RPCFormulaResultCache series = seriesOf(key);
        const QImage have = painted();
        EXPECT_EQ(have, drawn([&](QPainter *painter) { each.draw(painter, series); })) << each.style;
        if (each.style != 31) { // its values are places, and these lie outside
            EXPECT_NE(have, empty()) << each.style;
        }
    }
}

TEST_F(Pixmaps, TheOtherStylesDrawNothingAndDoNotEndTheLoop) {
    enable();
    for (const int style : {3, 7, 9, 11, 20, 21, 22, 23, 24, 25, 29, 30, 32, 33, 34, 35, 38, 39, 43, 99, -1}) {
        const CFormulaKey key = putWaves(kOther, 100, style);
        mData->redraw();
        EXPECT_EQ(painted(), empty()) << style;
        mData->mData[key].meta.mLineStyles[1] = 0; // the line after it
        mData->redraw();
        EXPECT_NE(painted(), empty()) << style;
    }
}

TEST_F(Pixmaps, AnUnknownCountOfLinesIsHeldToTheValues) {
    const CFormulaKey key = putWaves(kOther, 100, 0);
    mData->mData[key].meta.mLineCount = 2147483647;
    mData->mData[key].meta.mLineStyles = {0};
    enable();
    EXPECT_NE(painted(), empty());
    mData->mData[key].meta.mLineCount = -3;
    mData->redraw();
    EXPECT_EQ(painted(), empty());
}

TEST_F(Pixmaps, ASeriesWithoutADrawnRangeIsNotPainted) {
    putPrice({10.0, 10.5, 9.6, 10.1});
    enable();
    EXPECT_EQ(painted(), empty());
}

TEST_F(Pixmaps, AdoptingARangeRedraws) {
    const CFormulaKey key = putPrice({10.0, 10.5, 9.6, 10.1});
    enable();
    mData->adoptMaxMin({{key, kRange}}, false);
    const QImage first = painted();
    EXPECT_NE(first, empty());
    mData->adoptMaxMin({{key, {10.5, 9.5}}}, false); // inside: nothing changes
    EXPECT_EQ(painted(), first);
    mData->adoptMaxMin({{key, {10.5, 9.5}}}, true);
    EXPECT_NE(painted(), first);
}

TEST_F(Pixmaps, TheVolumeLiesInItsBandAndOnlyWhenItIsShown) {
    const CFormulaKey key = putVolume({100.0, 400.0, 300.0, 200.0});
    mData->adoptMaxMin({{key, {400.0, 0.0}}}, true);
    enable();
    EXPECT_EQ(painted(), empty());
    mUiParam->mShowVolume = true;
    mData->redraw();
    // 150 rows: the band begins at row 103 and ends before row 148.
    const QRect band(1, 103, kSize.width() - 2, 45);
    EXPECT_EQ(painted(), drawn([&](QPainter *painter) {
                  CDrawStyle::drawColorStick(painter, band, seriesOf(key), {400.0, 0.0}, 0, 0, 3, 240,
                                             Qt::SolidLine, 1, true, true, true);
              }));
    EXPECT_NE(painted(), empty());
}

TEST_F(Pixmaps, ASubPaneIsNotSplit) {
    mUiParam->mShowVolume = true;
    mData = makeData(EIndexDisplayType::Sub);
    mData->setTradeDate(kPastDay);
    const CFormulaKey key = putWaves(kOther, 100, 0);
    enable();
    EXPECT_EQ(painted(), drawn([&](QPainter *painter) {
                  CDrawStyle::drawSimpleLine(painter, kPricePart, seriesOf(key), kRange, 0, 0, 99, 240,
                                             Qt::SolidLine, 1, true, false, 1.0f, false, true);
              }));
}

TEST_F(Pixmaps, ALineWithAnAxisOfItsOwnIsStretchedOverItsExtremes) {
    const CFormulaKey key = put(kStock, kOther, {100.0, 300.0, 200.0});
    mData->mData[key].meta.mLineAxis[0] = se::eLineOwn;
    mData->adoptMaxMin({{key, kRange}}, true);
    enable();
    // The last index drawn is 2, and so many points are measured: 100 to 300.
    EXPECT_EQ(painted(), drawn([&](QPainter *painter) {
                  CDrawStyle::drawSimpleLine(painter, kPricePart, seriesOf(key), {300.0, 100.0}, 0, 0, 2, 240,
                                             Qt::SolidLine, 1, true, false, 1.0f, false, true);
              }));
    EXPECT_NE(painted(), empty());
}

TEST_F(Pixmaps, TheGradientIsUnderTheFirstLineOfRealtimeOnTheMainPaneAlone) {
    enable();
    const auto withGradient = [&](const QString &formula, qint32 style, bool on) {
        mData->clearData();
        mHost.mConfig.mRecord.mShowGradient = on;
        putWaves(formula, 100, style);
        mData->redraw();
        return painted();
    };
    const QString realtime = QStringLiteral("REALTIME");
    EXPECT_NE(withGradient(realtime, 0, true), withGradient(realtime, 0, false));
    EXPECT_EQ(withGradient(realtime, 27, true), withGradient(realtime, 27, false));
    EXPECT_EQ(withGradient(QStringLiteral("Realtime"), 0, true),
              withGradient(QStringLiteral("Realtime"), 0, false));
    EXPECT_EQ(withGradient(kOther, 0, true), withGradient(kOther, 0, false));
    mData = makeData(EIndexDisplayType::Sub);
    mData->setTradeDate(kPastDay);
    enable();
    EXPECT_EQ(withGradient(realtime, 0, true), withGradient(realtime, 0, false));
}

TEST_F(Pixmaps, AnOverlayGetsTheGradientAsWell) {
    enable();
    const CFormulaKey key = put(QStringLiteral("SZ000001"), QStringLiteral("REALTIME"), {10.0, 10.5, 10.2});
    mHost.mConfig.mRecord.mShowGradient = 0;
    mData->adoptMaxMin({{key, kRange}}, true);
    const QImage off = painted();
    mHost.mConfig.mRecord.mShowGradient = 1;
    mData->redraw();
    EXPECT_NE(painted(), off);
}

TEST_F(Pixmaps, TheNetValueLineAppearsOnlyForTheTwoTypesOfFund) {
    struct Case {
        const char *market;
        int type; ///< 0 for an ordinary share
        bool shown;
    };
    for (const Case &each : {Case{"SH", 0, false}, Case{"SH", 105, true}, Case{"SH", 10008, false},
                             Case{"SZ", 105, false}, Case{"SZ", 10008, true}, Case{"SZ", 0, false}}) {
        mHost.mTypes.mTypes = {{each.type, each.market, "510050"}};
        mHost.mStocks.add(each.market, "510050");
        const QString stock = QString::fromLatin1(each.market) + QStringLiteral("510050");
        mData->clearData();
        const CFormulaKey key = put(stock, QStringLiteral("Realtime"), {10.0, 10.5, 10.2});
        mData->mData[key].meta.mLineNames = {"基金份额参考净值(IOPV)"};
        mData->adoptMaxMin({{key, kRange}}, true);
        enable();
        EXPECT_EQ(painted() != empty(), each.shown) << each.market << each.type;
    }
}

TEST_F(Pixmaps, ALineOfThatNameInAnotherFormulaOrOfAnUnknownInstrumentIsDrawn) {
    enable();
    const CFormulaKey band = put(kStock, kOther, {10.0, 10.5, 10.2});
    mData->mData[band].meta.mLineNames = {"基金份额参考净值"};
    mData->adoptMaxMin({{band, kRange}}, true);
    EXPECT_NE(painted(), empty());
    mData->clearData();
    const CFormulaKey unknown = put(QStringLiteral("XX1"), QStringLiteral("REALTIME"), {10.0, 10.5, 10.2});
    mData->mData[unknown].meta.mLineNames = {"基金份额参考净值"};
    mData->adoptMaxMin({{unknown, kRange}}, true);
    EXPECT_NE(painted(), empty());
}

TEST_F(Pixmaps, FilledGapsAreDrawnAndTheHeldSeriesIsLeftAsItIs) {
    // The axis tells the exchange's day in local time.
    const QDate day = QDateTime::fromSecsSinceEpoch(kPastDay, Qt::OffsetFromUTC, 8 * 3600).date();
    const int localDay = int(QDateTime(day, QTime(0, 0)).toSecsSinceEpoch());
    const CFormulaKey key =
        put(*mData, kStock, kOther, makeMeta(1, {10}),
            makeResult({minuteTime(localDay, 570), minuteTime(localDay, 575)}, {10.0, 10.5}));
    mUiParam->mGetTradeDateFunc = [] { return kPastDay; };
    mData->setFillGaps(true);
    mData->adoptMaxMin({{key, kRange}}, true);
    enable();
    se::RPCFormulaResultCache filled;
    filled.meta = *makeMeta(1, {10});
    filled.result = *makeResult(minuteTimes(kPastDay, 570, 6), {10.0, 10.0, 10.0, 10.0, 10.0, 10.5});
    const QImage expected = drawn([&](QPainter *painter) {
        CDrawStyle::drawVolStick(painter, kPricePart, filled, kRange, 0, 0, 6, 240, 1, false, true, 0.0, true);
    });
    EXPECT_EQ(painted(), expected);
    EXPECT_EQ(seriesOf(key).result.mTimes.size(), 2u);
}

// The live day

TEST_F(Pixmaps, OnALiveDayTheNewestSegmentIsDrawnAtPaintTime) {
    const CFormulaKey key = putLive({10.0, 10.5, 9.6, 10.1});
    enable();
    mHost.mConfig.mRecord.mShowGradient = 0;
    mData->redraw();
    const auto line = [&](int start, int end) {
        return [=](QPainter *painter) {
            CDrawStyle::drawSimpleLine(painter, kPricePart, seriesOf(key), kRange, 0, start, end, 240,
                                       Qt::SolidLine, 1, true, false, 1.0f, false, true);
        };
    };
    EXPECT_EQ(painted(), drawn([&](QPainter *painter) {
                  line(0, 2)(painter);
                  line(2, 3)(painter);
              }));
    mUiParam->mDataCount = 0; // no tail: what is left is the pixmap
    EXPECT_EQ(painted(), drawn(line(0, 2)));
}

TEST_F(Pixmaps, ASinglePointOfALiveDayIsInTheTailAlone) {
    const CFormulaKey key = putLive({10.5});
    mData->mData[key].meta.mLineStyles = {10};
    enable();
    EXPECT_EQ(painted(), drawn([&](QPainter *painter) {
                  CDrawStyle::drawVolStick(painter, kPricePart, seriesOf(key), kRange, 0, 0, 0, 240, 1, false,
                                           true, 0.0, true);
              }));
    EXPECT_NE(painted(), empty());
    mUiParam->mDataCount = 0;
    mData->redraw();
    EXPECT_EQ(painted(), empty());
}

TEST_F(Pixmaps, APaneOfAPastDayHasNoTail) {
    const CFormulaKey key = putPrice({10.0, 10.5, 9.6});
    mHost.mConfig.mRecord.mShowGradient = 0;
    mData->adoptMaxMin({{key, kRange}}, true);
    mUiParam->mDataCount = 2;
    enable();
    EXPECT_EQ(painted(), drawn([&](QPainter *painter) {
                  CDrawStyle::drawSimpleLine(painter, kPricePart, seriesOf(key), kRange, 0, 0, 2, 240,
                                             Qt::SolidLine, 1, true, false, 1.0f, false, true);
              }));
}

// Ratios

TEST_F(Pixmaps, ThePixmapsAreRenderedAtTheRatioOfThePainter) {
    const CFormulaKey key = putWaves(kOther, 100, 0);
    enable();
    for (const double ratio : {2.0, 1.0, 3.0, 1.5}) {
        EXPECT_EQ(painted(ratio), drawn(
                                      [&](QPainter *painter) {
                                          CDrawStyle::drawSimpleLine(painter, kPricePart, seriesOf(key), kRange,
                                                                     0, 0, 99, 240, Qt::SolidLine, 1, true,
                                                                     false, 1.0f, false, true);
                                      },
                                      ratio))
            << ratio;
    }
}

TEST_F(Pixmaps, ARatioCanBeSetBeforeThePaint) {
    putWaves(kOther, 100, 0);
    enable();
    mData->setPixelRatio(2.0);
    const QImage set = painted(2.0);
    mData->setPixelRatio(1.0);
    EXPECT_EQ(painted(2.0), set);
    mData->setPixelRatio(0.0);
    mData->setPixelRatio(-1.0);
    mData->setPixelRatio(std::nan(""));
    EXPECT_EQ(painted(2.0), set);
}

TEST_F(Pixmaps, APaintIsHeldToTheClipOfThePainter) {
    putWaves(kOther, 100, 0);
    enable();
    const QImage whole = painted();
    QImage image(kSize, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    const QRect part(40, 20, 33, 50);
    painter.setClipRect(part);
    mData->paintTo(&painter, QRect(QPoint(0, 0), kSize));
    painter.end();
    EXPECT_EQ(image.copy(part), whole.copy(part));
    EXPECT_EQ(image.pixelColor(39, 30), QColor(Qt::magenta));
}

// Replay

TEST_F(Pixmaps, InReplayADrawingTellsTheTimeOfTheNewestPointOfTheLastSeries) {
    putWaves(kOther, 3, 0);
    mData->setReplayMode(true);
    mEvents.mEvents.clear();
    enable();
    ASSERT_EQ(mEvents.count(3239), 1);
    const EventList::Event event = mEvents.mEvents.first();
    EXPECT_EQ(event.first, 2);
    EXPECT_EQ(event.second, 0);
    EXPECT_TRUE(event.text.isEmpty());
    EXPECT_EQ(*static_cast<QTime *>(event.data), QDateTime::fromSecsSinceEpoch(kPastDay + 572 * 60).time());
}

TEST_F(Pixmaps, OutsideReplayNoTimeIsTold) {
    putWaves(kOther, 3, 0);
    enable();
    EXPECT_EQ(mEvents.count(3239), 0);
}

// Linkage

TEST_F(Pixmaps, TheLinkagePixmapCoversNothingWhereNoMarkIs) {
    mHost.mLinkage.mEnabled = true;
    mUiParam->mLinkageFlags = 4;
    putWaves(kOther, 100, 0);
    enable();
    const QImage with = painted();
    mUiParam->mLinkageFlags = 1;
    EXPECT_EQ(painted(), with);
    mHost.mLinkage.mEnabled = false;
    mUiParam->mLinkageFlags = 4;
    EXPECT_EQ(painted(), with);
}

// What has to be repainted

TEST_F(Pixmaps, NothingIsDirtyUntilSomethingChanges) {
    enable();
    mData->takeDirtyRect();
    EXPECT_TRUE(mData->takeDirtyRect().isNull());
    mData->redraw();
    EXPECT_EQ(mData->takeDirtyRect(), QRect(QPoint(0, 0), kSize));
    EXPECT_TRUE(mData->takeDirtyRect().isNull());
}

TEST_F(Pixmaps, AMovedTailIsDirtyWhereItWasAndWhereItIs) {
    putLive({10.0, 10.5, 9.6, 10.1});
    enable();
    mData->takeDirtyRect();
    mUiParam->mDataCount = 3;
    // Index i lies at column 1 + trunc(298 / 240 * i): from index 1, column 2, to index 3, column 4.
    EXPECT_EQ(mData->takeDirtyRect(), QRect(2, 3, 3, kSize.height() - 5));
}
