#include "tests/chartdata/ChartDataFixture.h"

#include "host/services/CReplayManager.h"

using corvane::ERunMode;
using TC::CFormulaParam;
using TC::CRealtimeData;

namespace tests {
namespace {

class Request : public ChartData {
protected:
    static QStringList codes(const QVector<CFormulaParam> &params) {
        QStringList found;
        for (const CFormulaParam &param : params) {
            found.append(param.mMarket + param.mCode + QLatin1Char(' ') + param.mFormulaName);
        }
        found.sort();
        return found;
    }
    QStringList requestedCodes() const { return codes(mHost.mFormulas.mLastParams); }
    void overlay(const char *key, bool withAxis = true) {
        mUi->addStock(QString::fromLatin1(key), QString(), withAxis);
    }
};

TEST_F(Request, FormulaNamesAreKeptOnceInUpperCase) {
    auto data = makeMain({"realtime", "Macd", "REALTIME"});
    EXPECT_EQ(data->getFormulas(), (QList<QString>{"REALTIME", "MACD"}));
    EXPECT_TRUE(data->hasFormula("macd"));
    EXPECT_FALSE(data->hasFormula("KDJ"));
    EXPECT_EQ(data->getSubFormulas(), (QList<QString>{"MACD"}));
    EXPECT_TRUE(mHost.mLog.of("CFormulaManager::").isEmpty());
}

TEST_F(Request, MainGraphIsTheFirstMainFormulaButTheVolume) {
    mHost.mCatalogue.add("TREND", 2);
    mHost.mCatalogue.add("BOLL", 1);
    EXPECT_EQ(makeMain({"MACD", "REALTIMEVOL", "TREND", "REALTIME"})->getMainGraph(), "TREND");
    EXPECT_EQ(makeMain({"REALTIMEVOL"})->getMainGraph(), QString()) << "volume alone is no chart";
    EXPECT_EQ(makeMain({"MACD", "BOLL"})->getMainGraph(), QString()) << "nor is what is attached to one";
    EXPECT_EQ(makeMain({})->getMainGraph(), QString());
    auto data = makeMain({});
    EXPECT_TRUE(data->isMainGraph("TREND"));
    EXPECT_FALSE(data->isMainGraph("BOLL")); // attached to the main chart
    EXPECT_TRUE(data->isMainGraph("REALTIMEVOL"));
    EXPECT_FALSE(data->isMainGraph("MACD"));
}

TEST_F(Request, CarriesTheFixedFields) {
    mHost.mStocks.mStartOffset = 3600000;
    auto data = requested();
    ASSERT_EQ(mHost.mFormulas.mLastParams.size(), 1);
    const CFormulaParam sent = mHost.mFormulas.mLastParams[0];
    EXPECT_EQ(sent.mStockKind, 0);
    EXPECT_EQ(sent.mDataMode, 1);
    EXPECT_EQ(sent.mMarket, "SH");
    EXPECT_EQ(sent.mCode, "600000");
    EXPECT_EQ(sent.mPeriod, 60000);
    EXPECT_EQ(sent.mFormulaName, "REALTIME.lua");
    EXPECT_EQ(sent.mStart, se::TimePosition(kDay * 1000LL + 3600000, 0));
    EXPECT_EQ(sent.mEnd, se::TimePosition(kDay * 1000LL + 54000000, 0));
    EXPECT_EQ(sent.mLimit, 2147483647);
    EXPECT_EQ(sent.mLimitFlag, 1);
    EXPECT_EQ(sent.mDataDemand, 3);
    EXPECT_EQ(sent.mInterval, 0);
    EXPECT_EQ(sent.mLanguage, 0);
    EXPECT_EQ(sent.mLevel, 0);
    EXPECT_TRUE(sent.mArguments.isEmpty());
    EXPECT_EQ(sent.mRequestId, "7-REALTIME.lua-600000-1");
    EXPECT_EQ(data->getReqID(key("SH600000")), "7-REALTIME.lua-600000-1");
    EXPECT_FALSE(mHost.mLog.of("CFormulaOperateManager::genLuaFormula REALTIME.lua REALTIME").isEmpty());
}

TEST_F(Request, FormulaIsPreparedAndCacheAskedBeforeTheServiceHears) {
    auto data = requested();
    const QStringList calls = mHost.mLog.all();
    const int prepared = calls.indexOf("CFormulaOperateManager::genLuaFormula REALTIME.lua REALTIME");
    const int asked = calls.indexOf("CMultiRequestDataManager::getFormulaHistoryData SH600000 REALTIME");
    const int sent = calls.indexOf("CFormulaManager::requestFormulas 7-REALTIME.lua-600000-1");
    EXPECT_LE(0, prepared);
    EXPECT_LT(prepared, asked);
    EXPECT_LT(asked, sent);
}

TEST_F(Request, FormulaThatCannotBePreparedIsRequestedAllTheSame) {
    mHost.mCatalogue.mCompiles = false;
    auto data = requested();
    EXPECT_EQ(mHost.mFormulas.mLastParams.size(), 1);
}

TEST_F(Request, NoFormulaRequestsNothing) {
    auto data = makeMain({});
    data->request(ERunMode::Ordinary);
    data->requestReplay(ERunMode::Ordinary);
    data->syncRequest(ERunMode::Ordinary);
    EXPECT_TRUE(mHost.mLog.of("CFormulaManager::").isEmpty());
    EXPECT_TRUE(mHost.mLog.of("CReplayManager::").isEmpty());
}

TEST_F(Request, UnknownFormulaIsSkipped) {
    auto data = requested({"NOSUCH", "REALTIME"});
    EXPECT_EQ(requestedCodes(), (QStringList{"SH600000 REALTIME.lua"}));
    EXPECT_EQ(data->reqIds().size(), 1);
}

TEST_F(Request, OverlaysAreRequestedForTheBasicFormulaOnly) {
    overlay("SH600001");
    overlay("SZ000001", false);
    auto data = requested({"REALTIME", "REALTIMEVOL"});
    EXPECT_EQ(requestedCodes(), (QStringList{"SH600000 REALTIME.lua", "SH600000 REALTIMEVOL.lua",
                                             "SH600001 REALTIME.lua", "SZ000001 REALTIME.lua"}));
}

TEST_F(Request, AnInstrumentOverlaidTwiceIsRequestedOnce) {
    overlay("SH600001", true);
    overlay("SH600001", false);
    auto data = requested();
    EXPECT_EQ(requestedCodes(), (QStringList{"SH600000 REALTIME.lua", "SH600001 REALTIME.lua"}));
}

TEST_F(Request, SubPaneRequestsNoOverlayAndAsksNoCache) {
    overlay("SH600001");
    mHost.mCache.addFormulaHistoryData("SH600000", "REALTIME", makeMeta(1), makeResult({{1, 0}}, {1}));
    mHost.mLog.clear();
    auto data = makeSub({"REALTIME"});
    data->request(ERunMode::Ordinary);
    EXPECT_EQ(requestedCodes(), (QStringList{"SH600000 REALTIME.lua"}));
    EXPECT_TRUE(mHost.mLog.of("CMultiRequestDataManager::").isEmpty());
    EXPECT_TRUE(data->getData().isEmpty());
}

TEST_F(Request, SeriesThatAnotherViewHasFetchedAppearsAtOnce) {
    mHost.mCache.addFormulaHistoryData("SH600000", "REALTIME", makeMeta(1),
                                       makeResult(minuteTimes(kDay, 570, 2), {10, 11}));
    auto data = requested();
    EXPECT_EQ(series(*data, key("SH600000")).mValues[0], (std::vector<double>{10, 11}));
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 1), {12}));
    EXPECT_EQ(series(*data, key("SH600000")).mValues[0], (std::vector<double>{12}));
}

TEST_F(Request, PastDayAsksForHistoryOnly) {
    auto data = makeMain();
    data->setTradeDate(kDay - 86400);
    data->request(ERunMode::Ordinary);
    EXPECT_EQ(mHost.mFormulas.mLastParams[0].mDataDemand, 1);
}

TEST_F(Request, HandOverRunCarriesTheRunData) {
    const boost::shared_ptr<void> data = boost::make_shared<int>(5);
    mHost.mCatalogue.mFormulas["REALTIME"]->mRunData = data;
    auto main = requested();
    EXPECT_EQ(mHost.mFormulas.mLastParams[0].mRunData, nullptr);
    main->request(ERunMode::HandOver);
    EXPECT_EQ(mHost.mFormulas.mLastParams[0].mRunData, data);
}

TEST_F(Request, ScriptModelRunsFromItsFileWithItsArguments) {
    auto model = mHost.mCatalogue.add("abc");
    model->mLanguage = TC::EFormulaLanguage::Python;
    model->mParamNames = {"n", "m", "k"};
    model->mParamValues = {5, 0.5};
    model->mStrParamNames = {"mode", "m", "late"};
    model->mStrParamValues = {"fast", "text"};
    auto data = makeSub({"abc"});
    data->request(ERunMode::Ordinary);
    const CFormulaParam sent = mHost.mFormulas.mLastParams[0];
    EXPECT_EQ(sent.mFormulaName, "/scripts\\ABC.py");
    EXPECT_EQ(sent.mLanguage, 1);
    EXPECT_EQ(sent.mArguments,
              (QMap<QString, QString>{{"n", "5"}, {"m", "text"}, {"k", "0"}, {"mode", "fast"}, {"late", "0"}}));
}

TEST_F(Request, NumericArgumentKeepsAllItsDigits) {
    auto model = mHost.mCatalogue.add("ABC");
    model->mLanguage = TC::EFormulaLanguage::Python;
    model->mParamNames = {"x"};
    model->mParamValues = {0.1};
    auto data = makeSub({"ABC"});
    data->request(ERunMode::Ordinary);
    // The shortest text of 17 significant digits.
    EXPECT_EQ(mHost.mFormulas.mLastParams[0].mArguments["x"], "0.10000000000000001");
}

TEST_F(Request, OtherLanguageKeepsTheFileAndHasNoArgumentsButTheAccount) {
    auto model = mHost.mCatalogue.add("ABC");
    model->mLanguage = static_cast<TC::EFormulaLanguage>(2);
    model->mParamNames = {"n"};
    model->mParamValues = {5};
    mUi->setFormulaAccount("A1");
    auto data = makeSub({"ABC"});
    data->request(ERunMode::Ordinary);
    const CFormulaParam sent = mHost.mFormulas.mLastParams[0];
    EXPECT_EQ(sent.mFormulaName, "ABC.lua");
    EXPECT_EQ(sent.mLanguage, 2);
    EXPECT_EQ(sent.mArguments, (QMap<QString, QString>{{"__sys__account", "A1"}}));
    EXPECT_EQ(sent.mInterval, 0);
}

TEST_F(Request, AccountOverridesAModelArgumentOfItsName) {
    auto model = mHost.mCatalogue.add("ABC");
    model->mLanguage = TC::EFormulaLanguage::Python;
    model->mStrParamNames = {"__sys__account"};
    model->mStrParamValues = {"other"};
    mUi->setFormulaAccount("A1");
    auto data = makeSub({"ABC"});
    data->request(ERunMode::Ordinary);
    EXPECT_EQ(mHost.mFormulas.mLastParams[0].mArguments["__sys__account"], "A1");
}

TEST_F(Request, SubPaneFormulaCarriesTheRefreshInterval) {
    mHost.mConfig.mUserConfig.mSubIndexRefresh = 3;
    auto data = makeSub();
    data->request(ERunMode::Ordinary);
    EXPECT_EQ(mHost.mFormulas.mLastParams[0].mInterval, 3000);
    mHost.mCatalogue.mFormulas["MACD"]->mLanguage = TC::EFormulaLanguage::Python;
    data->request(ERunMode::Ordinary);
    EXPECT_EQ(mHost.mFormulas.mLastParams[0].mInterval, 0);
    mHost.mCatalogue.mFormulas["MACD"]->mLanguage = TC::EFormulaLanguage::Native;
    mHost.mConfig.mHasUserConfig = false;
    data->request(ERunMode::Ordinary);
    EXPECT_EQ(mHost.mFormulas.mLastParams[0].mInterval, 0);
    mHost.mConfig.mHasUserConfig = true;
    auto main = requested();
    EXPECT_EQ(mHost.mFormulas.mLastParams[0].mInterval, 0);
}

TEST_F(Request, OverlaidUserIndexIsAddressedAsKindOne) {
    TC::CIndexDetail *index = mHost.mIndexes.add("MYINDEX");
    index->mMembers = {"SH600000", "NOSUCH", "SZ000001"};
    index->mStartTime = 1700000000000;
    index->mBaseValue = 1000;
    index->mOption1 = 4;
    index->mOption2 = 5;
    index->mOption3 = 6;
    mHost.mStocks.mLastTradingDays["SH"] = kDay;
    mHost.mStocks.mLastTradingDay = kDay + 86400; // every other market is a day ahead
    overlay("MYINDEX");
    auto data = requested();
    const CFormulaParam sent = param("MYINDEX", "REALTIME.lua");
    EXPECT_EQ(sent.mStockKind, 1);
    EXPECT_EQ(sent.mMarket, "CD");
    EXPECT_EQ(sent.mIndexKey, "MYINDEX");
    EXPECT_EQ(sent.mMembers, (QList<QPair<QString, QString>>{{"SH", "600000"}, {"SZ", "000001"}}));
    EXPECT_EQ(sent.mIndexStartTime, 1700000000000);
    EXPECT_EQ(sent.mIndexBaseValue, 1000);
    EXPECT_EQ(sent.mStart, se::TimePosition(kDay * 1000LL, 0));
    EXPECT_EQ(sent.mEnd, se::TimePosition(2147483632000, 0));
    EXPECT_EQ(sent.mDataDemand, 3);
    EXPECT_EQ(data->getReqID(key("MYINDEX")), QString::fromStdString(sent.mRequestId));
}

TEST_F(Request, UserIndexWithoutMembersIsNotRequested) {
    mHost.mIndexes.add("MYINDEX");
    overlay("MYINDEX");
    auto data = requested();
    EXPECT_EQ(requestedCodes(), (QStringList{"SH600000 REALTIME.lua"}));
    EXPECT_EQ(data->reqIds().size(), 1);
}

TEST_F(Request, MainUserIndexIsAddressedAsKindOne) {
    mHost.mIndexes.add("MYINDEX")->mMembers = {"SH600000"};
    mUi->setStock("MYINDEX", false);
    auto data = requested();
    const CFormulaParam sent = param("MYINDEX", "REALTIME.lua");
    EXPECT_EQ(sent.mStockKind, 1);
    EXPECT_EQ(sent.mMarket, "CD");
}

TEST_F(Request, PortfolioIsAddressedAsKindTwo) {
    mHost.mStocks.mPortfolios.insert("12");
    mHost.mCatalogue.add(QStringLiteral("量价分析"), 2);
    mUi->setStock("12", false);
    auto data = requested({QStringLiteral("量价分析")});
    ASSERT_EQ(mHost.mFormulas.mLastParams.size(), 1);
    const CFormulaParam sent = mHost.mFormulas.mLastParams[0];
    EXPECT_EQ(sent.mStockKind, 2);
    EXPECT_EQ(sent.mMarket, "TZZH");
    EXPECT_EQ(sent.mCode, "12");
}

TEST_F(Request, YswpDayEndingWithinTwoHoursOfTheLastMidnightIsPast) {
    mHost.mStocks.add("YSWP", "AU");
    mUi->setStock("YSWPAU", false);
    mHost.mStocks.mEndOffset = 7200000;
    auto data = requested();
    EXPECT_EQ(mHost.mFormulas.mLastParams[0].mDataDemand, 1);
    mHost.mStocks.mEndOffset = 7200001;
    data->request(ERunMode::Ordinary);
    EXPECT_EQ(mHost.mFormulas.mLastParams[0].mDataDemand, 3);
}

TEST_F(Request, FixedPriceSessionHasTimesModeAndLevelOfItsOwn) {
    mUi->mFixedPriceRequest = true;
    mUi->mFixedPriceLevel = 2;
    mUi->setFormulaAccount("A1");
    mHost.mConfig.mUserConfig.mSubIndexRefresh = 3;
    auto data = makeSub();
    data->request(ERunMode::Ordinary);
    const CFormulaParam sent = mHost.mFormulas.mLastParams[0];
    EXPECT_EQ(sent.mDataMode, 3);
    EXPECT_EQ(sent.mLevel, 2);
    EXPECT_EQ(sent.mStart, minuteTime(kDay, 15 * 60 + 5));
    EXPECT_EQ(sent.mEnd, minuteTime(kDay, 15 * 60 + 30));
    EXPECT_EQ(sent.mInterval, 0);
    EXPECT_TRUE(sent.mArguments.isEmpty());
    EXPECT_EQ(sent.mDataDemand, 3);
    EXPECT_EQ(sent.mPeriod, 60000);
}

TEST_F(Request, FixedPriceSessionTakesAnOverlaidIndexAsTheKindOfTheView) {
    mHost.mIndexes.add("MYINDEX")->mMembers = {"SH600000"};
    overlay("MYINDEX");
    mUi->mFixedPriceRequest = true;
    auto data = requested();
    EXPECT_EQ(requestedCodes(), (QStringList{"SH600000 REALTIME.lua"})); // kind 0 cannot address it
}

TEST_F(Request, TradeDateOfTheViewStandsInForZero) {
    mUi->mGetTradeDateFunc = [] { return kDay - 86400; };
    auto data = makeMain();
    data->setTradeDate(0);
    data->request(ERunMode::Ordinary);
    EXPECT_EQ(mHost.mFormulas.mLastParams[0].mEnd.first, (kDay - 86400) * 1000LL + 54000000);
}

TEST_F(Request, NoTradeDateIsNotTheLiveDay) {
    mHost.mStocks.mLastTradingDay = 0;
    auto data = requested();
    data->setTradeDate(0);
    history(*data, key("SH600000"), makeResult(minuteTimes(kDay, 570, 2), {10, 11}));
    EXPECT_EQ(mUi->mDataCount, 0); // only a live day is counted
}

TEST_F(Request, ReplayGoesToTheReplayServiceWithoutTheCache) {
    mHost.mCache.addFormulaHistoryData("SH600000", "REALTIME", makeMeta(1), makeResult({{1, 0}}, {1}));
    auto data = makeMain();
    mHost.mLog.clear();
    data->requestReplay(ERunMode::Ordinary);
    const QString id = data->getReqID(key("SH600000"));
    EXPECT_EQ(mHost.mLog.of("CReplayManager::"),
              (QStringList{"CReplayManager::requestFormulas SH600000 " + id}));
    EXPECT_TRUE(mHost.mLog.of("CMultiRequestDataManager::").isEmpty());
    EXPECT_TRUE(mHost.mLog.of("CFormulaManager::").isEmpty());
    const auto live = mHost.mReplay.mLive.find("REALTIME.lua", "600000");
    live.onHistory(makeMeta(1), makeResult(minuteTimes(kDay, 570, 1), {10}), id, 1, QString(), true);
    live.onRealtime(0, id, makePoint(minuteTime(kDay, 571), {11}));
    EXPECT_EQ(series(*data, key("SH600000")).mValues[0], (std::vector<double>{10, 11}));
}

TEST_F(Request, SynchronousResultsAreStoredInOrderWithoutEvents) {
    auto data = makeMain();
    mHost.mFormulas.mSyncMetas = {makeMeta(1)};
    mHost.mFormulas.mSyncResults = {makeResult(minuteTimes(kDay, 570, 2), {10, 11})};
    startDrawing(*data);
    data->syncRequest(ERunMode::Ordinary);
    EXPECT_EQ(series(*data, key("SH600000")).mValues[0], (std::vector<double>{10, 11}));
    for (const int event : mEvents.numbers()) {
        EXPECT_NE(event, 3029);
        EXPECT_NE(event, 3151);
    }
}

TEST_F(Request, SynchronousResultsLeaveThePixmapsAlone) {
    auto data = makeSub();
    mHost.mFormulas.mSyncMetas = {makeMeta(1)};
    mHost.mFormulas.mSyncResults = {makeResult(minuteTimes(kDay, 570, 4), {10, 14, 12, 13})};
    data->syncRequest(ERunMode::Ordinary);
    startDrawing(*data);
    const QImage before = painted(*data);
    mHost.mFormulas.mSyncResults = {makeResult(minuteTimes(kDay, 570, 4), {13, 10, 14, 11})};
    data->syncRequest(ERunMode::Ordinary);
    EXPECT_EQ(series(*data, key("SH600000", "MACD")).mValues[0], (std::vector<double>{13, 10, 14, 11}));
    EXPECT_EQ(painted(*data), before);
    data->redraw();
    EXPECT_NE(painted(*data), before);
}

TEST_F(Request, FewerSynchronousResultsThanRequestsChangeNothing) {
    auto data = makeMain({"REALTIME", "REALTIMEVOL"});
    mHost.mFormulas.mSyncMetas = {makeMeta(1)};
    mHost.mFormulas.mSyncResults = {makeResult(minuteTimes(kDay, 570, 2), {10, 11})};
    data->syncRequest(ERunMode::Ordinary);
    EXPECT_TRUE(data->getData().isEmpty());
    mHost.mFormulas.mSyncMetas.resize(2);
    data->syncRequest(ERunMode::Ordinary);
    EXPECT_TRUE(data->getData().isEmpty());
}

TEST_F(Request, ResultTextFollowsTheNumberOfSeries) {
    auto data = requested({"REALTIME", "REALTIMEVOL"});
    EXPECT_EQ(data->getResultText(), "");
    const auto meta = makeMeta(1);
    const auto price = makeResult(minuteTimes(kDay, 570, 1), {10});
    const auto volume = makeResult(minuteTimes(kDay, 570, 1), {500});
    history(*data, key("SH600000"), price);
    EXPECT_EQ(data->getResultText().toStdString(), TC::IndexBaseData::getResultTxtStr(*price, *meta, true));
    history(*data, key("SH600000", "REALTIMEVOL"), volume);
    std::vector<se::RPCFormulaResult> results{*price, *volume};
    std::vector<se::RPCFormulaMetaResult> metas{*meta, *meta};
    EXPECT_EQ(data->getResultText().toStdString(), TC::IndexBaseData::getResultTxtStr(results, metas, true));
}

} // namespace
} // namespace tests
