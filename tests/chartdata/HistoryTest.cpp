#include "tests/chartdata/ChartDataFixture.h"

#include "tests/support/LogCapture.h"

using corvane::ERunMode;
using TC::eNothingChanged;
using TC::ePointChanged;
using TC::eRangeChanged;
using TC::eSeriesChanged;

namespace tests {
namespace {

class History : public ChartData {
protected:
    void overlay(const char *code) { mUi->addStock(QString::fromLatin1(code), QString(), true); }
    std::vector<EventRecorder::Event> averages() const {
        std::vector<EventRecorder::Event> found;
        for (const auto &event : mEvents.all()) {
            if (event.number == 3072) {
                found.push_back(event);
            }
        }
        return found;
    }
};

TEST_F(History, SeriesIsStoredWholeAndCounted) {
    auto data = requested();
    const auto result =
        makeResult(minuteTimes(kDay, 570, 3), {10, 11, 12}, std::vector<double>{10, 10.5, 11.25});
    EXPECT_EQ(history(*data, key("SH600000"), result), eSeriesChanged | eRangeChanged);
    EXPECT_EQ(series(*data, key("SH600000")).mTimes, result->mTimes);
    EXPECT_EQ(series(*data, key("SH600000")).mValues, result->mValues);
    EXPECT_EQ(mUi->mDataCount, 3);
    ASSERT_EQ(averages().size(), 1u);
    EXPECT_EQ(averages()[0].text, "11.25");
    EXPECT_EQ(averages()[0].data, static_cast<TC::IndexBaseData *>(data.get()));
}

TEST_F(History, AverageHasSixSignificantDigits) {
    auto data = requested();
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 1), {1}, std::vector<double>{1234567.8}));
    EXPECT_EQ(averages().back().text, "1.23457e+06");
}

TEST_F(History, FewerThanTwoLinesSendAnAverageOfZero) {
    auto data = requested();
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 1), {10}));
    EXPECT_EQ(averages().back().text, "0");
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 1), {10}, std::vector<double>{}));
    EXPECT_EQ(averages().back().text, "0");
}

TEST_F(History, PastDayIsNotCounted) {
    auto data = makeMain();
    data->setTradeDate(kDay - 86400);
    data->request(ERunMode::Ordinary);
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 3), {10, 11, 12}));
    EXPECT_EQ(mUi->mDataCount, 0);
}

TEST_F(History, OrdinarySeriesIsNeitherCountedNorAnnounced) {
    auto data = requested({"REALTIME", "REALTIMEVOL"});
    history(*data, key("SH600000", "REALTIMEVOL"), makeResult(minuteTimes(kDay, 570, 3), {1, 2, 3}));
    EXPECT_EQ(mUi->mDataCount, 0);
    EXPECT_TRUE(averages().empty());
}

TEST_F(History, WithoutTheBasicFormulaAnyFormulaIsTheMainSeries) {
    auto data = requested({"REALTIMEVOL"});
    history(*data, key("SH600000", "REALTIMEVOL"), makeResult(minuteTimes(kDay, 570, 3), {1, 2, 3}));
    EXPECT_EQ(mUi->mDataCount, 3);
    EXPECT_EQ(averages().size(), 1u);
}

TEST_F(History, SubPaneHasNoMainSeries) {
    auto data = makeSub({"REALTIME"});
    data->request(ERunMode::Ordinary);
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 3), {1, 2, 3}));
    EXPECT_EQ(mUi->mDataCount, 0);
    EXPECT_TRUE(averages().empty());
}

TEST_F(History, OverlayBeforeTheMainSeriesWaitsForIt) {
    overlay("SH600001");
    auto data = requested();
    EXPECT_EQ(history(*data, key("SH600001"), makeResult(minuteTimes(kDay, 570, 2), {20, 21})), eSeriesChanged);
    EXPECT_TRUE(data->getData().isEmpty());
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 3), {10, 11, 12}));
    EXPECT_EQ(series(*data, key("SH600001")).mValues[0], (std::vector<double>{20, 21, 0}));
    EXPECT_EQ(series(*data, key("SH600001")).mValid, (std::vector<qint32>{1, 1, 0}));
}

TEST_F(History, OverlayDrawsInItsOwnColourWithoutItsSecondLine) {
    overlay("SH600001");
    auto data = requested();
    history(*data, key("SH600000"),
            makeResult(minuteTimes(kDay, 570, 2), {10, 11}, std::vector<double>{10, 11}));
    history(*data, key("SH600001"), makeResult(minuteTimes(kDay, 570, 2), {20, 21}, std::vector<double>{1, 2}));
    const se::RPCFormulaMetaResult &meta = data->getData()[key("SH600001")].meta;
    EXPECT_EQ(meta.mLineColors[0], mUi->mStockColors["SH600001"]);
    EXPECT_EQ(meta.mLineColors[1], se::kDefaultColor);
    EXPECT_EQ(meta.mLineFlags[0], 1);
    EXPECT_EQ(meta.mLineAxis, (std::vector<qint32>{1, 0}));
    EXPECT_EQ(data->getData()[key("SH600000")].meta.mLineFlags[0], 0);
}

TEST_F(History, OverlayWithOneLineKeepsItsAxis) {
    overlay("SH600001");
    auto data = requested();
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 1), {10}));
    history(*data, key("SH600001"), makeResult(minuteTimes(kDay, 570, 1), {20}));
    EXPECT_EQ(data->getData()[key("SH600001")].meta.mLineAxis, (std::vector<qint32>{1}));
}

TEST_F(History, OverlayPointsAreComparedInWholeSeconds) {
    overlay("SH600001");
    auto data = requested();
    const qint64 at = minuteTime(kDay, 571).first;
    history(*data, key("SH600000"), makeResult({{at + 900, 0}}, {10}));
    history(*data, key("SH600001"), makeResult({{at + 400, 0}}, {20}));
    EXPECT_EQ(series(*data, key("SH600001")).mValues[0][0], 20);
    EXPECT_EQ(series(*data, key("SH600001")).mTimes[0].first, at + 900);
}

TEST_F(History, NewMainSeriesKeepsWhatTheSlotsOfAnOverlayHeld) {
    overlay("SH600001");
    auto data = requested();
    history(*data, key("SH600001"), makeResult(minuteTimes(kDay, 570, 2), {20, 21}));
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 2), {10, 11}));
    // The minutes move: 09:30 has no point of the overlay any more.
    history(*data, key("SH600000"), makeResult({minuteTime(kDay, 560), minuteTime(kDay, 571)}, {10, 11}));
    EXPECT_EQ(series(*data, key("SH600001")).mValues[0], (std::vector<double>{20, 21}));
    EXPECT_EQ(series(*data, key("SH600001")).mTimes[0], minuteTime(kDay, 570));
}

TEST_F(History, FilledGapsTakeTheOverlayAsItIs) {
    overlay("SH600001");
    auto data = makeMain();
    data->setFillGaps(true);
    data->request(ERunMode::Ordinary);
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 3), {10, 11, 12}));
    history(*data, key("SH600001"), makeResult({minuteTime(kDay, 571)}, {20}));
    EXPECT_EQ(series(*data, key("SH600001")).mValues[0], (std::vector<double>{20}));
}

TEST_F(History, AlignmentBeyondEitherSeriesDoesNothing) {
    overlay("SH600001");
    auto data = requested();
    history(*data, key("SH600001"), makeResult(minuteTimes(kDay, 570, 2), {20, 21}));
    data->alignOverlay(key("SH600001"), 0); // no main series
    history(*data, key("SH600000"), makeResult({}, std::vector<double>{}));
    EXPECT_FALSE(data->getData().contains(key("SH600001")));
    data->alignOverlay(key("SH600001"), 2);
    data->alignOverlay(key("NOSUCH"), 0);
    data->alignOverlay(key("SH600001"), -5);
    EXPECT_FALSE(data->getData().contains(key("SH600001")));
}

TEST_F(History, KeptRangeDoesNotShrinkWithASmallerSeries) {
    auto data = requested();
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 2), {10, 12}));
    const auto wide = data->getMaxMinMap()[key("SH600000")];
    EXPECT_DOUBLE_EQ(wide.first, 12);
    EXPECT_DOUBLE_EQ(wide.second, 8);
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 2), {10, 11}));
    EXPECT_EQ(data->getMaxMinMap()[key("SH600000")], wide);
    EXPECT_TRUE(history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 2), {10, 11}), false) &
                eRangeChanged);
    EXPECT_DOUBLE_EQ(data->getMaxMinMap()[key("SH600000")].first, 11);
    EXPECT_DOUBLE_EQ(data->getMaxMinMap()[key("SH600000")].second, 9);
}

TEST_F(History, OverlayThatReplacesItsSeriesKeepsItsRange) {
    overlay("SH600001");
    auto data = requested();
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 1), {11}));
    history(*data, key("SH600001"), makeResult(minuteTimes(kDay, 570, 1), {11}));
    const auto ranges = data->getMaxMinMap();
    const int flags = history(*data, key("SH600001"), makeResult(minuteTimes(kDay, 570, 1), {11}), false);
    EXPECT_FALSE(flags & eRangeChanged);
    EXPECT_EQ(data->getMaxMinMap(), ranges);
}

TEST_F(History, EmptyResultLeavesAnEmptySeriesOutOfTheCache) {
    auto data = requested();
    const QString id = data->getReqID(key("SH600000"));
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 1), {11}));
    mHost.mLog.clear();
    data->onHistoryCallback(nullptr, nullptr, id, 1, QString(), true);
    ASSERT_TRUE(data->getData().contains(key("SH600000")));
    EXPECT_TRUE(series(*data, key("SH600000")).mTimes.empty());
    EXPECT_EQ(mUi->mDataCount, 0);
    data->onHistoryCallback(makeMeta(1), makeResult({}, std::vector<double>{}), id, 1, QString(), true);
    EXPECT_TRUE(mHost.mLog.of("CMultiRequestDataManager::addFormulaHistoryData").isEmpty());
    EXPECT_EQ(averages().back().text, "0");
}

TEST_F(History, ResultOfTheMainPaneGoesToTheCacheUnderItsKey) {
    auto data = requested();
    const QString id = data->getReqID(key("SH600000"));
    data->onHistoryCallback(makeMeta(1), makeResult(minuteTimes(kDay, 570, 1), {11}), id, 1, QString(), true);
    EXPECT_EQ(mHost.mLog.of("CMultiRequestDataManager::addFormulaHistoryData"),
              (QStringList{"CMultiRequestDataManager::addFormulaHistoryData SH600000 REALTIME"}));
    auto sub = makeSub();
    sub->request(ERunMode::Ordinary);
    mHost.mLog.clear();
    sub->onHistoryCallback(makeMeta(1), makeResult(minuteTimes(kDay, 570, 1), {11}),
                           sub->getReqID(key("SH600000", "MACD")), 1, QString(), true);
    EXPECT_TRUE(mHost.mLog.of("CMultiRequestDataManager::").isEmpty());
    EXPECT_TRUE(sub->getData().contains(key("SH600000", "MACD")));
}

TEST_F(History, StaleResultIsNotCachedAndRepaintsNothing) {
    auto data = requested();
    startDrawing(*data);
    mEvents.clear();
    mHost.mLog.clear();
    data->onHistoryCallback(makeMeta(1), makeResult(minuteTimes(kDay, 570, 1), {11}), "old", 1, QString(),
                            false);
    EXPECT_EQ(mHost.mLog.all(), (QStringList{"CFormulaManager::unrequestFormula old"}));
    EXPECT_TRUE(mEvents.all().empty());
    EXPECT_TRUE(data->getData().isEmpty());
}

// Reaction

TEST_F(History, FirstDataOutgrowTheRangeAndNothingElseHappens) {
    auto data = requested();
    startDrawing(*data);
    data->onHistoryCallback(makeMeta(1), makeResult(minuteTimes(kDay, 570, 2), {10, 11}),
                            data->getReqID(key("SH600000")), 1, QString(), true);
    EXPECT_EQ(mEvents.numbers(), (std::vector<int>{3072, 3151}));
    EXPECT_EQ(mEvents.all()[1].text, "");
}

TEST_F(History, RangeThatHoldsIsDrawnAndAnnouncedWithoutSender) {
    auto data = requested();
    const auto result = makeResult(minuteTimes(kDay, 570, 2), {10, 11});
    history(*data, key("SH600000"), result);
    startDrawing(*data);
    mEvents.clear();
    data->onHistoryCallback(makeMeta(1), result, data->getReqID(key("SH600000")), 1, QString(), true);
    EXPECT_EQ(mEvents.numbers(), (std::vector<int>{3072, 3029}));
    EXPECT_EQ(mEvents.all()[1].data, nullptr);
    EXPECT_EQ(mEvents.all()[1].text, "");
}

TEST_F(History, NothingIsAnnouncedWhileDrawingIsOff) {
    auto data = requested();
    const auto result = makeResult(minuteTimes(kDay, 570, 2), {10, 11});
    history(*data, key("SH600000"), result);
    data->adoptMaxMin(data->getMaxMinMap(), true);
    mEvents.clear();
    data->onHistoryCallback(makeMeta(1), result, data->getReqID(key("SH600000")), 1, QString(), true);
    EXPECT_EQ(mEvents.numbers(), (std::vector<int>{3072}));
}

TEST_F(History, OutgrownRangeIsAnnouncedEvenWhileDrawingIsOff) {
    auto data = requested();
    data->onHistoryCallback(makeMeta(1), makeResult(minuteTimes(kDay, 570, 2), {10, 11}),
                            data->getReqID(key("SH600000")), 1, QString(), true);
    EXPECT_EQ(mEvents.numbers(), (std::vector<int>{3072, 3151}));
}

// Pushed series

TEST_F(History, FirstPushedSeriesIsStoredWholeAndItsRangeBegins) {
    auto data = makeMain();
    EXPECT_EQ(data->applyPushedResult(makeMeta(1), makeResult(minuteTimes(kDay, 570, 2), {10, 11}), "REALTIME"),
              eSeriesChanged | eRangeChanged);
    EXPECT_EQ(series(*data, key("SH600000")).mValues[0], (std::vector<double>{10, 11}));
    EXPECT_EQ(mUi->mDataCount, 2);
}

TEST_F(History, PushedSeriesCountsWithItsLastPointOnly) {
    auto data = makeMain();
    data->applyPushedResult(
        makeMeta(2), makeResult(minuteTimes(kDay, 570, 2), {10, 11}, std::vector<double>{1, 2}), "REALTIME");
    mEvents.clear();
    EXPECT_EQ(data->applyPushedResult(
                  makeMeta(2),
                  makeResult(minuteTimes(kDay, 570, 3), {9, 9, 10.5}, std::vector<double>{3, 4, 5}),
                  "REALTIME"),
              eSeriesChanged);
    EXPECT_EQ(series(*data, key("SH600000")).mValues,
              (std::vector<std::vector<double>>{{10, 11, 10.5}, {1, 2, 5}}));
    EXPECT_EQ(mUi->mDataCount, 3);
    EXPECT_EQ(averages().back().text, "5");
    EXPECT_EQ(data->applyPushedResult(makeMeta(1), makeResult({minuteTime(kDay, 572)}, {10.6}), "REALTIME"),
              eSeriesChanged);
    EXPECT_EQ(series(*data, key("SH600000")).mValues[0], (std::vector<double>{10, 11, 10.6}));
}

TEST_F(History, OlderPushedResultChangesNothingButReachesTheRange) {
    auto data = makeMain();
    data->applyPushedResult(makeMeta(1), makeResult(minuteTimes(kDay, 570, 2), {10, 11}), "REALTIME");
    const auto before = series(*data, key("SH600000")).mValues;
    data->clearData();
    data->applyPushedResult(makeMeta(1), makeResult(minuteTimes(kDay, 570, 2), {10, 11}), "REALTIME");
    mEvents.clear();
    mHost.mLog.clear();
    EXPECT_EQ(data->applyPushedResult(makeMeta(1), makeResult({minuteTime(kDay, 569)}, {99}), "REALTIME"),
              eSeriesChanged);
    EXPECT_EQ(series(*data, key("SH600000")).mValues, before);
    EXPECT_EQ(averages().size(), 1u);
}

TEST_F(History, PushIntoAnEmptySeriesAtTheStartOfTimeChangesNothing) {
    auto data = makeMain();
    data->applyPushedResult(makeMeta(1), nullptr, "REALTIME");
    EXPECT_EQ(data->applyPushedResult(makeMeta(1), makeResult({{0, 0}}, {99}), "REALTIME"), eNothingChanged);
    EXPECT_TRUE(series(*data, key("SH600000")).mTimes.empty());
    data->applyPushedResult(makeMeta(1), makeResult({{1, 0}}, {99}), "REALTIME");
    EXPECT_EQ(series(*data, key("SH600000")).mTimes.size(), 1u);
}

TEST_F(History, PushedMainSeriesRealignsTheOverlays) {
    overlay("SH600001");
    auto data = requested();
    history(*data, key("SH600001"), makeResult(minuteTimes(kDay, 570, 2), {20, 21}));
    data->applyPushedResult(makeMeta(1), makeResult(minuteTimes(kDay, 570, 1), {10}), "REALTIME");
    EXPECT_EQ(series(*data, key("SH600001")).mValues[0], (std::vector<double>{20}));
    data->applyPushedResult(makeMeta(1), makeResult(minuteTimes(kDay, 570, 2), {10, 11}), "REALTIME");
    EXPECT_EQ(series(*data, key("SH600001")).mValues[0], (std::vector<double>{20, 21}));
}

TEST_F(History, PushedSeriesOfThePaneReactsWithoutSender) {
    auto data = makeMain();
    const auto result = makeResult(minuteTimes(kDay, 570, 2), {10, 11});
    data->applyPushedResult(makeMeta(1), result, "REALTIME");
    startDrawing(*data);
    mEvents.clear();
    data->minitermFormulaDataCallback(makeMeta(1), result, "SH600000", "REALTIME", 1);
    EXPECT_EQ(mEvents.numbers(), (std::vector<int>{3072, 3029}));
    EXPECT_EQ(mEvents.all()[1].data, nullptr);
}

TEST_F(History, ChangedTradesOfTheMainInstrumentRedrawTheMarks) {
    mHost.mLinkage.mEnabled = true;
    mUi->mLinkageFlags = 4;
    mUi->mLinkageShow[0] = true;
    mUi->mLinkageStocks = {"SH600000"};
    auto data = makeMain();
    data->setChartRect(QRect(0, 0, 100, 100));
    data->setDrawEnabled(true);
    mHost.mLog.clear();
    mHost.mLinkage.sigLinkageChanged({"SZ000001"});
    EXPECT_TRUE(mHost.mLog.of("CLinkageManager::getOrderDetails").isEmpty());
    mHost.mLinkage.sigLinkageChanged({"SZ000001", "SH600000"});
    EXPECT_EQ(mHost.mLog.of("CLinkageManager::getOrderDetails").size(), 1);
}

// The log

TEST_F(History, RequestTrafficOfTheMainPaneIsLogged) {
    LogCapture log;
    auto data = requested();
    const QString prefix =
        QStringLiteral("[%1] [TC::CRealtimeData::").arg(reinterpret_cast<qint64>(data.get()));
    const QString id = data->getReqID(key("SH600000"));
    const QString sessionStart = QDateTime::fromMSecsSinceEpoch(kDay * 1000LL).toString("hmmss");
    const QString sessionEnd = QDateTime::fromMSecsSinceEpoch(kDay * 1000LL + 54000000).toString("hmmss");
    ASSERT_EQ(log.lines().size(), 1);
    EXPECT_EQ(log.lines()[0].toStdString(),
              (prefix + QStringLiteral("request] mainID:7,requstID:%1, range:%2 - %3, "
                                       "key:SH600000,period:60000,dataDemand:3,level:0")
                            .arg(id)
                            .arg(sessionStart.toInt())
                            .arg(sessionEnd.toInt()))
                  .toStdString());
    EXPECT_EQ(log.lastLevel(), 20000);
    EXPECT_EQ(log.lastSource(), "CRealtimeData");

    log.clear();
    auto meta = makeMeta(3);
    data->onHistoryCallback(meta, makeResult(minuteTimes(kDay, 570, 2), {10, 11}), id, 5, QString(), true);
    data->onHistoryCallback(nullptr, nullptr, "old", 1, QString(), true);
    EXPECT_EQ(
        log.lines(),
        (QStringList{prefix + "onHistoryCallback] mainID:7, reqid = " + id +
                         ", meta size = 3, basic data size = 2, dataType:5",
                     prefix + "onHistoryCallback] mainID:7, reqid = old, meta size = 0, basic data size = 0, "
                              "dataType:1"}));

    log.clear();
    data->unrequest();
    EXPECT_EQ(log.lines(), (QStringList{prefix + "unrequest] mainID:7, unrequestIds: " + id}));
}

TEST_F(History, WithdrawnRequestsAreLoggedWithCommas) {
    LogCapture log;
    auto data = requested({"REALTIME", "REALTIMEVOL"});
    const QStringList ids = data->reqIds().toList();
    log.clear();
    data->unrequest();
    ASSERT_EQ(log.lines().size(), 1);
    EXPECT_TRUE(log.lines()[0].endsWith("mainID:7, unrequestIds: " + ids.join(',')));
}

TEST_F(History, ReplayRequestIsLoggedWithItsPositions) {
    LogCapture log;
    auto data = makeMain();
    data->requestReplay(ERunMode::Ordinary);
    ASSERT_EQ(log.lines().size(), 1);
    EXPECT_TRUE(log.lines()[0].endsWith(QStringLiteral("TC::CRealtimeData::requestReplay: requstID:%1, "
                                                       "range:1710432000000 - 1710486000000, "
                                                       "key:SH600000,period:60000,dataDemand:3,level:0")
                                            .arg(data->getReqID(key("SH600000")))))
        << log.lines()[0].toStdString();
}

TEST_F(History, SubPanesAreNotLogged) {
    LogCapture log;
    auto data = makeSub();
    data->request(ERunMode::Ordinary);
    data->requestReplay(ERunMode::Ordinary);
    data->onHistoryCallback(makeMeta(1), makeResult(minuteTimes(kDay, 570, 1), {1}),
                            data->getReqID(key("SH600000", "MACD")), 1, QString(), true);
    data->unrequest();
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(History, PointsOfSubPanesAreLoggedWhenTheProgramIsSetTo) {
    LogCapture log;
    auto data = makeSub();
    data->request(ERunMode::Ordinary);
    const TC::CFormulaKey macd = key("SH600000", "MACD");
    mHost.mConfig.mConfig.mDebugLog = true;
    history(*data, macd, makeResult({}, std::vector<double>{}));
    point(*data, macd, makePoint(minuteTime(kDay, 570), {1}));
    EXPECT_TRUE(log.lines().isEmpty()); // an empty series
    point(*data, macd, makePoint(minuteTime(kDay, 571), {1}));
    const int last = QDateTime::fromMSecsSinceEpoch(minuteTime(kDay, 570).first).toString("hmmss").toInt();
    const int now = QDateTime::fromMSecsSinceEpoch(minuteTime(kDay, 571).first).toString("hmmss").toInt();
    ASSERT_EQ(log.lines().size(), 1);
    EXPECT_EQ(log.lines()[0],
              QStringLiteral("[%1] [TC::CRealtimeData::doRealtimeCallback] mainID:7, qsReqId:%2, "
                             "lasttime:%3, newtime:%4")
                  .arg(reinterpret_cast<qint64>(data.get()))
                  .arg(data->getReqID(macd))
                  .arg(last)
                  .arg(now));
    mHost.mConfig.mConfig.mDebugLog = false;
    point(*data, macd, makePoint(minuteTime(kDay, 572), {1}));
    mHost.mConfig.mHasConfig = false;
    point(*data, macd, makePoint(minuteTime(kDay, 573), {1}));
    EXPECT_EQ(log.lines().size(), 1);
}

} // namespace
} // namespace tests
