#include "tests/chartdata/ChartDataFixture.h"

#include <limits>

using TC::eNothingChanged;
using TC::ePointChanged;
using TC::eRangeChanged;
using TC::eSeriesChanged;

namespace tests {
namespace {

class Realtime : public ChartData {
protected:
    /// A live main pane with three points, 09:30 to 09:32, inside a range of 8 to 12 that is drawn.
    boost::shared_ptr<TC::CRealtimeData> live() {
        auto data = requested();
        history(*data, mMain,
                makeResult(minuteTimes(kDay, 570, 3), {12, 10, 11}, std::vector<double>{12, 11, 11}));
        startDrawing(*data);
        mEvents.clear();
        mHost.mLog.clear();
        return data;
    }
    boost::shared_ptr<TC::CRealtimeData> liveWithOverlay() {
        mUi->addStock(QStringLiteral("SH600001"), QString(), true);
        auto data = live();
        history(*data, mOverlay, makeResult(minuteTimes(kDay, 570, 3), {12, 10, 11}));
        return data;
    }
    const TC::CFormulaKey mMain = key("SH600000");
    const TC::CFormulaKey mOverlay = key("SH600001");
};

TEST_F(Realtime, PointWithoutSeriesIsDroppedAndNotWithdrawn) {
    auto data = requested();
    mHost.mLog.clear();
    EXPECT_EQ(point(*data, mMain, makePoint(minuteTime(kDay, 570), {10})), eNothingChanged);
    EXPECT_TRUE(data->getData().isEmpty());
    EXPECT_TRUE(mHost.mLog.of("CFormulaManager::unrequestFormula").isEmpty());
    EXPECT_TRUE(mEvents.all().empty());
}

TEST_F(Realtime, NullPointIsIgnored) {
    auto data = live();
    data->onRealtimeCallback(0, data->getReqID(mMain), nullptr);
    data->onRealtimeCallback(0, "old", nullptr);
    EXPECT_TRUE(mEvents.all().empty());
    EXPECT_TRUE(mHost.mLog.all().isEmpty());
}

TEST_F(Realtime, StalePointIsWithdrawn) {
    auto data = live();
    data->onRealtimeCallback(0, "old", makePoint(minuteTime(kDay, 573), {10}));
    EXPECT_EQ(mHost.mLog.of("CFormulaManager::"), (QStringList{"CFormulaManager::unrequestFormula old"}));
    EXPECT_EQ(series(*data, mMain).mTimes.size(), 3u);
    EXPECT_TRUE(mEvents.all().empty());
}

TEST_F(Realtime, SecondPointOfATimeOverwritesTheFirst) {
    auto data = live();
    auto value = makePoint(minuteTime(kDay, 573), {10.5, 10.25});
    EXPECT_EQ(point(*data, mMain, value), ePointChanged | eSeriesChanged);
    value->mValues = {10.75, 10.5};
    value->mTexts = {"a", "b"};
    EXPECT_EQ(point(*data, mMain, value), ePointChanged);
    EXPECT_EQ(series(*data, mMain).mTimes, minuteTimes(kDay, 570, 4));
    EXPECT_EQ(series(*data, mMain).mValues[0], (std::vector<double>{12, 10, 11, 10.75}));
    EXPECT_EQ(series(*data, mMain).mTexts[1].back(), "b");
    EXPECT_EQ(mUi->mDataCount, 4);
}

TEST_F(Realtime, StoredOlderMinuteIsUpdatedAndForcesARedraw) {
    auto data = live();
    EXPECT_EQ(point(*data, mMain, makePoint(minuteTime(kDay, 571), {10.5, 10})),
              ePointChanged | eSeriesChanged);
    EXPECT_EQ(series(*data, mMain).mValues[0], (std::vector<double>{12, 10.5, 11}));
    EXPECT_EQ(mUi->mDataCount, 3);
}

TEST_F(Realtime, PointBeforeTheFirstMinuteIsDropped) {
    auto data = live();
    EXPECT_EQ(point(*data, mMain, makePoint(minuteTime(kDay, 569), {10})), eNothingChanged);
    EXPECT_EQ(series(*data, mMain).mTimes.size(), 3u);
    EXPECT_TRUE(mEvents.all().empty());
}

TEST_F(Realtime, PointBetweenStoredMinutesIsDropped) {
    auto data = live();
    EXPECT_EQ(point(*data, mMain, makePoint({minuteTime(kDay, 571).first + 1, 0}, {10})), eNothingChanged);
    EXPECT_EQ(point(*data, mMain, makePoint(minuteTime(kDay, 571, 1), {10})), eNothingChanged);
    EXPECT_EQ(series(*data, mMain).mTimes.size(), 3u);
}

TEST_F(Realtime, LaterSubPositionExtendsTheSeries) {
    auto data = live();
    EXPECT_EQ(point(*data, mMain, makePoint(minuteTime(kDay, 572, 1), {10})), ePointChanged | eSeriesChanged);
    EXPECT_EQ(series(*data, mMain).mTimes.back(), minuteTime(kDay, 572, 1));
}

TEST_F(Realtime, PointOfTheNextDayExtendsTheSeries) {
    auto data = live();
    EXPECT_EQ(point(*data, mMain, makePoint(minuteTime(kDay + 86400, 570), {10})),
              ePointChanged | eSeriesChanged);
    EXPECT_EQ(mUi->mDataCount, 4);
}

TEST_F(Realtime, PointMakesItsPlaceValid) {
    auto data = requested();
    auto result = makeResult(minuteTimes(kDay, 570, 2), {10, 11});
    result->mValid = {1, 0};
    history(*data, mMain, result);
    point(*data, mMain, makePoint(minuteTime(kDay, 571), {11}));
    EXPECT_EQ(series(*data, mMain).mValid, (std::vector<qint32>{1, 1}));
}

TEST_F(Realtime, FirstPointFillsAnEmptySeries) {
    auto data = requested();
    history(*data, mMain, nullptr);
    EXPECT_TRUE(point(*data, mMain, makePoint(minuteTime(kDay, 570), {10, 10})) & eSeriesChanged);
    EXPECT_EQ(series(*data, mMain).mValues, (std::vector<std::vector<double>>{{10}, {10}}));
    EXPECT_EQ(mUi->mDataCount, 1);
}

TEST_F(Realtime, AverageOfThePointIsAnnounced) {
    auto data = live();
    point(*data, mMain, makePoint(minuteTime(kDay, 573), {10.5, 10.125}));
    ASSERT_EQ(mEvents.numbers(), (std::vector<int>{3072}));
    EXPECT_EQ(mEvents.all()[0].text, "10.125");
    EXPECT_EQ(mEvents.all()[0].data, static_cast<TC::IndexBaseData *>(data.get()));
}

TEST_F(Realtime, PointWithOneLineSendsAnAverageOfZero) {
    auto data = live();
    point(*data, mMain, makePoint(minuteTime(kDay, 573), {10.5}));
    EXPECT_EQ(mEvents.all().back().text, "0");
}

TEST_F(Realtime, MovedLastPointIsAnnouncedWithItsSender) {
    auto data = live();
    data->onRealtimeCallback(0, data->getReqID(mMain), makePoint(minuteTime(kDay, 572), {10.5, 10}));
    EXPECT_EQ(mEvents.numbers(), (std::vector<int>{3072, 3029}));
    EXPECT_EQ(mEvents.all()[1].data, static_cast<TC::IndexBaseData *>(data.get()));
}

TEST_F(Realtime, PointOutsideTheDrawnRangeOutgrowsItOnce) {
    auto data = live();
    data->onRealtimeCallback(0, data->getReqID(mMain), makePoint(minuteTime(kDay, 572), {12.5, 10}));
    EXPECT_EQ(mEvents.numbers(), (std::vector<int>{3072, 3151}));
    data->adoptMaxMin(data->getMaxMinMap(), false);
    mEvents.clear();
    for (const double price : {12.5, 7.75, 11.0, 12.25}) {
        data->onRealtimeCallback(0, data->getReqID(mMain), makePoint(minuteTime(kDay, 572), {price, 10}));
    }
    for (const int number : mEvents.numbers()) {
        EXPECT_NE(number, 3151);
    }
}

TEST_F(Realtime, WantedRangeThatWidensInsideTheDrawnOneIsDrawnAnew) {
    auto data = live();
    data->adoptMaxMin({{mMain, qMakePair(20.0, 0.0)}}, true);
    data->setReplayMode(true); // in which every drawing tells its time, by event 3239
    mEvents.clear();
    data->onRealtimeCallback(0, data->getReqID(mMain), makePoint(minuteTime(kDay, 572), {12.5, 10}));
    EXPECT_EQ(mEvents.numbers(), (std::vector<int>{3072, 3239, 3029}));
}

TEST_F(Realtime, ClearedOverlayDoesNotComeBackWithTheMainSeries) {
    auto data = liveWithOverlay();
    data->clearData();
    history(*data, mMain, makeResult(minuteTimes(kDay, 570, 3), {12, 10, 11}));
    EXPECT_EQ(data->getData().keys(), (QList<TC::CFormulaKey>{mMain}));
}

TEST_F(Realtime, PointOfAPastPaneIsNotCounted) {
    auto data = live();
    mUi->mDataCount = 1;
    data->setTradeDate(kDay - 86400);
    point(*data, mMain, makePoint(minuteTime(kDay, 573), {10}));
    EXPECT_EQ(mUi->mDataCount, 1);
}

TEST_F(Realtime, HistoryReplacesWhatTheStreamHadExtended) {
    auto data = live();
    point(*data, mMain, makePoint(minuteTime(kDay, 573), {10.5, 10}));
    history(*data, mMain, makeResult(minuteTimes(kDay, 570, 3), {12, 10, 11}));
    EXPECT_EQ(series(*data, mMain).mTimes.size(), 3u);
    EXPECT_EQ(mUi->mDataCount, 3);
    point(*data, mMain, makePoint(minuteTime(kDay, 573), {10.75}));
    EXPECT_EQ(series(*data, mMain).mValues[0].back(), 10.75);
}

// Overlays

TEST_F(Realtime, NewOverlayPointFillsTheSlotOfTheMainSeries) {
    auto data = liveWithOverlay();
    point(*data, mMain, makePoint(minuteTime(kDay, 573), {11.5, 11}));
    EXPECT_EQ(series(*data, mOverlay).mTimes.size(), 3u); // the slot comes with the overlay's own point
    EXPECT_EQ(point(*data, mOverlay, makePoint(minuteTime(kDay, 573), {10.5})), ePointChanged | eSeriesChanged);
    EXPECT_EQ(series(*data, mOverlay).mTimes, minuteTimes(kDay, 570, 4));
    EXPECT_EQ(series(*data, mOverlay).mValues[0], (std::vector<double>{12, 10, 11, 10.5}));
    EXPECT_EQ(series(*data, mOverlay).mValid.back(), 1);
}

TEST_F(Realtime, OverlayPointAheadOfTheMainSeriesGetsItsSlotLater) {
    auto data = liveWithOverlay();
    EXPECT_EQ(point(*data, mOverlay, makePoint(minuteTime(kDay, 573), {10.5})), ePointChanged | eSeriesChanged);
    EXPECT_EQ(series(*data, mOverlay).mTimes.size(), 3u);
    point(*data, mMain, makePoint(minuteTime(kDay, 573), {11.5, 11}));
    EXPECT_EQ(series(*data, mOverlay).mValues[0], (std::vector<double>{12, 10, 11, 10.5}));
}

TEST_F(Realtime, OverlayUpdateMovesTheLastSlotAndAnnouncesNoAverage) {
    auto data = liveWithOverlay();
    mEvents.clear();
    EXPECT_EQ(point(*data, mOverlay, makePoint(minuteTime(kDay, 572), {10.5})), ePointChanged);
    EXPECT_EQ(series(*data, mOverlay).mValues[0], (std::vector<double>{12, 10, 10.5}));
    EXPECT_TRUE(mEvents.all().empty());
    EXPECT_EQ(mUi->mDataCount, 3);
}

/// An overlay that lags behind is in the chart pixmap with its newest point.
TEST_F(Realtime, OverlayTickInADrawnSlotRepaintsThePaneAndARepeatedOneItsNewestPoints) {
    auto data = liveWithOverlay();
    point(*data, mMain, makePoint(minuteTime(kDay, 573), {11.5, 11}));
    data->adoptMaxMin(data->getMaxMinMap(), true);
    const QRect pane(0, 0, 300, 200);
    const auto tick = [&](const TC::CFormulaKey &which, int minute, double price) {
        painted(*data);
        data->takeDirtyRect();
        data->onRealtimeCallback(0, data->getReqID(which), makePoint(minuteTime(kDay, minute), {price, 11}));
        return data->takeDirtyRect();
    };
    EXPECT_EQ(tick(mOverlay, 572, 10.5), pane);
    QImage redrawn = painted(*data);
    data->redraw();
    EXPECT_EQ(redrawn, painted(*data));
    const QRect again = tick(mOverlay, 572, 10.5);
    EXPECT_LT(again.width(), 20);
    EXPECT_FALSE(again.isEmpty());
    EXPECT_LT(tick(mMain, 573, 11.25).width(), 20); // the newest segment is not in the pixmap
    EXPECT_EQ(tick(mOverlay, 572, 10.75), pane);
}

TEST_F(Realtime, OlderOverlayPointIsNoOutOfOrderMarkAndAlignsTheLastIndexOnly) {
    auto data = liveWithOverlay();
    EXPECT_EQ(point(*data, mOverlay, makePoint(minuteTime(kDay, 571), {10.5})), ePointChanged);
    EXPECT_EQ(series(*data, mOverlay).mValues[0], (std::vector<double>{12, 10, 11}));
    data->alignOverlay(mOverlay, 0);
    EXPECT_EQ(series(*data, mOverlay).mValues[0], (std::vector<double>{12, 10.5, 11}));
}

TEST_F(Realtime, OverlayPointWithoutPlaceOrSeriesIsDropped) {
    auto data = liveWithOverlay();
    EXPECT_EQ(point(*data, mOverlay, makePoint(minuteTime(kDay, 569), {10.5})), eNothingChanged);
    mUi->addStock(QStringLiteral("SZ000001"), QString(), true);
    data->request(corvane::ERunMode::Ordinary);
    EXPECT_EQ(point(*data, key("SZ000001"), makePoint(minuteTime(kDay, 572), {10.5})), eNothingChanged);
    EXPECT_FALSE(data->getData().contains(key("SZ000001")));
}

TEST_F(Realtime, OverlayPointsTakeValuesAlone) {
    auto data = liveWithOverlay();
    auto value = makePoint(minuteTime(kDay, 572), {10.5});
    value->mTexts = {"text"};
    point(*data, mOverlay, value);
    data->setFillGaps(true); // shows the overlay's own series
    data->alignOverlay(mOverlay, 0);
    EXPECT_EQ(series(*data, mOverlay).mTexts[0][2], "");
    EXPECT_EQ(series(*data, mOverlay).mValues[0][2], 10.5);
}

TEST_F(Realtime, OverlayLongerThanTheMainSeriesIsHarmless) {
    mUi->addStock(QStringLiteral("SH600001"), QString(), true);
    auto data = requested();
    history(*data, mMain, makeResult(minuteTimes(kDay, 570, 2), {10, 11}));
    history(*data, mOverlay, makeResult(minuteTimes(kDay, 570, 5), {10, 11, 12, 13, 14}));
    EXPECT_EQ(series(*data, mOverlay).mValues[0], (std::vector<double>{10, 11}));
    EXPECT_EQ(point(*data, mOverlay, makePoint(minuteTime(kDay, 575), {15})), ePointChanged | eSeriesChanged);
    EXPECT_EQ(series(*data, mOverlay).mValues[0], (std::vector<double>{10, 11}));
}

/// Storage of the last value of a line: it moves only when the line is copied.
TEST_F(Realtime, OverwritingTheLastPointCopiesNoSeries) {
    auto data = live();
    const double *before = &series(*data, mMain).mValues[0].back();
    for (int i = 0; i < 100; ++i) {
        data->onRealtimeCallback(0, data->getReqID(mMain),
                                 makePoint(minuteTime(kDay, 572), {10.0 + i * 0.01, 10}));
    }
    EXPECT_EQ(&series(*data, mMain).mValues[0].back(), before);
    EXPECT_DOUBLE_EQ(*before, 10.99);
}

TEST_F(Realtime, SubPaneMergesWithoutCountOrAverage) {
    auto data = makeSub();
    data->request(corvane::ERunMode::Ordinary);
    const TC::CFormulaKey macd = key("SH600000", "MACD");
    history(*data, macd, makeResult(minuteTimes(kDay, 570, 2), {0.1, 0.2}));
    EXPECT_TRUE(point(*data, macd, makePoint(minuteTime(kDay, 572), {0.15})) & eSeriesChanged);
    EXPECT_EQ(series(*data, macd).mValues[0], (std::vector<double>{0.1, 0.2, 0.15}));
    EXPECT_EQ(mUi->mDataCount, 0);
    EXPECT_TRUE(mEvents.all().empty());
}

} // namespace
} // namespace tests
