// What comes of a server into the store, in which order, and what is told of what does not.

#include "terminal/history/HistoryDesk.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketFill.h"
#include "terminal/market/MarketWriter.h"
#include "terminal/market/PreviousClose.h"
#include "terminal/market/SimulatedClock.h"
#include "tests/feed/Eventually.h"
#include "tests/history/ScriptedServer.h"
#include "tests/support/FullDisk.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace terminal;
using tests::eventually;
using tests::minutesOf;

namespace {

const QString kKey = QStringLiteral("SH600000");
const QDate kFirst(2025, 11, 3); // a Monday; all weekdays of that month are trading days

class HistoryDeskTest : public ::testing::Test {
protected:
    void SetUp() override {
        mClockBefore = TC::CSingletonT<TC::CHostClock>::install(&mClock);
        mClock.pause();
        ASSERT_EQ(mStore.open(mFolder.filePath("market.db")), QString());
        ASSERT_EQ(keepServedDays(mStore), QString());
        ASSERT_EQ(fillStore(mStore, mClock.now()), QString());
        auto server = std::make_unique<tests::ScriptedServer>();
        mServer = server.get();
        mDesk = std::make_unique<HistoryDesk>(mStore, std::move(server));
        mDesk->setListener(
            [this](const QString &key, bool hasDays) { mTold.append(key + (hasDays ? "+" : "")); });
        mDesk->setReasonSink([this](const QString &reason) {
            std::lock_guard<std::mutex> hold(mLock);
            mReasons.append(reason);
        });
    }
    void TearDown() override {
        mDesk.reset();
        TC::CSingletonT<TC::CHostClock>::install(mClockBefore);
    }
    static int day(int number) { return dayOf(kFirst.addDays(number)); }
    void settle() {
        ASSERT_TRUE(eventually([this] { return mDesk->settle(std::chrono::milliseconds(1000)); }));
        QCoreApplication::processEvents();
    }
    MinuteBars stored(int number) { return mStore.bars(mStore.catalogue()->find(kKey)->id, day(number)); }
    QStringList reasons() {
        std::lock_guard<std::mutex> hold(mLock);
        return mReasons;
    }

    QTemporaryDir mFolder;
    SimulatedClock mClock{timeOf(QDate(2025, 12, 1), 600), 1.0};
    TC::CHostClock *mClockBefore = nullptr;
    CMarketStore mStore;
    tests::ScriptedServer *mServer = nullptr;
    QStringList mTold;
    std::mutex mLock; ///< guards the following
    QStringList mReasons;
    std::unique_ptr<HistoryDesk> mDesk;
};

} // namespace

TEST_F(HistoryDeskTest, TheDayThatIsShownComesFirstAndThoseInFrontFollow) {
    for (int number : {0, 1, 2, 3}) {
        mServer->put(kKey, day(number), minutesOf(day(number), 240, 10.0 + number));
    }
    mDesk->start();
    mDesk->want(kKey, day(2));
    settle();
    EXPECT_EQ(mServer->calls(), (QStringList{"instruments ", "days SH600000", "read SH600000 11-05",
                                             "read SH600000 11-04 11-03"}));
    EXPECT_EQ(stored(2), minutesOf(day(2), 240, 12.0));
    EXPECT_EQ(stored(0), minutesOf(day(0), 240, 10.0));
    EXPECT_TRUE(stored(3).empty());
    EXPECT_EQ(mTold, QStringList{"SH600000+"});
    EXPECT_EQ(mDesk->source().knownDays(kKey), (QVector<int>{day(0), day(1), day(2), day(3)}));
    EXPECT_EQ(previousCloseOf(mStore, kKey, day(2)).price, 11.0);
    EXPECT_EQ(historyText(mDesk->report()), QString());
}

TEST_F(HistoryDeskTest, WhatTheStoreHasIsNotReadAgain) {
    mServer->put(kKey, day(0), minutesOf(day(0), 240, 10.0));
    mDesk->want(kKey, day(0));
    settle();
    mDesk->want(kKey, day(0));
    settle();
    EXPECT_EQ(mServer->calls(), (QStringList{"days SH600000", "read SH600000 11-03", "days SH600000"}));
    EXPECT_EQ(mTold, QStringList{"SH600000+"});
}

TEST_F(HistoryDeskTest, ADayThatHasGrownIsReadAgain) {
    mServer->put(kKey, day(0), minutesOf(day(0), 120, 10.0));
    mDesk->want(kKey, day(0));
    settle();
    mServer->put(kKey, day(0), minutesOf(day(0), 240, 10.0));
    mDesk->want(kKey, day(0));
    settle();
    EXPECT_EQ(stored(0), minutesOf(day(0), 240, 10.0));
}

TEST_F(HistoryDeskTest, OfALongHistoryTwentyDaysComeInFront) {
    for (int number = 0; number < 28; ++number) {
        mServer->put(kKey, day(number), minutesOf(day(number), 2, 10.0));
    }
    mDesk->want(kKey, day(27));
    settle();
    EXPECT_EQ(mStore.importedCounts(mStore.catalogue()->find(kKey)->id).size(), 21);
    EXPECT_TRUE(stored(6).empty());
    EXPECT_FALSE(stored(7).empty());
}

TEST_F(HistoryDeskTest, NobodyWaitsForAServerThatDoesNotAnswer) {
    mServer->put(kKey, day(0), minutesOf(day(0), 240, 10.0));
    mServer->hold(true);
    mDesk->start();
    mDesk->want(kKey, day(0)); // and comes back while the server answers nothing
    EXPECT_FALSE(mDesk->settle(std::chrono::milliseconds(0)));
    EXPECT_TRUE(mTold.isEmpty());
    EXPECT_TRUE(mDesk->source().knownDays(kKey).isEmpty());
    mServer->hold(false);
    settle();
    EXPECT_EQ(stored(0).size(), 240U);
}

TEST_F(HistoryDeskTest, WhatCannotBeHadIsToldAndComesLater) {
    mServer->put(kKey, day(0), minutesOf(day(0), 240, 10.0));
    mServer->fail(HistoryTrouble::Gone);
    mDesk->want(kKey, day(0));
    ASSERT_TRUE(eventually([this] { return mServer->calls().size() >= 2; })) << "it is tried again";
    EXPECT_EQ(historyText(mDesk->report()),
              QString("历史服务器连接不上（自 10:00:00），1 个证券的历史分时不全，正在重试"));
    EXPECT_EQ(reasons(), QStringList{"scripted"});
    mServer->fail(HistoryTrouble::None);
    settle();
    EXPECT_EQ(stored(0).size(), 240U);
    EXPECT_EQ(historyText(mDesk->report()), QString());
}

TEST_F(HistoryDeskTest, EveryTroubleIsToldInItsWords) {
    const std::pair<HistoryTrouble, const char *> troubles[] = {
        {HistoryTrouble::Gone, "历史服务器连接不上（自 10:00:00），正在重试"},
        {HistoryTrouble::Slow, "历史服务器没有应答（自 10:00:00），正在重试"},
        {HistoryTrouble::Refused, "历史服务器不接受登录凭据（自 10:00:00），正在重试"},
        {HistoryTrouble::Unprepared, "历史服务器上还没有历史行情（自 10:00:00），正在重试"},
        {HistoryTrouble::Newer, "历史服务器的数据版本高于本程序，请升级本程序（自 10:00:00），正在重试"},
        {HistoryTrouble::Failed, "历史服务器出错（自 10:00:00），正在重试"},
        {HistoryTrouble::Cache, "历史行情写不进本机的行情库，请检查磁盘（自 10:00:00），正在重试"},
    };
    for (const auto &trouble : troubles) {
        EXPECT_EQ(historyText({{trouble.first, "reason"}, timeOf(kFirst, 600), 0, 0}), QString(trouble.second));
    }
    EXPECT_EQ(historyText({{}, 0, 3, 0}), QString()) << "what is on its way is no trouble";
    EXPECT_EQ(historyText({{}, 0, 0, 2}), QString("历史服务器上 2 个交易日的数据不合理，没有取用"));
}

TEST_F(HistoryDeskTest, ADayThatHoldsNoBarsIsToldAndDoesNotKeepTheOthersBack) {
    MinuteBars bad = minutesOf(day(1), 240, 10.0);
    bad[7].price = 0.0;
    mServer->put(kKey, day(0), minutesOf(day(0), 240, 10.0));
    mServer->put(kKey, day(1), bad);
    mServer->put(kKey, day(2), minutesOf(day(2), 240, 10.0));
    mDesk->want(kKey, day(2));
    settle();
    EXPECT_EQ(stored(0).size(), 240U);
    EXPECT_TRUE(stored(1).empty());
    EXPECT_EQ(stored(2).size(), 240U);
    EXPECT_EQ(reasons(), QStringList{"SH600000 2025-11-04: no bar at 2025-11-04 09:38"});
    EXPECT_EQ(historyText(mDesk->report()), QString("历史服务器上 1 个交易日的数据不合理，没有取用"));
    const int calls = mServer->calls().size();
    mDesk->want(kKey, day(2));
    settle();
    EXPECT_EQ(mServer->calls().size(), calls + 1) << "it is not read over and over";
}

TEST_F(HistoryDeskTest, InstrumentsThatTheStoreLacksAreTaken) {
    Instrument share;
    share.market = "SH";
    share.code = "688999";
    share.name = "新股";
    share.sessions = mStore.catalogue()->find(kKey)->sessions;
    mServer->listed = {share};
    mDesk->start();
    settle();
    ASSERT_NE(mStore.catalogue()->find("SH688999"), nullptr);
    EXPECT_EQ(mStore.catalogue()->find("SH688999")->name, QString("新股"));
    EXPECT_EQ(mTold, QStringList{""});
}

TEST_F(HistoryDeskTest, AFullDiskOfTheCacheIsToldAndNothingIsHalfThere) {
    mServer->put(kKey, day(0), minutesOf(day(0), 240, 10.0));
    {
        const tests::FullDisk full;
        mDesk->want(kKey, day(0));
        ASSERT_TRUE(eventually([this] { return !mDesk->report().failure.isNone(); }));
        EXPECT_EQ(mDesk->report().failure.trouble, HistoryTrouble::Cache);
        EXPECT_TRUE(historyText(mDesk->report()).startsWith("历史行情写不进本机的行情库"));
    }
    settle();
    EXPECT_EQ(stored(0).size(), 240U);
}

TEST_F(HistoryDeskTest, AStoreWithMadeUpDaysIsNotTaken) {
    CMarketStore own;
    ASSERT_EQ(own.open(mFolder.filePath("own.db")), QString());
    {
        MarketWriter writer(own); // as the first filling leaves it
        ASSERT_TRUE(writer.putNote("simulated market", "20260101") && writer.commit());
    }
    EXPECT_TRUE(keepServedDays(own).contains("has days of the made-up market"));
    EXPECT_FALSE(hasServedDays(own));
    EXPECT_TRUE(hasServedDays(mStore));
    EXPECT_TRUE(mStore.days(mStore.catalogue()->find(kKey)->id).isEmpty());
}
