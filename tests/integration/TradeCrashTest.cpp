// A process that is killed while it trades, and what the next one finds.

#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketFill.h"
#include "terminal/market/SimulatedExchange.h"
#include "terminal/trade/TradeService.h"
#include "tests/integration/ChildProcess.h"
#include "tests/integration/TradedShare.h"
#include "tests/support/Effort.h"

#include <QFile>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QVariant>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tuple>
#include <unistd.h>
#include <vector>

using namespace terminal;
using tests::kTradedShare;
using Child = tests::ChildProcess;

namespace {

const QDate kDate(2026, 11, 20);

qint64 at(int hour, int minute) {
    return timeOf(kDate, hour * 60 + minute);
}

/// The market and the trades of a store file.
struct Terminal {
    explicit Terminal(const QString &path) : good(store.open(path).isEmpty()) { clock.pause(); }
    void goTo(qint64 time) {
        clock.setTime(time);
        trade.advance();
    }
    int firstTask() {
        const auto tasks = trade.getTaskDetails(kTradedShare, {"80010001"});
        return tasks.empty() ? 0 : tasks.begin()->second.begin()->second->mTaskId;
    }

    CMarketStore store;
    bool good;
    SimulatedClock clock{at(9, 25), 1.0};
    SimulatedExchange exchange{store, clock};
    TradeService trade{store, exchange, clock};
};

class TradeCrashTest : public ::testing::Test {
protected:
    QString path(const char *name) const { return mFolder.filePath(QLatin1String(name)); }
    void fill(const QString &file) {
        CMarketStore store;
        ASSERT_EQ(store.open(file).toStdString(), "");
        ASSERT_EQ(fillStore(store, at(9, 25)).toStdString(), "");
    }
    static std::vector<std::string> rows(CMarketStore &store, const QString &question) {
        std::vector<std::string> all;
        QSqlQuery query(store.connection());
        EXPECT_TRUE(query.exec(question));
        while (query.next()) {
            all.push_back(query.value(0).toString().toStdString());
        }
        return all;
    }
    /// All own records of the store, one text each.
    static std::vector<std::string> ownRecords(CMarketStore &store) {
        return rows(
            store, "SELECT account || key || instrument || time || direction || offset_flag || price || volume "
                   "|| traded || status || ifnull(task, '') FROM trade_orders WHERE source = 0 "
                   "UNION ALL SELECT account || key || order_key || time || direction || price || volume || "
                   "commission FROM trade_deals WHERE source = 0 "
                   "UNION ALL SELECT id || status || cancel_time FROM trade_tasks "
                   "UNION ALL SELECT task || ordinal || finished FROM trade_task_items ORDER BY 1");
    }
    static std::vector<std::string> imports(CMarketStore &store) {
        return rows(store, "SELECT key FROM trade_deals WHERE source = 1 ORDER BY time, key");
    }
    static std::vector<std::string> dealsThatDoNotAddUp(CMarketStore &store) {
        return rows(store,
                    "SELECT o.key FROM trade_orders o WHERE source = 0 AND traded <> (SELECT "
                    "total(volume) FROM trade_deals d WHERE d.account = o.account AND d.order_key = o.key)");
    }

    QTemporaryDir mFolder;
};

/// Trades on from a minute, with an import every minute, and tells each minute once it is written.
void tradeOn(const QString &path, int from, const std::function<void()> &step) {
    Terminal terminal(path);
    for (int n = from; terminal.good; ++n) {
        terminal.trade.importDeal("out", kTradedShare, std::to_string(1000 + n), 10.0, 100,
                                  (at(9, 31) / 1000) + n, 48);
        if (n == from) {
            terminal.clock.setTime(at(10, 0));
            terminal.trade.advance();
            terminal.trade.cancelTask(terminal.firstTask(), QStringLiteral("test"));
        }
        terminal.goTo(at(10, 0) + n * 60000);
        step();
    }
}

} // namespace

TEST_F(TradeCrashTest, NothingIsLostOrDoubledByATerminalThatIsKilledWhileItTrades) {
    fill(path("model.db"));
    ASSERT_TRUE(QFile::copy(path("model.db"), path("market.db")));
    std::vector<std::string> expected;
    {
        Terminal undisturbed(path("model.db"));
        undisturbed.goTo(at(10, 0));
        undisturbed.trade.cancelTask(undisturbed.firstTask(), QStringLiteral("test"));
        undisturbed.goTo(at(11, 0));
        expected = ownRecords(undisturbed.store);
    }
    ASSERT_GT(expected.size(), 100U);
    size_t told = 0;
    size_t least = 0;
    for (int round = 0; round < tests::rounds(12); ++round) {
        least += static_cast<size_t>(round % 3) + 1;
        Child child([&](const std::function<void()> &step) {
            tradeOn(path("market.db"), static_cast<int>(told), step);
        });
        for (int step = 0; step <= round % 3; ++step) {
            ASSERT_TRUE(child.waitForStep());
            ++told;
            child.letGo();
        }
        usleep(static_cast<useconds_t>(round) * 1500);
        child.kill(); // somewhere in the next minute
        Terminal next(path("market.db"));
        ASSERT_TRUE(next.good);
        EXPECT_EQ(rows(next.store, "PRAGMA integrity_check"), std::vector<std::string>{"ok"});
        EXPECT_TRUE(rows(next.store, "PRAGMA foreign_key_check").empty());
        EXPECT_TRUE(dealsThatDoNotAddUp(next.store).empty());
        const std::vector<std::string> imported = imports(next.store);
        ASSERT_TRUE(imported.size() >= told && imported.size() <= told + 1) << imported.size() << ' ' << told;
        for (size_t n = 0; n < imported.size(); ++n) {
            EXPECT_EQ(imported[n], std::to_string(1000 + n));
        }
        told = imported.size();
        next.goTo(at(11, 0));
        EXPECT_EQ(ownRecords(next.store), expected) << "killed in round " << round;
    }
    EXPECT_GE(told, least);
}
