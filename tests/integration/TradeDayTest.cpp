#include "host/services/CStockManager.h"
#include "terminal/app/TerminalServices.h"
#include "terminal/market/MarketDate.h"
#include "tests/integration/TerminalFixture.h"
#include "tests/integration/TradedShare.h"
#include "tests/support/Golden.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QThread>
#include <QVariant>

#include <atomic>
#include <csignal>
#include <map>
#include <thread>

using namespace terminal;
using tests::kTradedShare;
using tests::TerminalFixture;

namespace {

const std::set<std::string> kAccounts{"80010001", "80020002", "90010001"};

/// The terminal's services with a day of trading.
class TradeDayTest : public TerminalFixture {
protected:
    TC::CLinkageManager &trade() { return TC::CSingletonT<TC::CLinkageManager>::instance(); }

    /// Keys of the deals of a day, with their volumes, after a look at all records of the day.
    std::map<std::string, int> checkedDeals(int day, const std::string &instrument) {
        std::map<std::string, int> dealt, deals;
        for (const auto &account : trade().getDealDetails(day, instrument, kAccounts)) {
            for (const auto &deal : account.second) {
                const std::string &key = deal.second->mDealKey;
                dealt[account.first + key.substr(0, key.rfind('-'))] += deal.second->mVolume;
                deals[account.first + key] = deal.second->mVolume;
            }
        }
        for (const auto &account : trade().getOrderDetails(day, instrument, kAccounts)) {
            for (const auto &order : account.second) {
                EXPECT_LE(order.second->mTradedVolume, order.second->mVolume);
                EXPECT_EQ(order.second->mTradedVolume, dealt[account.first + order.first]) << order.first;
            }
        }
        return deals;
    }
    double dealtAmount(int day, const std::string &instrument, int direction) {
        double amount = 0.0;
        for (const auto &account : trade().getDealDetails(day, instrument, kAccounts)) {
            for (const auto &deal : account.second) {
                amount += deal.second->mDirection == direction ? deal.second->mAmount : 0.0;
            }
        }
        return amount;
    }
};

/// The answer of a question to a store file that nobody has open.
QVariant ask(const QString &path, const QString &question) {
    QVariant answer;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("ask"));
        database.setDatabaseName(path);
        EXPECT_TRUE(database.open());
        QSqlQuery query(database);
        EXPECT_TRUE(query.exec(question)) << qPrintable(question);
        answer = query.next() ? query.value(0) : QVariant();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("ask"));
    return answer;
}

} // namespace

TEST_F(TradeDayTest, AnAfternoonAtTheFastestPaceLeavesConsistentRecords) {
    std::atomic<int> told{0};
    std::atomic<int> onThisThread{0};
    const QThread *here = QThread::currentThread();
    const boost::signals2::scoped_connection connection =
        trade().sigLinkageChanged.connect([&](const std::vector<std::string> &) {
            ++told;
            onThisThread += QThread::currentThread() == here;
        });
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    const size_t before = checkedDeals(dayOf(mToday), kTradedShare).size();
    mServices->clock().setTime(timeOf(mToday, 780));
    mServices->clock().setPace(600.0);
    mServices->clock().resume();
    ASSERT_TRUE(QTest::qWaitFor([&] { return mServices->clock().now() > timeOf(mToday, 902); }, 60000));
    mServices->clock().pause();
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            const auto tasks = trade().getTaskDetails(kTradedShare, {"80020002"});
            return !tasks.empty() && tasks.begin()->second.begin()->second->mStatus >= kvservice::eTaskFinished;
        },
        20000));
    EXPECT_GT(checkedDeals(dayOf(mToday), kTradedShare).size(), before);
    EXPECT_GT(told, 5);
    EXPECT_EQ(onThisThread, 0);
    const auto totals = trade().getTotalBuySellAmounts({kTradedShare}, kAccounts, {}, false);
    ASSERT_FALSE(totals.empty());
    EXPECT_NEAR(totals.rbegin()->second.first, dealtAmount(dayOf(mToday), kTradedShare, 48), 1e-6);
    EXPECT_NEAR(totals.rbegin()->second.second, dealtAmount(dayOf(mToday), kTradedShare, 49), 1e-6);
}

TEST_F(TradeDayTest, PastDaysAreTheSameAfterARestart) {
    while (mServices->trade().recordPastDay()) {
    }
    const int past = dayOf(QDate(2026, 11, 18));
    const auto deals = checkedDeals(past, kTradedShare);
    EXPECT_GT(deals.size(), 10U);
    mWindow.reset();
    mServices.reset();
    TerminalSettings settings;
    settings.store = mFolder.path() + "/market.db";
    settings.config = mFolder.path() + "/config.json";
    settings.start = mNow;
    QString error;
    mServices = TerminalServices::open(settings, error);
    ASSERT_TRUE(mServices) << qPrintable(error);
    EXPECT_EQ(checkedDeals(past, kTradedShare), deals);
}

TEST_F(TradeDayTest, MarksOfAllAccountsStandOnTheChart) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    ASSERT_TRUE(waitUntilComplete());
    EXPECT_EQ(view().uiParam()->mStockAccounts, (QList<QString>{"80010001", "80020002"}));
    EXPECT_EQ(view().uiParam()->mFutureAccounts, QList<QString>{"90010001"});
    const QImage marked = graphImage();
    size_t shown = 0;
    for (const auto &column : view().uiParam()->mLinkageBuys) {
        shown += column.second.first > 0;
    }
    EXPECT_GT(shown, 0U);
    view().uiParam()->mLinkageFlags = 1;
    EXPECT_NE(graphImage(), marked);
}

TEST_F(TradeDayTest, ANewTradeComesToTheScreenByItself) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    ASSERT_TRUE(waitUntilComplete());
    // A deal at 09:35, above all prices of the day.
    TC::CRealtimeGraphWidget &graph = *view().graph();
    const auto range = view().data()->getMaxMinMap().value(TC::CFormulaKey("SH600000", "REALTIME"));
    const double price = range.second + 0.95 * (range.first - range.second);
    const int split = static_cast<int>(2.0 * graph.height() / 3.0 + 0.5);
    const QPoint at(view().uiParam()->getXAxisByIndex(5), view().data()->yOfValue(price, {1, 3, 1, split - 5}));
    const auto isRed = [&] {
        const QColor color = tests::onScreen(*mWindow).pixelColor(graph.mapTo(mWindow.get(), at));
        return color.red() > 100 && color.green() < 60;
    };
    ASSERT_FALSE(isRed());
    trade().importDeal("80010001", kTradedShare, "mine", price, 100, timeOf(mToday, 575) / 1000, 48);
    EXPECT_TRUE(QTest::qWaitFor(isRed, 10000));
    EXPECT_TRUE(view().data()->hitDeal(at.x(), at.y()));
    trade().clearImportData();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isRed(); }, 10000));
}

TEST_F(TradeDayTest, TheWindowMayGoWhileTradesAreTold) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    std::atomic<bool> over{false};
    std::atomic<int> told{0};
    std::thread teller([&] {
        for (; !over; ++told) {
            trade().sigLinkageChanged({kTradedShare});
            trade().sigTaskChanged({kTradedShare, "SZ000001"});
        }
    });
    ASSERT_TRUE(QTest::qWaitFor([&] { return told > 20; }, 10000));
    mWindow.reset();
    const int before = told;
    ASSERT_TRUE(QTest::qWaitFor([&] { return told > before + 20; }, 10000));
    over = true;
    teller.join();
    EXPECT_EQ(trade().sigLinkageChanged.num_slots(), 0u);
    EXPECT_EQ(trade().sigTaskChanged.num_slots(), 0u);
}

TEST_F(TradeDayTest, AProgramKilledWhileItWritesLosesNothingThatWasWritten) {
    mWindow.reset();
    mServices.reset();
    const QString store = mFolder.path() + "/market.db";
    qint64 written = 0;
    for (int round = 0; round < 3; ++round) {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_DATA_HOME", mFolder.path());
        environment.insert("XDG_CONFIG_HOME", mFolder.path());
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(TIMESHARE_BINARY_DIR "/bin/timeshare-terminal"),
                      {"--store", store, "--speed", "600"});
        ASSERT_TRUE(program.waitForStarted());
        const QString question = QStringLiteral("SELECT count(*) FROM trade_days");
        const qint64 more = written + 3;
        ASSERT_TRUE(QTest::qWaitFor([&] { return ask(store, question).toLongLong() >= more; }, 60000));
        ASSERT_EQ(::kill(static_cast<pid_t>(program.processId()), SIGKILL), 0);
        program.waitForFinished();
        written = ask(store, question).toLongLong();
        EXPECT_EQ(ask(store, QStringLiteral("PRAGMA integrity_check")).toString(), QStringLiteral("ok"));
        EXPECT_FALSE(ask(store, QStringLiteral("PRAGMA foreign_key_check")).isValid());
        EXPECT_GE(written, more);
        // Every deal counts in its order, whatever the moment.
        EXPECT_EQ(
            ask(store,
                QStringLiteral("SELECT count(*) FROM trade_orders o WHERE traded <> (SELECT total(volume) FROM "
                               "trade_deals d WHERE d.account = o.account AND d.order_key = o.key)"))
                .toInt(),
            0);
    }
}
