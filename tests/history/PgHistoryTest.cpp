// History of a real server: loaded, read, and what is told when it fails.

#ifdef TIMESHARE_WITH_POSTGRES

#include "terminal/app/ChartView.h"
#include "terminal/app/TerminalServices.h"
#include "terminal/app/TerminalWindow.h"
#include "terminal/history/PgSchema.h"
#include "terminal/history/ServerHistory.h"
#include "tests/history/PgHistoryFixture.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>

#include <gtest/gtest.h>

using namespace terminal;
using tests::eventually;
using tests::minutesOf;

namespace {

using tests::kDate;
const char *const kSecrets[] = {"owner-secret", "reader-secret", "loader-secret", "wrong-secret"};

/// Of this program, which an answer without end does not fill; with room for what a sanitizer takes.
constexpr int kMostMegabytes = 1500;

using PgHistoryTest = tests::PgHistoryFixture;

} // namespace

TEST_F(PgHistoryTest, AServerThatCopiesWhatWasNotAskedForIsLeft) {
    PgConnection connection(address("loader"), "", std::chrono::seconds(30));
    bool isNew = false;
    ASSERT_EQ(connection.connect(isNew).reason, QString());
    PgRows rows;
    EXPECT_EQ(connection.ask("COPY (SELECT generate_series(1, 1000000)) TO STDOUT", {}, rows).trouble,
              HistoryTrouble::Failed);
    EXPECT_EQ(connection.ask("SELECT 1", {}, rows).trouble, HistoryTrouble::Gone) << "closed";
    ASSERT_EQ(connection.connect(isNew).reason, QString());
    EXPECT_TRUE(isNew);
    ASSERT_EQ(connection.ask("SELECT 1", {}, rows).reason, QString());
    EXPECT_EQ(rows.whole(0, 0), 1);
}

TEST_F(PgHistoryTest, AnAnswerWithoutEndIsLeft) {
    PgConnection connection(address("loader"), "", std::chrono::seconds(120));
    bool isNew = false;
    ASSERT_EQ(connection.connect(isNew).reason, QString());
    PgRows rows;
    // Half of what an answer may have, twice: each for itself.
    for (int time = 0; time < 2; ++time) {
        ASSERT_EQ(connection.ask("SELECT repeat('x', 1000) FROM generate_series(1, 32000)", {}, rows).reason,
                  QString());
        EXPECT_EQ(rows.count(), 32000);
    }
    for (const char *statement : {"SELECT repeat('x', 1000), generate_series(1, 10000000)", // 10 GB
                                  "SELECT repeat('x', 100000000)"}) { // in one value
        ASSERT_EQ(connection.connect(isNew).reason, QString());
        const HistoryFailure failure = connection.ask(statement, {}, rows);
        EXPECT_EQ(failure.trouble, HistoryTrouble::Failed);
        EXPECT_EQ(failure.reason, QString("an answer of more than 64 MB"));
    }
    QFile status("/proc/self/status");
    ASSERT_TRUE(status.open(QIODevice::ReadOnly));
    const QByteArray all = status.readAll();
    const int peak = all.indexOf("VmHWM:");
    EXPECT_LT(all.mid(peak + 6, all.indexOf("kB", peak) - peak - 6).trimmed().toInt() / 1024, kMostMegabytes);
    ASSERT_EQ(connection.connect(isNew).reason, QString());
    EXPECT_EQ(connection.ask("SELECT 1", {}, rows).reason, QString());
}

TEST_F(PgHistoryTest, ADayWithMoreBarsThanMinutesIsNone) {
    ASSERT_EQ(load({"600000"}, {kDate, QDate(2025, 11, 24)}).reason, QString());
    tests::PgServer::Admin admin = server()->admin();
    ASSERT_EQ(
        admin
            .run("INSERT INTO timeshare.minute_bars SELECT instrument, day, time + n::bigint * 86400000, open, "
                 "high, low, price, "
                 "average, volume, amount FROM timeshare.minute_bars, generate_series(1, 40) n WHERE day "
                 "= '2025-11-21'")
            .reason,
        QString());
    ASSERT_EQ(admin.run("UPDATE timeshare.days SET bars = 9840 WHERE day = '2025-11-21'").reason, QString());
    QVector<ServedDay> served;
    ASSERT_EQ(reader()->read("SH600000", {dayOf(kDate), dayOf(QDate(2025, 11, 24))}, served).reason, QString());
    ASSERT_EQ(served.size(), 2);
    EXPECT_EQ(served[0].bars.size(), 1441U) << "no more is sent";
    EXPECT_NE(faultOf(served[0]), QString());
    EXPECT_EQ(served[1].bars, minutesOf(dayOf(QDate(2025, 11, 24)), 240, 10.0)) << "the other is whole";
    EXPECT_EQ(faultOf(served[1]), QString());
}

TEST_F(PgHistoryTest, WhatIsLoadedIsReadAsItWas) {
    LoadOutcome outcome;
    ASSERT_EQ(load({"600000", "600001"}, {kDate, QDate(2025, 12, 1)}, 240, &outcome).reason, QString());
    EXPECT_EQ(outcome.days, 4);
    EXPECT_EQ(outcome.bars, 960);
    EXPECT_EQ(outcome.known, 0);
    const auto server = reader();
    QString stamp;
    QVector<Instrument> instruments;
    ASSERT_EQ(server->instruments(stamp, instruments).reason, QString());
    ASSERT_EQ(instruments.size(), 2);
    EXPECT_EQ(instruments[0].key(), QString("SH600000"));
    EXPECT_EQ(instruments[0].name, QString("浦发"));
    EXPECT_EQ(instruments[0].types, (QVector<int>{277, 5}));
    EXPECT_EQ(instruments[0].sessions.table(), share("600000").sessions.table());
    EXPECT_EQ(instruments[0].lastClose, TC::kUnsetValue);
    instruments.clear();
    ASSERT_EQ(server->instruments(stamp, instruments).reason, QString());
    EXPECT_TRUE(instruments.isEmpty()) << "nothing has changed since";
    QVector<ListedDay> days;
    ASSERT_EQ(server->days("SH600000", days).reason, QString());
    ASSERT_EQ(days.size(), 2);
    EXPECT_EQ(days[0].day, dayOf(kDate));
    EXPECT_EQ(days[1].bars, 240);
    QVector<ServedDay> served;
    ASSERT_EQ(
        server->read("SH600000", {dayOf(kDate), dayOf(QDate(2025, 12, 1)), dayOf(QDate(2025, 12, 2))}, served)
            .reason,
        QString());
    ASSERT_EQ(served.size(), 2);
    EXPECT_EQ(served[0].bars, minutesOf(dayOf(kDate), 240, 10.0));
    EXPECT_EQ(served[0].previousClose, 9.5);
    EXPECT_EQ(served[1].previousClose, 0.0);
    EXPECT_EQ(faultOf(served[0]), QString());
    days.clear();
    EXPECT_EQ(server->days("SH999999", days).reason, QString());
    EXPECT_TRUE(days.isEmpty());
}

TEST_F(PgHistoryTest, MonthsArePartitions) {
    ASSERT_EQ(load({"600000"}, {kDate, QDate(2025, 12, 1)}).reason, QString());
    EXPECT_EQ(count("minute_bars_2025_11"), QByteArray("240"));
    EXPECT_EQ(count("minute_bars_2025_12"), QByteArray("240"));
    EXPECT_EQ(count("days_2025_12"), QByteArray("1"));
}

TEST_F(PgHistoryTest, ALoadIsRepeatedWithoutEffectAndAPartIsCompleted) {
    LoadOutcome outcome;
    ASSERT_EQ(load({"600000"}, {kDate}, 120).reason, QString());
    ASSERT_EQ(load({"600000"}, {kDate}, 240, &outcome).reason, QString());
    EXPECT_EQ(outcome.days, 1);
    EXPECT_EQ(count("minute_bars"), QByteArray("240"));
    ASSERT_EQ(load({"600000"}, {kDate}, 240, &outcome).reason, QString());
    EXPECT_EQ(outcome.days, 0);
    EXPECT_EQ(outcome.known, 1);
    ASSERT_EQ(load({"600000"}, {kDate}, 100, &outcome).reason, QString());
    EXPECT_EQ(outcome.known, 1) << "fewer minutes take none away";
    EXPECT_EQ(count("minute_bars"), QByteArray("240"));
    EXPECT_EQ(server()->admin().ask("SELECT bars::text FROM timeshare.days"), QByteArray("240"));
}

TEST_F(PgHistoryTest, AMinuteWithOtherValuesIsRefusedAndNothingOfItIsLoaded) {
    ASSERT_EQ(load({"600000"}, {kDate}).reason, QString());
    ASSERT_TRUE(
        server()->admin().run("UPDATE timeshare.minute_bars SET volume = 1 WHERE volume = 101").isNone());
    const HistoryFailure failure = load({"600000", "600001"}, {kDate}, 241);
    EXPECT_EQ(failure.reason, QString("2025-11-21 09:32 of SH600000 is on the server with other values"));
    EXPECT_EQ(count("minute_bars"), QByteArray("240"));
}

TEST_F(PgHistoryTest, TheReadersRoleWritesNothing) {
    ASSERT_EQ(load({"600000"}, {kDate}).reason, QString());
    PgConnection connection(address("reader"), "", std::chrono::seconds(30));
    bool isNew = false;
    ASSERT_EQ(connection.connect(isNew).reason, QString());
    EXPECT_EQ(connection.run("SELECT 1 FROM timeshare.minute_bars").reason, QString());
    for (const char *statement : {"DELETE FROM timeshare.minute_bars", "UPDATE timeshare.days SET bars = 1",
                                  "DROP TABLE timeshare.days", "INSERT INTO timeshare.version VALUES (2)",
                                  "DELETE FROM timeshare.minute_bars_2025_11"}) {
        EXPECT_EQ(connection.run(statement).trouble, HistoryTrouble::Refused) << statement;
    }
}

TEST_F(PgHistoryTest, ADatabaseWithoutTablesIsTold) {
    QVector<ListedDay> days;
    EXPECT_EQ(reader()->days("SH600000", days).trouble, HistoryTrouble::Unprepared);
}

TEST_F(PgHistoryTest, TablesOfALaterVersionAreRefused) {
    ASSERT_EQ(load({"600000"}, {kDate}).reason, QString());
    ASSERT_TRUE(server()->admin().run("UPDATE timeshare.version SET version = 2").isNone());
    QVector<ListedDay> days;
    const HistoryFailure failure = reader()->days("SH600000", days);
    EXPECT_EQ(failure.trouble, HistoryTrouble::Newer);
    EXPECT_EQ(failure.reason, QString("the tables of history are of version 2, this program knows 1"));
    EXPECT_TRUE(days.isEmpty());
    EXPECT_EQ(load({"600001"}, {kDate}).trouble, HistoryTrouble::Newer);
}

TEST_F(PgHistoryTest, ARowThatIsNoBarIsRefusedByTheTablesAndByTheTerminal) {
    ASSERT_EQ(load({"600000"}, {kDate}).reason, QString());
    tests::PgServer::Admin admin = server()->admin();
    const char *const spoil = "UPDATE timeshare.minute_bars SET price = 'NaN' WHERE volume = 101";
    EXPECT_EQ(admin.run(spoil).trouble, HistoryTrouble::Failed);
    ASSERT_TRUE(admin.run("ALTER TABLE timeshare.minute_bars DROP CONSTRAINT is_bar").isNone());
    ASSERT_TRUE(admin.run(spoil).isNone());
    QVector<ServedDay> served;
    ASSERT_EQ(reader()->read("SH600000", {dayOf(kDate)}, served).reason, QString());
    ASSERT_EQ(served.size(), 1);
    EXPECT_EQ(faultOf(served[0]), QString("no bar at 2025-11-21 09:32"));
}

TEST_F(PgHistoryTest, AWrongPasswordIsToldAndNowhereWritten) {
    ASSERT_EQ(load({"600000"}, {kDate}).reason, QString());
    QVector<ListedDay> days;
    const HistoryFailure failure = reader("wrong-secret")->days("SH600000", days);
    EXPECT_EQ(failure.trouble, HistoryTrouble::Refused);
    EXPECT_FALSE(failure.reason.isEmpty());
    EXPECT_FALSE(failure.reason.contains('\n'));
    for (const char *secret : kSecrets) {
        EXPECT_FALSE(failure.reason.contains(secret));
    }
    EXPECT_EQ(reader()->days("SH600000", days).reason, QString());
}

TEST_F(PgHistoryTest, AServerThatIsGoneAndComesBackIsFoundAgain) {
    ASSERT_EQ(load({"600000"}, {kDate}).reason, QString());
    const auto connection = reader();
    QVector<ListedDay> days;
    ASSERT_EQ(connection->days("SH600000", days).reason, QString());
    server()->kill();
    EXPECT_EQ(connection->days("SH600000", days).trouble, HistoryTrouble::Gone);
    ASSERT_TRUE(server()->restart());
    days.clear();
    EXPECT_EQ(connection->days("SH600000", days).reason, QString());
    EXPECT_EQ(days.size(), 1);
    server()->kill();
    ASSERT_TRUE(server()->restart());
    days.clear();
    EXPECT_EQ(connection->days("SH600000", days).reason, QString()) << "a connection that is dead is made anew";
    EXPECT_EQ(days.size(), 1);
}

TEST_F(PgHistoryTest, AServerThatStandsStillIsToldAndNotWaitedFor) {
    ASSERT_EQ(load({"600000"}, {kDate}).reason, QString());
    const auto connection = reader(nullptr, std::chrono::milliseconds(1500));
    QVector<ListedDay> days;
    // A busy machine may be slow by itself, at first.
    ASSERT_TRUE(eventually([&] { return connection->days("SH600000", days).isNone(); }));
    server()->freeze();
    EXPECT_EQ(connection->days("SH600000", days).trouble, HistoryTrouble::Slow) << "in a statement";
    EXPECT_EQ(connection->days("SH600000", days).trouble, HistoryTrouble::Slow) << "in connecting";
    connection->interrupt();
    server()->thaw();
    days.clear();
    const auto other = reader();
    EXPECT_TRUE(eventually([&] { return other->days("SH600000", days).isNone(); }));
}

TEST_F(PgHistoryTest, LoadersAtOnceNeitherLoseNorDoubleADay) {
    const QString program = QStringLiteral(TIMESHARE_BINARY_DIR) + "/bin/timeshare-load";
    PgLoader preparing(address("loader"));
    ASSERT_EQ(preparing.prepare().reason, QString());
    // Each file has the morning or the afternoon of the same days of 40 instruments, and some minutes of the other.
    QStringList files;
    for (int part = 0; part < 3; ++part) {
        QByteArray text = "datetime,code,open,high,low,close,volume,amount\n";
        for (int code = 600100; code < 600140; ++code) {
            for (int minute = part * 70; minute < std::min(240, part * 70 + 110); ++minute) {
                const int clock = minute < 120 ? 571 + minute : 781 + minute - 120;
                text += QStringLiteral("2025-11-%1 %2:%3:00,%4.XSHG,10,11,9,10,%5,%6\n")
                            .arg(20 + code % 2)
                            .arg(clock / 60, 2, 10, QLatin1Char('0'))
                            .arg(clock % 60, 2, 10, QLatin1Char('0'))
                            .arg(code)
                            .arg(100 + minute)
                            .arg(10 * (100 + minute))
                            .toUtf8();
            }
        }
        files.append(mFolder.filePath(QStringLiteral("part%1.csv").arg(part)));
        QFile file(files.last());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TIMESHARE_HISTORY_PASSWORD", "loader-secret");
    std::vector<std::unique_ptr<QProcess>> loaders;
    for (const QString &file : files + QStringList{files[1]}) {
        loaders.push_back(std::make_unique<QProcess>());
        loaders.back()->setProcessEnvironment(environment);
        loaders.back()->setProcessChannelMode(QProcess::MergedChannels);
        loaders.back()->start(program, {"--history", server()->url("loader"), file});
    }
    for (const auto &loader : loaders) {
        ASSERT_TRUE(loader->waitForFinished(300000));
        const QByteArray said = loader->readAll();
        EXPECT_EQ(loader->exitCode(), 0) << said.constData();
        for (const char *secret : kSecrets) {
            EXPECT_FALSE(said.contains(secret));
        }
    }
    EXPECT_EQ(count("minute_bars"), QByteArray("9600"));
    EXPECT_EQ(count("days"), QByteArray("40"));
    EXPECT_EQ(count("days WHERE bars <> 240"), QByteArray("0"));
    EXPECT_EQ(count("instruments"), QByteArray("40"));
    // 40 instruments, each with volumes of 100 to 339 in 240 minutes.
    EXPECT_EQ(server()->admin().ask("SELECT sum(volume)::bigint::text FROM timeshare.minute_bars"),
              QByteArray::number(40LL * (100 + 339) * 240 / 2));
    for (const char *secret : kSecrets) {
        QByteArray log = server()->log();
        log.replace("PASSWORD 'reader-secret'", "")
            .replace("PASSWORD 'loader-secret'", ""); // the making of the roles
        EXPECT_FALSE(log.contains(secret)) << secret;
    }
}

TEST_F(PgHistoryTest, AFileThatIsNoneIsToldAndTheOthersAreLoaded) {
    QFile good(mFolder.filePath("SH600200.csv"));
    ASSERT_TRUE(good.open(QIODevice::WriteOnly));
    good.write("datetime,open,high,low,close,volume\n2025-11-21 09:31:00,10,11,9,10,5\n");
    good.close();
    QFile bad(mFolder.filePath("SH600201.csv"));
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
    bad.write("datetime,open,high,low,close,volume\n2025-11-21 09:31:00,10,11,9,nothing,5\n");
    bad.close();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TIMESHARE_HISTORY_PASSWORD", "loader-secret");
    QProcess loader;
    loader.setProcessEnvironment(environment);
    loader.start(QStringLiteral(TIMESHARE_BINARY_DIR) + "/bin/timeshare-load",
                 {"--history", server()->url("loader"), bad.fileName(), good.fileName()});
    ASSERT_TRUE(loader.waitForFinished(300000));
    EXPECT_EQ(loader.exitCode(), 1);
    EXPECT_TRUE(loader.readAllStandardError().contains("SH600201.csv:2: "));
    EXPECT_EQ(loader.readAllStandardOutput(), QByteArray("1 days with 1 bars loaded, 0 days were there\n"));
    EXPECT_EQ(count("minute_bars"), QByteArray("1"));
}

TEST_F(PgHistoryTest, ATerminalShowsDaysOfTheServer) {
    ASSERT_EQ(load({"600000", "688999"}, {QDate(2025, 11, 20), kDate}).reason, QString());
    qputenv("TIMESHARE_HISTORY_PASSWORD", "reader-secret");
    TerminalSettings settings;
    settings.store = mFolder.filePath("history.db");
    settings.config = mFolder.filePath("config.json");
    settings.start = timeOf(QDate(2025, 11, 24), 600);
    settings.history = server()->url("reader");
    QString error;
    auto services = TerminalServices::open(settings, error);
    ASSERT_NE(services, nullptr) << qPrintable(error);
    services->awaitHistory("SH688999", kDate, std::chrono::milliseconds(0));
    services->awaitHistory("SH688999", kDate, std::chrono::milliseconds(30000));
    EXPECT_EQ(services->nameOf("SH688999"), QString("浦发"));
    EXPECT_EQ(services->daysOf("SH688999"), (QVector<QDate>{kDate, QDate(2025, 11, 20)}));
    EXPECT_EQ(services->feed().dayBars("SH688999", dayOf(kDate)), minutesOf(dayOf(kDate), 240, 10.0));
    EXPECT_TRUE(services->feed().dayBars("SH600000", dayOf(QDate(2025, 11, 24))).empty())
        << "nothing is made up";
    EXPECT_EQ(services->trouble(), QString());
    // Without the server it goes on with what it has.
    server()->kill();
    services->awaitHistory("SH600000", kDate, std::chrono::milliseconds(0));
    EXPECT_TRUE(eventually([&] { return services->trouble().startsWith("历史服务器连接不上（自 "); }))
        << qPrintable(services->trouble());
    EXPECT_EQ(services->feed().dayBars("SH688999", dayOf(kDate)).size(), 240U);
    ASSERT_TRUE(server()->restart());
    EXPECT_TRUE(eventually([&] { return services->feed().dayBars("SH600000", dayOf(kDate)).size() == 240U; }));
    EXPECT_TRUE(eventually([&] { return services->trouble().isEmpty(); }));
    services.reset();
    settings.history.clear(); // the store alone: its days, and nothing made up
    services = TerminalServices::open(settings, error);
    ASSERT_NE(services, nullptr) << qPrintable(error);
    EXPECT_EQ(services->daysOf("SH688999"), (QVector<QDate>{kDate, QDate(2025, 11, 20)}));
    qunsetenv("TIMESHARE_HISTORY_PASSWORD");
}

TEST_F(PgHistoryTest, TheWayIsEncryptedWhenTheAddressWantsIt) {
    ASSERT_EQ(load({"600000"}, {kDate}).reason, QString());
    QProcess openssl;
    openssl.start("openssl", {"req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj",
                              "/CN=127.0.0.1", "-addext", "subjectAltName=IP:127.0.0.1", "-keyout",
                              server()->pathOf("key"), "-out", server()->pathOf("certificate")});
    ASSERT_TRUE(openssl.waitForFinished(60000));
    ASSERT_EQ(openssl.exitCode(), 0) << openssl.readAllStandardError().constData();
    ASSERT_TRUE(QFile::setPermissions(server()->pathOf("key"), QFile::ReadOwner | QFile::WriteOwner));
    tests::PgServer::giveToServer(server()->pathOf("key"));
    const QByteArray whole =
        "?sslmode=verify-full&sslrootcert=" + QFile::encodeName(server()->pathOf("certificate"));
    QVector<ListedDay> days;
    EXPECT_EQ(makePgHistoryServer(address("reader", nullptr, whole))->days("SH600000", days).trouble,
              HistoryTrouble::Gone)
        << "a server without encryption";
    tests::PgServer::Admin admin = server()->admin();
    ASSERT_TRUE(admin
                    .run(("ALTER SYSTEM SET ssl_cert_file = '" +
                          QFile::encodeName(server()->pathOf("certificate")) + '\'')
                             .constData())
                    .isNone());
    ASSERT_TRUE(
        admin
            .run(("ALTER SYSTEM SET ssl_key_file = '" + QFile::encodeName(server()->pathOf("key")) + '\'')
                     .constData())
            .isNone());
    ASSERT_TRUE(admin.run("ALTER SYSTEM SET ssl = on").isNone());
    ASSERT_TRUE(admin.run("SELECT pg_reload_conf()").isNone());
    PgConnection encrypted(address("reader", nullptr, whole), "", std::chrono::seconds(30));
    bool isNew = false;
    EXPECT_TRUE(eventually([&] { return encrypted.connect(isNew).isNone(); }));
    PgRows rows;
    ASSERT_EQ(encrypted.ask("SELECT ssl::text FROM pg_stat_ssl WHERE pid = pg_backend_pid()", {}, rows).reason,
              QString());
    EXPECT_EQ(rows.text(0, 0), QByteArray("true"));
    EXPECT_EQ(makePgHistoryServer(address("reader", nullptr, "?sslmode=verify-full&sslrootcert=/etc/hostname"))
                  ->days("SH600000", days)
                  .trouble,
              HistoryTrouble::Gone)
        << "a certificate that nobody trusts";
}

#endif
