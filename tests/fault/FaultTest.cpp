// The terminal while calls fail: memory, writing, opening, starting of threads and processes. Whatever fails, it ends by
// itself or goes on, and all that it acknowledged is there afterwards.
//
// A few calls of each kind are tried, evenly over the session. TIMESHARE_FAULTS=all tries every one, TIMESHARE_FAULTS=N
// so many of each kind.

#include "terminal/app/ProgramGuard.h"
#include "terminal/config/ConfigService.h"
#include "terminal/market/CMarketStore.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketFill.h"
#include "terminal/market/SimulatedExchange.h"
#include "terminal/trade/TradeService.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QVariant>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

using namespace terminal;

namespace {

constexpr int kPatience = 120000; ///< milliseconds of one session, on a machine that is busy
constexpr int kBars = 120; ///< in the imported file

/// In the order in which the library counts them, from 1 on.
const std::vector<std::string> kKinds{"",     "memory", "store-memory", "write",
                                      "sync", "open",   "process",      "thread"};

/// A way in which calls fail; no kind for none.
struct Fault {
    std::string kind;
    long at = 0; ///< the first that fails
    bool lasts = false; ///< and all after it
};

/// What became of a session.
struct Ending {
    bool byItself = false;
    int status = -1;
    QStringList done; ///< words of what was acknowledged
    QString errors;
    std::map<std::string, long> calls; ///< of each kind
};

std::map<std::string, long> callsIn(const QString &path) {
    QFile file(path);
    std::map<std::string, long> calls;
    const QByteArray content = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    for (size_t kind = 1; (kind + 1) * sizeof(long) <= size_t(content.size()) && kind < kKinds.size(); ++kind) {
        std::memcpy(&calls[kKinds[kind]], content.constData() + kind * sizeof(long), sizeof(long));
    }
    return calls;
}

class FaultTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        static const QTemporaryDir folder;
        filled() = folder.filePath("filled.db");
        if (!QFile::exists(filled())) {
            CMarketStore store;
            ASSERT_EQ(store.open(filled()), QString());
            ASSERT_EQ(fillStore(store, timeOf(QDate(2026, 11, 20), 630)), QString());
            recordPastDays(store);
        }
    }

    /// The sessions begin behind it, which takes longer than all the rest of one.
    static void recordPastDays(CMarketStore &store) {
        const SimulatedClock clock(timeOf(QDate(2026, 11, 20), 571), 1.0);
        SimulatedExchange exchange(store, clock);
        TradeService trade(store, exchange, clock);
        while (trade.recordPastDay()) {
        }
    }

    /// A fresh folder for one session.
    void prepare() {
        mFolder = std::make_unique<QTemporaryDir>();
        ASSERT_TRUE(QFile::copy(filled(), path("market.db")));
        ASSERT_TRUE(QFile::copy(TIMESHARE_SOURCE_DIR "/tests/terminal/data/orders.xls", path("orders.xls")));
        QByteArray bars = "symbol,exchange,datetime,open,high,low,close,volume,amount\n";
        for (int minute = 571; minute < 571 + kBars; ++minute) {
            bars += QStringLiteral("600998,SSE,2026-03-24 %1:%2:00,20.00,20.00,20.00,20.00,1000,20000\n")
                        .arg(minute / 60, 2, 10, QLatin1Char('0'))
                        .arg(minute % 60, 2, 10, QLatin1Char('0'))
                        .toUtf8();
        }
        write("bars.csv", bars);
        write("model.py", "print('sound')\n");
        write("config.json", R"({"kept": "before"})");
    }

    Ending run(const Fault &fault, const QString &program, const QStringList &arguments) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", mFolder->path());
        environment.remove("XDG_DATA_HOME");
        environment.remove("XDG_CONFIG_HOME");
        environment.insert("XDG_RUNTIME_DIR", mFolder->path());
        environment.insert("LD_PRELOAD", TIMESHARE_FAULT_LIBRARY);
        environment.insert("TIMESHARE_FAULT_KIND", QString::fromStdString(fault.kind));
        environment.insert("TIMESHARE_FAULT_AT", QString::number(fault.at));
        environment.insert("TIMESHARE_FAULT_COUNT", path("count"));
        if (fault.lasts) {
            environment.insert("TIMESHARE_FAULT_LASTS", "1");
        }
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(TIMESHARE_BINARY_DIR "/bin/") + program, arguments);
        Ending ending;
        if (!process.waitForFinished(kPatience)) {
            process.kill();
            process.waitForFinished();
        } else {
            ending.byItself = process.exitStatus() == QProcess::NormalExit;
            ending.status = process.exitCode();
        }
        ending.errors = QString::fromUtf8(process.readAllStandardError());
        ending.done = QString::fromUtf8(process.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
        ending.calls = callsIn(path("count"));
        return ending;
    }

    Ending runSession(const Fault &fault) {
        prepare();
        return run(fault, "fault_session", {mFolder->path()});
    }

    /// The store opens, is whole, and has what was acknowledged.
    void expectKept(const QStringList &done) {
        CMarketStore store;
        ASSERT_EQ(store.open(path("market.db")).toStdString(), "");
        EXPECT_EQ(rows(store, "PRAGMA integrity_check"), QStringList("ok"));
        EXPECT_EQ(rows(store, "PRAGMA foreign_key_check"), QStringList());
        const QString bars =
            rows(store, "SELECT count(*) FROM minute_bars b JOIN instruments i ON b.instrument "
                        "= i.id WHERE i.code = '600998'")
                .value(0);
        EXPECT_TRUE(bars == "0" || bars == QString::number(kBars)) << qPrintable(bars);
        if (done.contains("bars")) {
            EXPECT_EQ(bars, QString::number(kBars)) << "acknowledged";
        }
        if (done.contains("deal")) {
            EXPECT_EQ(rows(store, "SELECT count(*) FROM trade_deals WHERE key = '4711'"), QStringList("1"));
        }
        EXPECT_EQ(rows(store, "SELECT o.key FROM trade_orders o WHERE source = 0 AND traded <> (SELECT "
                              "total(volume) FROM trade_deals d WHERE d.account = o.account AND d.order_key = "
                              "o.key)"),
                  QStringList())
            << "orders and their deals are written together";
        expectConfigurationKept(done);
    }

    void expectConfigurationKept(const QStringList &done) {
        const ConfigService config(path("config.json"));
        EXPECT_EQ(config.messages(), QStringList());
        const bool isAside = QFile::exists(path("config.json.damaged"));
        if (!isAside) {
            EXPECT_EQ(config.value("kept"), QStringLiteral("before"));
        }
        if (done.contains("configuration")) {
            EXPECT_EQ(config.value("fault"), QStringLiteral("configured")) << "acknowledged";
        }
        if (done.contains("view")) {
            EXPECT_FALSE(config.section("view").isEmpty()) << "acknowledged";
        }
    }

    void expectSound(const Ending &ending) {
        EXPECT_TRUE(ending.byItself) << "crash or hang";
        EXPECT_TRUE(std::set<int>({0, 2, kNoMemoryLeft}).count(ending.status) == 1) << ending.status;
        EXPECT_FALSE(ending.done.contains("endless")) << "somebody waits for ever";
        EXPECT_TRUE(ending.status == 0 || !ending.errors.trimmed().isEmpty()) << "no word of why";
        expectKept(ending.done);
    }

    /// The calls of a session in which none fails.
    const std::map<std::string, long> &soundCalls() {
        static std::map<std::string, long> calls;
        if (calls.empty()) {
            const Ending sound = runSession({});
            EXPECT_EQ(sound.status, 0);
            EXPECT_EQ(sound.done, (QStringList{"chart", "configuration", "bars", "spreadsheet", "deal", "model",
                                               "job", "view", "end"}))
                << qPrintable(sound.errors);
            expectKept(sound.done);
            calls = sound.calls;
        }
        return calls;
    }

    /// Fails so many calls of a kind, evenly over a session, one session each: the odd ones alone, the even ones with all
    /// that follow. Where more are wanted than usual, each in both ways.
    void tryKind(const std::string &kind, long few) {
        const auto found = soundCalls().find(kind);
        ASSERT_TRUE(found != soundCalls().end() && found->second > 0);
        const long all = found->second;
        const QByteArray wanted = qgetenv("TIMESHARE_FAULTS");
        const long tries = std::min(wanted == "all" ? all : wanted.toLong() > 0 ? wanted.toLong() : few, all);
        for (long i = 0; i < tries; ++i) {
            for (const bool lasts : {false, true}) {
                if (wanted.isEmpty() && lasts != (i % 2 == 1)) {
                    continue;
                }
                // How many calls a session makes depends on how its threads happen to run: one that was not reached is
                // looked for earlier.
                Fault fault{kind, 1 + (2 * i + 1) * all / (2 * tries), lasts};
                while (!tryFault(fault, all) && fault.at > 1) {
                    fault.at /= 2;
                }
            }
        }
    }

    /// Whether the call was made, and failed.
    bool tryFault(const Fault &fault, long all) {
        const Ending ending = runSession(fault);
        SCOPED_TRACE(::testing::Message()
                     << fault.kind << " call " << fault.at << " of " << all
                     << (fault.lasts ? " and all after it" : "") << ", status " << ending.status
                     << ", done: " << qPrintable(ending.done.join(' ')) << "\n"
                     << qPrintable(ending.errors));
        expectSound(ending);
        const bool wasMade = ending.calls.at(fault.kind) >= fault.at;
        EXPECT_TRUE(wasMade || fault.at > 1) << "no call has failed";
        return wasMade;
    }

    QString path(const char *name) const { return mFolder->filePath(QLatin1String(name)); }
    void write(const char *name, const QByteArray &content) {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    static QStringList rows(CMarketStore &store, const QString &question) {
        QStringList all;
        QSqlQuery query(store.connection());
        EXPECT_TRUE(query.exec(question)) << qPrintable(question);
        while (query.next()) {
            all.append(query.value(0).toString());
        }
        return all;
    }

    std::unique_ptr<QTemporaryDir> mFolder;

private:
    static QString &filled() {
        static QString path;
        return path;
    }
};

} // namespace

TEST_F(FaultTest, NoThread) {
    tryKind("thread", 2);
}

TEST_F(FaultTest, NoProcess) {
    tryKind("process", 1);
}

TEST_F(FaultTest, NoFileCanBeOpened) {
    tryKind("open", 2);
}

TEST_F(FaultTest, TheDiskIsFull) {
    tryKind("write", 3);
}

TEST_F(FaultTest, TheDiskDoesNotKeep) {
    tryKind("sync", 1);
}

TEST_F(FaultTest, NoMemory) {
    tryKind("memory", 2);
}

TEST_F(FaultTest, NoMemoryForTheStore) {
    tryKind("store-memory", 1);
}
