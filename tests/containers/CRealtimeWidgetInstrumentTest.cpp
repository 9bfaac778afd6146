// The instrument of a pane, its overlays and formulas.

#include "tests/containers/PaneFixture.h"

namespace tests {
namespace {

class PaneInstrumentTest : public PaneFixture {
protected:
    void SetUp() override {
        mHost.mCache.setKeeping(false);
        makeMainPane();
        mPane->request(kOrdinary);
        answerDay("REALTIME", kDay, {10.0, 10.1});
        mHost.mStocks.add("SZ", "000001", 20.0)->mName = "Bank";
    }
    bool titleTells(const char *text) const { return title()->text().contains(QString::fromUtf8(text)); }
};

TEST_F(PaneInstrumentTest, AnInstrumentIsNamedInTheTitle) {
    mDetail->mName = "Pudong";
    mPane->setStock(QStringLiteral("SH600000"), false);
    EXPECT_TRUE(titleTells("Pudong"));
    mPane->clearStock();
    EXPECT_FALSE(titleTells("Pudong"));
}

TEST_F(PaneInstrumentTest, APortfolioIsNamedByItsKey) {
    mHost.mStocks.mPortfolios.insert(QStringLiteral("77"));
    mHost.mStocks.mDefault = std::make_shared<TC::CInstrumentDetail>(*mDetail);
    mHost.mStocks.mDefault->mName = "nobody";
    mPane->setStock(QStringLiteral("77"), false);
    ASSERT_TRUE(title()->getStock());
    EXPECT_EQ(title()->getStock()->mMarket, "TZZH");
    EXPECT_EQ(title()->getStock()->mCode, "77");
    EXPECT_EQ(title()->getStock()->mName, "77");
    EXPECT_EQ(title()->getStock()->mPriceTick, mDetail->mPriceTick); // of the default record
    EXPECT_EQ(mHost.mStocks.mDefault->mName, "nobody");
}

TEST_F(PaneInstrumentTest, APortfolioNeedsNoDefaultRecord) {
    mHost.mStocks.mPortfolios.insert(QStringLiteral("77"));
    mPane->setStock(QStringLiteral("77"), false);
    EXPECT_EQ(title()->getStock()->mName, "77");
}

TEST_F(PaneInstrumentTest, AUserDefinedIndexIsNamedByItsRecord) {
    mHost.mIndexes.add(QStringLiteral("CD01"))->mBaseValue = 1000.0;
    mPane->setStock(QStringLiteral("CD01"), false);
    EXPECT_EQ(title()->getStock()->mCode, "CD01");
    EXPECT_EQ(title()->getStock()->mLastClose, 1000.0);
}

TEST_F(PaneInstrumentTest, AnUnknownKeyLeavesTheTitleAsItWas) {
    mPane->setStock(QStringLiteral("SH600000"), false);
    mPane->setStock(QStringLiteral("nothing"), true);
    EXPECT_EQ(title()->getStock(), mDetail);
}

TEST_F(PaneInstrumentTest, OverlaysAreToldAnewOnlyWithASectorLevel) {
    mUi->addStock(QStringLiteral("SZ000001"), QString(), true);
    mPane->setStock(QStringLiteral("SH600000"), false);
    EXPECT_FALSE(titleTells("Bank"));
    mUi->mAddSwBkzsLevel = 1;
    mPane->setStock(QStringLiteral("SH600000"), false);
    mPane->updateOverlay(2, QString());
    for (const fakehost::LiveRequest &live : mHost.mFormulas.mLive.all()) {
        live.onHistory(makeMeta(1), makeResult(minuteTimes(kDay, 570, 2), {10.0, 10.1}), live.id(), 1,
                       QString(), false);
    }
    title()->updateView();
    EXPECT_TRUE(titleTells("Bank"));
}

TEST_F(PaneInstrumentTest, NothingIsRequestedByAChangeOfInstrument) {
    const int before = requests();
    mPane->setStock(QStringLiteral("SZ000001"), false);
    EXPECT_EQ(requests(), before);
}

// Overlays

TEST_F(PaneInstrumentTest, AnOverlayIsAddedWithdrawnAndAskedFor) {
    mPane->updateOverlay(1, QStringLiteral("SZ000001"));
    EXPECT_EQ(mUi->mAddStocks.size(), 1);
    EXPECT_TRUE(mUi->mAddNoAxisStocks.isEmpty());
    const QStringList traffic = mHost.mLog.of(QStringLiteral("CFormulaManager::"));
    EXPECT_TRUE(traffic.value(1).startsWith(QStringLiteral("CFormulaManager::unrequestFormulas")));
    EXPECT_TRUE(traffic.value(2).startsWith(QStringLiteral("CFormulaManager::requestFormulas")));
    EXPECT_TRUE(mHost.mFormulas.mLive.find("REALTIME.lua", "000001").onHistory);
}

TEST_F(PaneInstrumentTest, OperationElevenOverlaysOnTheScaleOfTheMainInstrument) {
    mPane->updateOverlay(11, QStringLiteral("SZ000001"));
    EXPECT_TRUE(mUi->mAddStocks.isEmpty());
    EXPECT_EQ(mUi->mAddNoAxisStocks.size(), 1);
}

TEST_F(PaneInstrumentTest, AnOverlayWithoutAKeyDoesNothing) {
    mHost.mLog.clear();
    mPane->updateOverlay(1, QString());
    mPane->updateOverlay(11, QString());
    EXPECT_TRUE(mHost.mLog.of(QStringLiteral("CFormulaManager::")).isEmpty());
    EXPECT_TRUE(mUi->getAllAddStockList().isEmpty());
}

TEST_F(PaneInstrumentTest, TakingOverlaysAwayLeavesTheMainRequestsRunning) {
    mPane->updateOverlay(1, QStringLiteral("SZ000001"));
    for (const fakehost::LiveRequest &live : mHost.mFormulas.mLive.all()) {
        live.onHistory(makeMeta(1), makeResult(minuteTimes(kDay, 570, 2), {10.0, 10.1}), live.id(), 1,
                       QString(), false);
    }
    ASSERT_TRUE(newest()->getData()->hasSeries({QStringLiteral("SZ000001"), QStringLiteral("REALTIME")}));
    ASSERT_TRUE(titleTells("Bank"));
    mHost.mLog.clear();
    mPane->updateOverlay(0, QString());
    EXPECT_TRUE(mUi->getAllAddStockList().isEmpty());
    EXPECT_FALSE(newest()->getData()->hasSeries({QStringLiteral("SZ000001"), QStringLiteral("REALTIME")}));
    EXPECT_TRUE(newest()->getData()->hasSeries(key("REALTIME")));
    EXPECT_FALSE(titleTells("Bank"));
    EXPECT_EQ(requests(), 0);
    EXPECT_TRUE(mHost.mFormulas.mLive.find("REALTIME.lua", "600000").onHistory);
    EXPECT_FALSE(mHost.mFormulas.mLive.find("REALTIME.lua", "000001").onHistory);
}

TEST_F(PaneInstrumentTest, OperationTwoEmptiesAllDaysAndAsksAnew) {
    mPane->scaleView(false);
    mHost.mLog.clear();
    mPane->updateOverlay(2, QString());
    EXPECT_FALSE(mPane->hasData());
    EXPECT_EQ(requests(), 2);
}

TEST_F(PaneInstrumentTest, AnyOtherOverlayOperationDoesNothing) {
    mHost.mLog.clear();
    for (const int op : {-1, 3, 10, 12}) {
        mPane->updateOverlay(op, QStringLiteral("SZ000001"));
    }
    EXPECT_TRUE(mHost.mLog.of(QStringLiteral("CFormulaManager::")).isEmpty());
    EXPECT_TRUE(mUi->getAllAddStockList().isEmpty());
}

// Formulas

TEST_F(PaneInstrumentTest, AFormulaIsAddedToAllDays) {
    mPane->scaleView(false);
    mPane->addIndex(QStringLiteral("MACD"));
    EXPECT_TRUE(mPane->findIndex(QStringLiteral("macd")));
    EXPECT_TRUE(graph(1)->findIndex(QStringLiteral("MACD")));
    EXPECT_EQ(mPane->gePretIndex(), QStringLiteral("MACD"));
    EXPECT_TRUE(titleTells("MACD"));
    EXPECT_EQ(mPane->getMainIndex(), QStringLiteral("REALTIME"));
}

TEST_F(PaneInstrumentTest, AFormulaIsTakenFromAllDays) {
    mPane->scaleView(false);
    mPane->addIndex(QStringLiteral("MACD"));
    mPane->delIndex(QStringLiteral("MACD"));
    EXPECT_FALSE(graph(0)->findIndex(QStringLiteral("MACD")));
    EXPECT_FALSE(graph(1)->findIndex(QStringLiteral("MACD")));
    EXPECT_TRUE(mPane->gePretIndex().isEmpty());
}

TEST_F(PaneInstrumentTest, TakingAllFormulasKeepsTheNameOfTheLast) {
    mPane->scaleView(false);
    mPane->addIndex(QStringLiteral("MACD"));
    mPane->delAllIndex();
    EXPECT_TRUE(mPane->getIndexes().isEmpty());
    EXPECT_TRUE(graph(1)->getIndexes().isEmpty());
    EXPECT_EQ(mPane->gePretIndex(), QStringLiteral("MACD"));
}

TEST_F(PaneInstrumentTest, UpdatingAFormulaReplacesTheOthersAndRequestsNothing) {
    mPane->scaleView(false);
    mPane->addIndex(QStringLiteral("MACD"));
    mHost.mLog.clear();
    mPane->updateIndex(QStringLiteral("KDJ"));
    const QList<QString> left{"REALTIME", "REALTIMEVOL", "KDJ"};
    EXPECT_EQ(graph(0)->getIndexes(), left);
    EXPECT_EQ(graph(1)->getIndexes(), left);
    EXPECT_EQ(mPane->gePretIndex(), QStringLiteral("KDJ"));
    EXPECT_TRUE(titleTells("KDJ"));
    EXPECT_EQ(requests(), 0);
}

TEST_F(PaneInstrumentTest, OperationsOnAFormulaRequestAndKeepTheNameOfTheLast) {
    mPane->scaleView(false);
    mPane->addIndex(QStringLiteral("MACD"));
    mHost.mLog.clear();
    mPane->updateIndex(1, QStringLiteral("KDJ"));
    EXPECT_EQ(requests(), 2);
    EXPECT_TRUE(graph(1)->findIndex(QStringLiteral("KDJ")));
    mPane->updateIndex(0, QStringLiteral("KDJ"));
    EXPECT_EQ(requests(), 4);
    EXPECT_FALSE(graph(1)->findIndex(QStringLiteral("KDJ")));
    EXPECT_EQ(mPane->gePretIndex(), QStringLiteral("MACD"));
    mPane->updateIndex(2, QStringLiteral("KDJ"));
    EXPECT_EQ(requests(), 4);
    EXPECT_FALSE(mPane->findIndex(QStringLiteral("KDJ")));
}

// The title

TEST_F(PaneInstrumentTest, TheTitleTellsTheValuesAtTheCrossLine) {
    mPane->updateIndexId(0);
    EXPECT_TRUE(titleTells("10.00"));
    EXPECT_FALSE(titleTells("10.10"));
    mPane->updateIndexId(-1);
    EXPECT_TRUE(titleTells("10.10"));
}

TEST_F(PaneInstrumentTest, TheTitleFollowsADayAndComesBack) {
    mPane->scaleView(false);
    mPane->scaleView(false);
    mPane->request(kOrdinary);
    answerDay("REALTIME", kDay, {10.10});
    answerDay("REALTIME", kDay - kDayLength, {10.20});
    answerDay("REALTIME", kDay - 2 * kDayLength, {10.30});
    mPane->setTitleData(2);
    EXPECT_TRUE(titleTells("10.30"));
    mPane->setTitleData(1);
    EXPECT_TRUE(titleTells("10.20"));
    mPane->setTitleData(3); // there is no such day
    mPane->setTitleData(-1);
    EXPECT_TRUE(titleTells("10.20"));
    mPane->updateIndexId(-1);
    EXPECT_TRUE(titleTells("10.10"));
}

TEST_F(PaneInstrumentTest, AccountsGoToTheNewestDay) {
    mPane->updateLinkageData(QStringLiteral("a1"), true);
    EXPECT_EQ(mUi->mStockAccounts, QList<QString>{"a1"});
    mPane->updateLinkageData(QList<QString>{"a1", "a2"}, true);
    EXPECT_EQ(mUi->mStockAccounts, (QList<QString>{"a1", "a2"}));
    mPane->updateLinkageData(QList<QString>{"a1", "a2"}, false);
    EXPECT_TRUE(mUi->mStockAccounts.isEmpty());
    EXPECT_EQ(mKeeper->of(3163).size(), 3u);
}

} // namespace
} // namespace tests
