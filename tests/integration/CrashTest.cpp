// A process that is killed in the middle of a write, and what the next one finds.

#include "terminal/config/ConfigService.h"
#include "terminal/market/FileImporter.h"
#include "terminal/market/MarketDate.h"
#include "tests/integration/ChildProcess.h"
#include "tests/support/Effort.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <unistd.h>

using namespace terminal;
using Child = tests::ChildProcess;

namespace {

class CrashTest : public ::testing::Test {
protected:
    QString path(const char *name) const { return mFolder.filePath(QLatin1String(name)); }
    QString writeTrades(const char *name, const QByteArray &symbol, int rows) {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("Symbol,Datetime,Price,Volume\n");
        const QByteArray row = symbol + ",2026-03-23 09:31:30,10,1\n";
        for (int i = 0; i < rows; ++i) {
            file.write(row);
        }
        return file.fileName();
    }
    static int count(CMarketStore &store, const QString &table) {
        QSqlQuery query(store.connection());
        return query.exec(QStringLiteral("SELECT count(*) FROM ") + table) && query.next()
                   ? query.value(0).toInt()
                   : -1;
    }

    QTemporaryDir mFolder;
};

} // namespace

TEST_F(CrashTest, AnImportThatIsKilledAnywhereLeavesWhatWasThereBefore) {
    const QString kept = writeTrades("kept.csv", "600000.SH", 3);
    const QString large = writeTrades("large.csv", "600998.SH", 100000);
    {
        CMarketStore store;
        ASSERT_EQ(store.open(path("market.db")).toStdString(), "");
        ASSERT_TRUE(importMarketFile(store, {}, kept).isGood());
    }
    bool ended = false;
    int kills = 0;
    for (int killAt = 1; !ended; killAt += tests::kStride) {
        ASSERT_LT(killAt, 1000);
        Child child([&](const std::function<void()> &step) {
            CMarketStore store;
            if (store.open(path("market.db")).isEmpty()) {
                importMarketFile(store, {}, large, [&step](int, int) {
                    step();
                    return true;
                });
            }
            // The last import runs to its end, and the store is not closed then either.
            kill(getpid(), SIGKILL);
        });
        for (int step = 1; !ended && step <= killAt; ++step) {
            ended = !child.waitForStep();
            if (!ended && step < killAt) {
                child.letGo();
            }
        }
        child.kill();
        CMarketStore store;
        ASSERT_EQ(store.open(path("market.db")).toStdString(), "") << "killed at report " << killAt;
        const int expected = ended ? 100003 : 3;
        EXPECT_EQ(count(store, "ticks"), expected) << "killed at report " << killAt;
        EXPECT_EQ(count(store, "days"), ended ? 2 : 1);
        EXPECT_EQ(count(store, "minute_bars"), ended ? 2 : 1);
        EXPECT_EQ(store.catalogue()->instruments.size(), ended ? 2 : 1);
        kills += ended ? 0 : 1;
    }
    EXPECT_GE(kills, tests::rounds(10)) << "while the rows are read and while they are stored";
}

TEST_F(CrashTest, AConfigurationIsTheOldOneOrTheNewOneWhereverItsWriterIsKilled) {
    {
        ConfigService service(path("config.json"));
        service.setNumbers("formulas", "MACD", {{"SHORT", 12.0}});
        service.setNumbers("count", "writes", {{"n", 0.0}});
    }
    int told = 0;
    for (int round = 0; round < tests::rounds(30); ++round) {
        const int before = told;
        Child child([&](const std::function<void()> &step) {
            ConfigService service(path("config.json"));
            for (int i = before + 1;; ++i) {
                // The filling makes a write long enough to be hit in its middle.
                service.changeSection("filling", {{"text", QString(20000 + i, 'x')}});
                service.setNumbers("count", "writes", {{"n", double(i)}});
                step();
            }
        });
        for (int step = 0; step <= round % 4; ++step) {
            ASSERT_TRUE(child.waitForStep());
            ++told;
            child.letGo();
        }
        child.kill(); // somewhere in the next write
        ConfigService service(path("config.json"));
        EXPECT_TRUE(service.messages().isEmpty()) << qPrintable(service.messages().join('\n'));
        const int found = static_cast<int>(service.numbers("count", "writes").value("n", -1.0));
        EXPECT_GE(found, told) << "what was told to be written is there";
        EXPECT_EQ(service.numbers("formulas", "MACD").value("SHORT"), 12.0);
        told = found;
    }
}

// The program itself.
class ProgramCrashTest : public CrashTest {
protected:
    // `largestFile` is what a file may have at most, in bytes: the kernel ends the program at the write that goes
    // beyond, wherever that is. 0: no limit.
    void startProgram(QProcess &process, const QStringList &arguments, qint64 largestFile = 0) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_DATA_HOME", "XDG_CONFIG_HOME"}) {
            environment.remove(name);
        }
        environment.insert("HOME", mFolder.path());
        process.setProcessEnvironment(environment);
        const QString limits =
            largestFile > 0 ? QStringLiteral("ulimit -c 0; ulimit -f %1; ").arg(largestFile / 512) : QString();
        process.start("/bin/sh", QStringList{"-c", limits + "exec \"$@\"", "sh",
                                             TIMESHARE_BINARY_DIR "/bin/timeshare-terminal"} +
                                     arguments +
                                     QStringList{"--store", path("market.db"), "--snapshot", path("a.png")});
    }
    int run(const QStringList &arguments, QString *errors = nullptr) {
        QProcess process;
        startProgram(process, arguments);
        if (!process.waitForFinished(120000)) {
            process.kill();
            process.waitForFinished();
            return -1;
        }
        if (errors) {
            *errors = QString::fromUtf8(process.readAllStandardError());
        }
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }
};

TEST_F(ProgramCrashTest, AProgramThatIsKilledWhileItImportsStartsAgainWithoutThatImport) {
    const QString large = writeTrades("large.csv", "600998.SH", 60000);
    const QString kept = writeTrades("kept.csv", "600997.SH", 3);
    ASSERT_EQ(run({"--import", kept}), 0);
    const QString log = path("market.db-wal");
    // The transaction goes to the log once it no longer fits into memory.
    for (const qint64 written :
         tests::kSanitized ? QVector<qint64>{1 << 20} : QVector<qint64>{1 << 18, 1 << 20}) {
        ASSERT_LE(QFileInfo(log).size(), 0) << "the store was closed in order";
        QProcess process;
        startProgram(process, {"--import", large}, written);
        ASSERT_TRUE(process.waitForFinished(120000));
        ASSERT_EQ(process.exitStatus(), QProcess::CrashExit);
        ASSERT_EQ(process.exitCode(), SIGXFSZ);
        ASSERT_EQ(QFileInfo(log).size(), written) << "killed in the middle of the import";
        QString errors;
        EXPECT_EQ(run({"--instrument", "SH600998"}, &errors), 2);
        EXPECT_TRUE(errors.contains("SH600998")) << qPrintable(errors);
        EXPECT_EQ(run({"--instrument", "SH600997", "--date", "2026-03-23"}, &errors), 0) << qPrintable(errors);
    }
    CMarketStore store;
    ASSERT_EQ(store.open(path("market.db")).toStdString(), "");
    EXPECT_EQ(count(store, "ticks"), 3);
}
