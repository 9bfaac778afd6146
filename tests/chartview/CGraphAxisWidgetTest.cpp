#include "chartview/CGraphAxisWidget.h"

#include "tests/chartview/ChartFixture.h"

#include <QTest>

#include <atomic>
#include <cmath>
#include <thread>

using namespace TC;

namespace {

struct StripLabel {
    QRect rect;
    int alignment;
    const char *text;
    const char *color;
};

class GraphAxis : public tests::ChartFixture {
protected:
    /// Height of a strip in which `count` ticks find room.
    static int heightFor(int count) { return static_cast<int>(std::ceil(axisFontHeight() * 3.2 * count)) + 1; }

    std::unique_ptr<CGraphAxisWidget> makeStrip(const boost::shared_ptr<CRealtimeData> &data, int side,
                                                EIndexDisplayType type, int roomFor) {
        auto strip = std::make_unique<CGraphAxisWidget>(mUi, data, side, mKeeper.get());
        strip->setDisplayType(type);
        strip->resize(50, heightFor(roomFor));
        return strip;
    }
    std::unique_ptr<CGraphAxisWidget> mainStrip(int side, int roomFor) {
        mMain = makeData(EIndexDisplayType::Main, {"REALTIME", "REALTIMEVOL"});
        auto strip = makeStrip(mMain, side, EIndexDisplayType::Main, roomFor);
        mMain->setAxisWidget(strip.get());
        return strip;
    }
    std::unique_ptr<CGraphAxisWidget> subStrip(int side, int roomFor, const QStringList &formulas) {
        mSub = makeData(EIndexDisplayType::Sub, formulas);
        return makeStrip(mSub, side, EIndexDisplayType::Sub, roomFor);
    }
    /// Has the main data take in a short day.
    void fillMain() {
        mMain->request(corvane::ERunMode::Ordinary);
        answer("REALTIME", {10.0, 10.5});
        answer("REALTIMEVOL", {100.0, 200.0}, 2);
    }
    void fillSub(const char *formula) {
        mSub->request(corvane::ERunMode::Ordinary);
        answer(formula, {1.0, 2.0});
    }
    static IndexBaseData::MaxMinMap ranges() {
        return {
            {key("REALTIME"), {11.0, 9.0}}, {key("REALTIMEVOL"), {24000.0, 0.0}}, {key("MACD"), {4.0, 1.0}}};
    }
    static QVector<double> values(const CGraphAxisWidget &strip) {
        QVector<double> values;
        for (const AxisTick &tick : strip.getTicks()) {
            values.append(tick.value);
        }
        return values;
    }
    static QVector<int> rows(const CGraphAxisWidget &strip) {
        QVector<int> rows;
        for (const AxisTick &tick : strip.getTicks()) {
            rows.append(tick.y);
        }
        return rows;
    }
    /// The strip as it has to look.
    static QImage picture(const CGraphAxisWidget &strip, const QVector<StripLabel> &labels) {
        QImage image(strip.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(color("ic_clr_realtime_axis_bg"));
        QPainter painter(&image);
        painter.setFont(axisFont());
        for (const StripLabel &label : labels) {
            painter.setPen(color(label.color));
            painter.drawText(label.rect, label.alignment, QString::fromUtf8(label.text));
        }
        return image;
    }

    boost::shared_ptr<CRealtimeData> mMain;
    boost::shared_ptr<CRealtimeData> mSub;
};

constexpr char kRise[] = "ic_clr_index_default_rise";
constexpr char kFall[] = "ic_clr_index_default_fall";
constexpr char kMiddle[] = "ic_clr_realtime_axis_default_text";
constexpr char kBand[] = "ic_clr_realtime_colorstick";
constexpr char kPlain[] = "ic_clr_realtime_axis_text";

TEST_F(GraphAxis, ChartsLetGoOfAStripThatGoes) {
    auto strip = mainStrip(CGraphAxisWidget::eLeft, 9);
    mUi->mLeftAxis = strip.get();
    const boost::shared_ptr<CRealtimeData> past = makeData(EIndexDisplayType::Main, {"REALTIME"});
    past->setAxisWidget(strip.get());
    fillMain();
    strip->setMaxMinMap(ranges());
    EXPECT_NE(mMain->yOfValue(10.0, QRect(0, 0, 100, 100)), -1);
    strip.reset();
    EXPECT_EQ(mUi->mLeftAxis, nullptr);
    for (const auto &data : {mMain, past}) {
        data->setChartRect(QRect(0, 0, 100, 80));
        data->setDrawEnabled(true); // draws its grid
        EXPECT_EQ(data->yOfValue(10.0, QRect(0, 0, 100, 100)), -1);
    }
}

TEST_F(GraphAxis, StripOutlivesAChartThatReadIt) {
    auto strip = mainStrip(CGraphAxisWidget::eLeft, 9);
    {
        const boost::shared_ptr<CRealtimeData> past = makeData(EIndexDisplayType::Main, {"REALTIME"});
        past->setAxisWidget(strip.get());
    }
    strip.reset();
    EXPECT_EQ(mMain->valueAtY(10, QRect(0, 0, 100, 100), nullptr), 0.0);
}

TEST_F(GraphAxis, HasItsName) {
    EXPECT_EQ(mainStrip(CGraphAxisWidget::eLeft, 7)->objectName(), "graphAxisWidget");
}

// Ticks

TEST_F(GraphAxis, TicksOfTheMainPaneAreThoseOfThePriceAndTheVolume) {
    auto strip = mainStrip(CGraphAxisWidget::eLeft, 7);
    strip->setMaxMinMap(ranges());
    const int h = strip->height();
    EXPECT_EQ(values(*strip), (QVector<double>{11.0, 10.5, 10.0, 9.5, 24000.0, 12000.0}));
    EXPECT_EQ(rows(*strip), (QVector<int>{0, h / 6, h * 2 / 6, h * 3 / 6, h * 4 / 6, h * 5 / 6}));
    EXPECT_EQ(strip->getMaxMinMap(), ranges());
}

TEST_F(GraphAxis, WithoutVolumeAllTicksAreThoseOfThePrice) {
    mUi->mShowVolume = false;
    auto strip = mainStrip(CGraphAxisWidget::eLeft, 5);
    strip->setMaxMinMap(ranges());
    EXPECT_EQ(values(*strip), (QVector<double>{11.0, 10.5, 10.0, 9.5}));
}

TEST_F(GraphAxis, MainPaneWithoutARangeStandsAtTheLastClose) {
    auto strip = mainStrip(CGraphAxisWidget::eLeft, 3);
    strip->setMaxMinMap({});
    EXPECT_EQ(values(*strip), (QVector<double>{10.0, 10.0, 0.0})) << "and its volume at zero";
}

TEST_F(GraphAxis, SubPaneTakesTheFirstFormulaThatHasASeries) {
    auto strip = subStrip(CGraphAxisWidget::eLeft, 3, {"KDJ", "MACD"});
    strip->setMaxMinMap({{key("KDJ"), {80.0, 20.0}}, {key("MACD"), {4.0, 1.0}}});
    EXPECT_EQ(values(*strip), (QVector<double>{4.0, 3.0, 2.0, 1.0})) << "none has: the last one stands";
    fillSub("KDJ");
    strip->recompute();
    EXPECT_EQ(values(*strip), (QVector<double>{80.0, 60.0, 40.0, 20.0}));
    EXPECT_EQ(rows(*strip).last(), strip->height());
}

TEST_F(GraphAxis, SubPaneLooksUnderTheNameThatTheCatalogueShows) {
    mHost.mCatalogue.getFormula("MACD")->mName = "Macd";
    auto strip = subStrip(CGraphAxisWidget::eLeft, 1, {"MACD"});
    strip->setMaxMinMap({{key("Macd"), {6.0, 5.0}}, {key("MACD"), {4.0, 1.0}}});
    EXPECT_EQ(values(*strip), (QVector<double>{6.0, 5.0}));
}

TEST_F(GraphAxis, SubPaneWithoutARangeStandsAtZero) {
    auto strip = subStrip(CGraphAxisWidget::eLeft, 2, {"MACD"});
    strip->setMaxMinMap({});
    EXPECT_EQ(values(*strip), (QVector<double>{0.0, 0.0, 0.0}));
}

TEST_F(GraphAxis, SubPaneWithoutRoomHasNoTicks) {
    auto strip = subStrip(CGraphAxisWidget::eLeft, 3, {"MACD"});
    strip->resize(50, 5);
    strip->setMaxMinMap(ranges());
    EXPECT_TRUE(strip->getTicks().isEmpty());
}

TEST_F(GraphAxis, LowMainPaneHasOneTickAtTheLastClose) {
    auto strip = mainStrip(CGraphAxisWidget::eLeft, 1);
    mHost.mStocks.mCloses[qMakePair(QStringLiteral("SH600000"), 0)] = 9.87;
    mHost.mLog.clear();
    strip->setMaxMinMap(ranges());
    EXPECT_EQ(values(*strip), (QVector<double>{9.87}));
    EXPECT_EQ(rows(*strip), (QVector<int>{strip->height() / 2}));
    EXPECT_EQ(mHost.mLog.of("CStockManager::getCurrentDateLastClose"),
              QStringList{"CStockManager::getCurrentDateLastClose SH600000 0"});
}

TEST_F(GraphAxis, SingleTickOfAPastDayIsThatDaysClose) {
    mUi->mGetTradeDateFunc = [] { return tests::kDay - 86400; };
    mHost.mStocks.mCloses[qMakePair(QStringLiteral("SH600000"), tests::kDay - 86400)] = 8.5;
    auto strip = mainStrip(CGraphAxisWidget::eLeft, 1);
    strip->setMaxMinMap(ranges());
    EXPECT_EQ(values(*strip), (QVector<double>{8.5}));
}

TEST_F(GraphAxis, ResizingRecomputesTheTicks) {
    auto strip = mainStrip(CGraphAxisWidget::eLeft, 1);
    strip->setMaxMinMap(ranges());
    strip->setAttribute(Qt::WA_DontShowOnScreen);
    mKeeper->setAttribute(Qt::WA_DontShowOnScreen);
    mKeeper->resize(60, 2000);
    mKeeper->show();
    strip->resize(50, heightFor(6));
    EXPECT_EQ(strip->getTicks().size(), 6);
}

TEST_F(GraphAxis, TimeLinesAreColumnsOfTheDayGraph) {
    mUi->mDayWidth = 242.0; // one pixel a minute, after one that stays free
    auto strip = mainStrip(CGraphAxisWidget::eLeft, 3);
    strip->setMaxMinMap(ranges());
    EXPECT_EQ(strip->getTimeLines(), (QVector<int>{31, 61, 91, 121, 151, 181, 211}));
    mUi->mDayWidth = 482.0;
    EXPECT_EQ(strip->getTimeLines().first(), 31) << "not before it is told";
    strip->recompute();
    EXPECT_EQ(strip->getTimeLines(), (QVector<int>{61, 121, 181, 241, 301, 361, 421}));
}

// Labels

TEST_F(GraphAxis, StripWithoutASeriesIsBlank) {
    auto strip = mainStrip(CGraphAxisWidget::eLeft, 7);
    strip->setMaxMinMap(ranges());
    EXPECT_EQ(painted(*strip), picture(*strip, {}));
}

TEST_F(GraphAxis, LeftStripOfTheMainPaneShowsPricesAndVolumes) {
    auto strip = mainStrip(CGraphAxisWidget::eLeft, 6);
    fillMain();
    strip->setMaxMinMap(ranges());
    const int f = axisFontHeight();
    const QVector<int> y = rows(*strip);
    ASSERT_EQ(y.size(), 6);
    EXPECT_EQ(painted(*strip), picture(*strip, {{QRect(0, y[0], 48, f), 0x22, "11.00", kRise},
                                                {QRect(0, y[1] - f, 48, 2 * f), 0x82, "10.50", kRise},
                                                {QRect(0, y[2] - f, 48, 2 * f), 0x82, "10.00", kMiddle},
                                                {QRect(0, y[3] - f, 48, 2 * f), 0x82, "9.50", kFall},
                                                {QRect(0, y[4] - f, 48, 2 * f), 0x82, "2.40万", kBand},
                                                {QRect(0, y[5] - f, 48, f), 0x42, "1.20万", kBand}}));
}

TEST_F(GraphAxis, RightStripOfTheMainPaneShowsPercentagesAndVolumes) {
    auto strip = mainStrip(CGraphAxisWidget::eRight, 6);
    fillMain();
    strip->setMaxMinMap(ranges());
    const int f = axisFontHeight();
    const QVector<int> y = rows(*strip);
    ASSERT_EQ(y.size(), 6);
    EXPECT_EQ(painted(*strip), picture(*strip, {{QRect(2, y[0], 50, f), 0x21, "10.00%", kRise},
                                                {QRect(2, y[1] - f, 50, 2 * f), 0x81, "5.00%", kRise},
                                                {QRect(2, y[2] - f, 50, 2 * f), 0x81, "0.00%", kMiddle},
                                                {QRect(2, y[3] - f, 50, 2 * f), 0x81, "-5.00%", kFall},
                                                {QRect(2, y[4] - f, 50, 2 * f), 0x81, "2.40万", kBand},
                                                {QRect(2, y[5] - f, 50, f), 0x41, "1.20万", kBand}}));
}

TEST_F(GraphAxis, LastPercentageHasTheDecimalsOfThePriceStep) {
    mUi->mShowVolume = false;
    mDetail->mPriceTick = 0.001;
    auto strip = mainStrip(CGraphAxisWidget::eRight, 4);
    fillMain();
    strip->setMaxMinMap(ranges());
    const int f = axisFontHeight();
    const QVector<int> y = rows(*strip);
    ASSERT_EQ(y.size(), 4);
    EXPECT_EQ(painted(*strip), picture(*strip, {{QRect(2, y[0], 50, f), 0x21, "10.00%", kRise},
                                                {QRect(2, y[1] - f, 50, 2 * f), 0x81, "5.00%", kRise},
                                                {QRect(2, y[2] - f, 50, 2 * f), 0x81, "0.00%", kMiddle},
                                                {QRect(2, y[3] - f, 50, f), 0x41, "-5.000%", kFall}}));
}

TEST_F(GraphAxis, SingleTickIsWrittenInTheColorOfTheAxis) {
    auto left = mainStrip(CGraphAxisWidget::eLeft, 1);
    const boost::shared_ptr<CRealtimeData> data = mMain;
    auto right = makeStrip(data, CGraphAxisWidget::eRight, EIndexDisplayType::Main, 1);
    fillMain();
    left->setMaxMinMap(ranges());
    right->setMaxMinMap(ranges());
    const int f = axisFontHeight();
    const int y = left->height() / 2;
    EXPECT_EQ(painted(*left), picture(*left, {{QRect(0, y - f, 48, 2 * f), 0x82, "10.00", kPlain}}));
    EXPECT_EQ(painted(*right), picture(*right, {{QRect(2, y - f, 50, 2 * f), 0x81, "0.00%", kPlain}}));
}

TEST_F(GraphAxis, BothStripsOfASubPaneShowValues) {
    auto left = subStrip(CGraphAxisWidget::eLeft, 1, {"MACD"});
    auto right = makeStrip(mSub, CGraphAxisWidget::eRight, EIndexDisplayType::Sub, 1);
    fillSub("MACD");
    left->setMaxMinMap(ranges());
    right->setMaxMinMap(ranges());
    const int f = axisFontHeight();
    const int h = left->height();
    EXPECT_EQ(painted(*left), picture(*left, {{QRect(0, 0, 48, f), 0x22, "4.00", kPlain},
                                              {QRect(0, h - f, 48, f), 0x42, "1.00", kPlain}}));
    EXPECT_EQ(painted(*right), picture(*right, {{QRect(2, 0, 50, f), 0x21, "4.00", kPlain},
                                                {QRect(2, h - f, 50, f), 0x41, "1.00", kPlain}}));
}

TEST_F(GraphAxis, PrecisionOfTheFirstLineCountsOnASubPane) {
    mHost.mCatalogue.getFormula("MACD")->mPrecisions = {{0, 3}, {1, 1}};
    auto strip = subStrip(CGraphAxisWidget::eLeft, 1, {"MACD"});
    fillSub("MACD");
    strip->setMaxMinMap(ranges());
    const int f = axisFontHeight();
    const int h = strip->height();
    EXPECT_EQ(painted(*strip), picture(*strip, {{QRect(0, 0, 48, f), 0x22, "4.000", kPlain},
                                                {QRect(0, h - f, 48, f), 0x42, "1.000", kPlain}}));
}

TEST_F(GraphAxis, PrecisionOfAnotherLineDoesNot) {
    mHost.mCatalogue.getFormula("MACD")->mPrecisions = {{1, 1}};
    auto strip = subStrip(CGraphAxisWidget::eLeft, 1, {"MACD"});
    fillSub("MACD");
    strip->setMaxMinMap(ranges());
    const int f = axisFontHeight();
    const int h = strip->height();
    EXPECT_EQ(painted(*strip), picture(*strip, {{QRect(0, 0, 48, f), 0x22, "4.00", kPlain},
                                                {QRect(0, h - f, 48, f), 0x42, "1.00", kPlain}}));
}

TEST_F(GraphAxis, PrecisionDoesNotCountOnAMainPane) {
    mUi->mShowVolume = false;
    mHost.mCatalogue.getFormula("REALTIME")->mPrecisions = {{0, 4}};
    auto strip = mainStrip(CGraphAxisWidget::eLeft, 2);
    fillMain();
    strip->setMaxMinMap(ranges());
    const int f = axisFontHeight();
    const QVector<int> y = rows(*strip);
    ASSERT_EQ(y.size(), 2);
    EXPECT_EQ(painted(*strip), picture(*strip, {{QRect(0, 0, 48, f), 0x22, "11.00", kRise},
                                                {QRect(0, y[1] - f, 48, f), 0x42, "10.00", kMiddle}}));
}

TEST_F(GraphAxis, InvalidNumberIsSaidToBe) {
    auto strip = subStrip(CGraphAxisWidget::eLeft, 1, {"MACD"});
    fillSub("MACD");
    strip->setMaxMinMap({{key("MACD"), {std::nan(""), 1.0}}});
    const int f = axisFontHeight();
    const int h = strip->height();
    EXPECT_EQ(painted(*strip), picture(*strip, {{QRect(0, 0, 48, f), 0x22, "非法值", kPlain},
                                                {QRect(0, h - f, 48, f), 0x42, "非法值", kPlain}}));
}

TEST_F(GraphAxis, FollowsTheTheme) {
    auto strip = subStrip(CGraphAxisWidget::eLeft, 1, {"MACD"});
    fillSub("MACD");
    strip->setMaxMinMap(ranges());
    const QImage dark = painted(*strip);
    ASSERT_TRUE(GZ::CUiResource::instance().setTheme("light"));
    const int f = axisFontHeight();
    const int h = strip->height();
    const QImage light = painted(*strip);
    EXPECT_NE(light, dark);
    EXPECT_EQ(light, picture(*strip, {{QRect(0, 0, 48, f), 0x22, "4.00", kPlain},
                                      {QRect(0, h - f, 48, f), 0x42, "1.00", kPlain}}));
}

TEST_F(GraphAxis, PaintingAPartLeavesTheRest) {
    auto strip = mainStrip(CGraphAxisWidget::eLeft, 6);
    fillMain();
    strip->setMaxMinMap(ranges());
    const QImage whole = painted(*strip);
    QImage image(strip->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::magenta);
    for (int top = 0; top < strip->height(); top += 7) {
        const QRect part(0, top, 50, 7);
        strip->render(&image, part.topLeft(), part, QWidget::DrawChildren);
    }
    EXPECT_EQ(image, whole);
}

// The button

TEST_F(GraphAxis, ButtonStandsInTheMiddleOfTheBottomEdge) {
    auto strip = mainStrip(CGraphAxisWidget::eRight, 6);
    strip->setMaxMinMap(ranges());
    strip->showHolographicButon(true);
    const QImage button = GZ::CUiResource::instance().getPixmap("tc_img_btn_holographic_view").toImage();
    ASSERT_FALSE(button.isNull());
    QImage expected = picture(*strip, {});
    QPainter(&expected).drawImage((50 - button.width()) / 2, strip->height() - button.height(), button);
    EXPECT_EQ(painted(*strip), expected);
    EXPECT_NE(painted(*strip), picture(*strip, {}));
    strip->showHolographicButon(false);
    EXPECT_EQ(painted(*strip), picture(*strip, {}));
}

TEST_F(GraphAxis, PressInTheBandOfTheLastTickTellsTheHost) {
    auto strip = mainStrip(CGraphAxisWidget::eRight, 6);
    strip->setMaxMinMap(ranges());
    strip->showHolographicButon(true);
    const int f = axisFontHeight();
    const int top = 2 * f + (strip->height() - 2 * f) * 5 / 6;
    QTest::mousePress(strip.get(), Qt::LeftButton, {}, QPoint(25, top - 1));
    EXPECT_TRUE(mKeeper->of(263).empty());
    QTest::mousePress(strip.get(), Qt::LeftButton, {}, QPoint(25, top));
    QTest::mousePress(strip.get(), Qt::LeftButton, {}, QPoint(0, strip->height() - 1));
    ASSERT_EQ(mKeeper->of(263).size(), 2u);
    const tests::Event event = mKeeper->of(263)[0];
    EXPECT_EQ(event.first, 0);
    EXPECT_EQ(event.second, 0);
    EXPECT_EQ(event.text, "");
    EXPECT_EQ(event.data, nullptr);
}

TEST_F(GraphAxis, PressTellsNothingWhileTheButtonIsHidden) {
    auto strip = mainStrip(CGraphAxisWidget::eRight, 6);
    strip->setMaxMinMap(ranges());
    QTest::mousePress(strip.get(), Qt::LeftButton, {}, QPoint(25, strip->height() - 1));
    EXPECT_TRUE(mKeeper->of(263).empty());
}

TEST_F(GraphAxis, ButtonNeedsATick) {
    auto strip = subStrip(CGraphAxisWidget::eRight, 1, {"MACD"});
    strip->resize(50, 5);
    strip->setMaxMinMap({});
    strip->showHolographicButon(true);
    EXPECT_EQ(painted(*strip), picture(*strip, {}));
    QTest::mousePress(strip.get(), Qt::LeftButton, {}, QPoint(25, 2));
    EXPECT_TRUE(mKeeper->of(263).empty());
}

// Any size, any thread

TEST_F(GraphAxis, TakesAnySize) {
    auto strip = mainStrip(CGraphAxisWidget::eLeft, 6);
    fillMain();
    strip->showHolographicButon(true);
    for (const QSize &size : {QSize(0, 0), QSize(1, 1), QSize(50, 1), QSize(1, 900), QSize(3000, 4000)}) {
        strip->resize(size);
        strip->setMaxMinMap(ranges());
        if (!size.isEmpty()) {
            EXPECT_NE(painted(*strip).pixel(0, 0), QColor(Qt::magenta).rgba());
        }
    }
}

TEST_F(GraphAxis, ListsCanBeReadOnAnotherThreadWhileTheyChange) {
    auto strip = mainStrip(CGraphAxisWidget::eLeft, 6);
    strip->setMaxMinMap(ranges());
    std::atomic<bool> stop{false};
    std::atomic<int> read{0};
    std::thread reader([&] {
        while (!stop) {
            if (strip->getTicks().size() == 6 && strip->getTimeLines().size() == 7 &&
                strip->getMaxMinMap().size() == 3) {
                ++read;
            }
        }
    });
    for (int i = 0; i < 2000 || read == 0; ++i) {
        strip->setMaxMinMap(ranges());
    }
    stop = true;
    reader.join();
    EXPECT_GT(read, 0);
}

} // namespace
