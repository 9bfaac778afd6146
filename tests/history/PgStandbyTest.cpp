// A server of history and another that follows it, of which the first fails.

#ifdef TIMESHARE_WITH_POSTGRES

#include "terminal/app/TerminalServices.h"
#include "tests/history/PgHistoryFixture.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>

using namespace terminal;
using tests::eventually;

namespace {

using tests::kDate;
const QDate kNextDate(2025, 11, 24);

/// How long a terminal waits for all hosts together; long enough for a busy machine.
constexpr std::chrono::milliseconds kPatience{10000};

/// The server of all tests is the first here; a test that ends it starts it again.
class PgStandbyTest : public tests::PgHistoryFixture {
protected:
    static void SetUpTestSuite() {
        PgHistoryFixture::SetUpTestSuite();
        if (server()) {
            ASSERT_TRUE(server()
                            ->admin("postgres")
                            .run("CREATE ROLE replicator REPLICATION LOGIN PASSWORD 'replicator-secret'")
                            .isNone());
        }
    }
    void SetUp() override {
        PgHistoryFixture::SetUp();
        if (!IsSkipped()) {
            ASSERT_EQ(load({"600000"}, {kDate}).reason, QString());
            ASSERT_TRUE(mStandby.follow(*server(), "replicator", "replicator-secret"))
                << mStandby.log().constData();
        }
    }
    void TearDown() override {
        if (server() && mIsFirstGone) {
            ASSERT_TRUE(server()->restart());
        }
    }

    void killFirst() {
        mIsFirstGone = true;
        server()->kill();
    }
    /// Both, the first in front.
    QString url(const char *user, const char *rest = "") const {
        return QStringLiteral("postgres://%1@127.0.0.1:%2,127.0.0.1:%3/history%4")
            .arg(QLatin1String(user))
            .arg(server()->port())
            .arg(mStandby.port())
            .arg(QLatin1String(rest));
    }
    HistoryAddress bothOf(const char *user, const char *rest = "") const {
        HistoryAddress address;
        EXPECT_EQ(readHistoryAddress(url(user, rest), address), QString());
        address.password = QByteArray(user) + "-secret";
        return address;
    }
    /// Days that a terminal hears of; -1 when it hears of none.
    static int daysOf(HistoryServer &server) {
        QVector<ListedDay> days;
        return server.days("SH600000", days).isNone() ? static_cast<int>(days.size()) : -1;
    }
    /// The port of the host that an address leads to; what is wrong when there is none.
    static QByteArray ledTo(const HistoryAddress &address) {
        PgConnection connection(address, "", kPatience);
        bool isNew = false;
        PgRows rows;
        HistoryFailure failure = connection.connect(isNew);
        failure = failure.isNone() ? connection.ask("SELECT inet_server_port()::text", {}, rows) : failure;
        return failure.isNone() ? rows.text(0, 0) : failure.reason.toUtf8();
    }
    QString dayFile(const QDate &date) const {
        QFile file(mFolder.filePath("day.csv"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("datetime,code,open,high,low,close,volume,amount\n" + date.toString(Qt::ISODate).toLatin1() +
                   " 09:31:00,600000.XSHG,10,11,9,10,5,50\n");
        return file.fileName();
    }
    struct Loading {
        int status;
        QByteArray output;
        QByteArray errors;
    };
    Loading runLoader(const QString &file) const {
        QProcess loader;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("TIMESHARE_HISTORY_PASSWORD", "loader-secret");
        loader.setProcessEnvironment(environment);
        loader.start(QStringLiteral(TIMESHARE_BINARY_DIR) + "/bin/timeshare-load",
                     {"--history", url("loader"), file});
        EXPECT_TRUE(loader.waitForFinished(300000));
        return {loader.exitCode(), loader.readAllStandardOutput(), loader.readAllStandardError()};
    }
    bool standbyFollows() {
        const QByteArray place = server()->admin("postgres").ask("SELECT pg_current_wal_lsn()::text");
        const QByteArray question = "SELECT (pg_last_wal_replay_lsn() >= '" + place + "')::text";
        return eventually([&] { return mStandby.admin("postgres").ask(question.constData()) == "true"; });
    }

    tests::PgServer mStandby;
    bool mIsFirstGone = false;
};

} // namespace

TEST_F(PgStandbyTest, ReadingGoesOnAndLoadingGoesOnWhenTheStandbyTakesOver) {
    ASSERT_TRUE(standbyFollows());
    const auto connection = makePgHistoryServer(bothOf("reader"));
    ASSERT_EQ(daysOf(*connection), 1);
    killFirst();
    EXPECT_EQ(daysOf(*connection), 1) << "read from the standby, at once";

    const QString file = dayFile(kNextDate);
    const Loading refused = runLoader(file);
    EXPECT_NE(refused.status, 0);
    EXPECT_TRUE(refused.errors.contains("Connection refused")) << refused.errors.constData();
    EXPECT_TRUE(refused.errors.contains("session is read-only")) << refused.errors.constData();
    EXPECT_EQ(refused.errors.count('\n'), 1) << refused.errors.constData();

    ASSERT_EQ(mStandby.admin("postgres").ask("SELECT pg_promote()::text"), QByteArray("true"));
    const Loading loaded = runLoader(file);
    EXPECT_EQ(loaded.status, 0) << loaded.errors.constData();
    EXPECT_EQ(loaded.output, QByteArray("1 days with 1 bars loaded, 0 days were there\n"));
    EXPECT_EQ(daysOf(*connection), 2);
    const Loading again = runLoader(file);
    EXPECT_EQ(again.output, QByteArray("0 days with 0 bars loaded, 1 days were there\n"))
        << "nothing is doubled";
    EXPECT_EQ(again.status, 0);

    tests::PgServer next; // in the place of the one that has failed
    ASSERT_TRUE(next.follow(mStandby, "replicator", "replicator-secret")) << next.log().constData();
    EXPECT_EQ(next.admin().ask("SELECT count(*)::text FROM timeshare.days"), QByteArray("2"));
}

TEST_F(PgStandbyTest, ATerminalFetchesFromTheStandbyWhenTheFirstIsGone) {
    ASSERT_EQ(load({"600036"}, {kDate}).reason, QString());
    ASSERT_TRUE(standbyFollows());
    qputenv("TIMESHARE_HISTORY_PASSWORD", "reader-secret");
    TerminalSettings settings;
    settings.store = mFolder.filePath("history.db");
    settings.config = mFolder.filePath("config.json");
    settings.start = timeOf(kNextDate, 600);
    settings.history = url("reader");
    QString error;
    const auto services = TerminalServices::open(settings, error);
    ASSERT_NE(services, nullptr) << qPrintable(error);
    services->awaitHistory("SH600000", kDate, std::chrono::milliseconds(0));
    services->awaitHistory("SH600000", kDate, std::chrono::milliseconds(30000));
    ASSERT_EQ(services->feed().dayBars("SH600000", dayOf(kDate)).size(), 240U);
    killFirst();
    services->awaitHistory("SH600036", kDate, std::chrono::milliseconds(0));
    EXPECT_TRUE(eventually([&] { return services->feed().dayBars("SH600036", dayOf(kDate)).size() == 240U; }))
        << qPrintable(services->trouble());
    EXPECT_TRUE(eventually([&] { return services->trouble().isEmpty(); })) << qPrintable(services->trouble());
    qunsetenv("TIMESHARE_HISTORY_PASSWORD");
}

TEST_F(PgStandbyTest, AHostThatStandsStillDoesNotKeepTheOtherFromBeingAsked) {
    ASSERT_TRUE(standbyFollows());
    server()->freeze();
    QElapsedTimer time;
    time.start();
    const auto connection = makePgHistoryServer(bothOf("reader"), kPatience);
    QVector<ListedDay> days;
    EXPECT_EQ(connection->days("SH600000", days).reason, QString());
    EXPECT_EQ(days.size(), 1);
    EXPECT_LT(time.elapsed(), kPatience.count());
    // Half of the patience is the share of one of two; an address may give it less.
    time.start();
    EXPECT_EQ(ledTo(bothOf("reader", "?connect_timeout=2")), QByteArray::number(mStandby.port()));
    EXPECT_LT(time.elapsed(), kPatience.count() / 2);
    server()->thaw();
}

TEST_F(PgStandbyTest, AnAddressTellsWhichOfTheHostsWillDo) {
    const QByteArray first = QByteArray::number(server()->port());
    const QByteArray standby = QByteArray::number(mStandby.port());
    EXPECT_EQ(ledTo(bothOf("reader")), first);
    EXPECT_EQ(ledTo(bothOf("reader", "?target_session_attrs=any")), first);
    EXPECT_EQ(ledTo(bothOf("reader", "?target_session_attrs=primary")), first);
    EXPECT_EQ(ledTo(bothOf("reader", "?target_session_attrs=read-write")), first);
    EXPECT_EQ(ledTo(bothOf("reader", "?target_session_attrs=standby")), standby);
    EXPECT_EQ(ledTo(bothOf("reader", "?target_session_attrs=read-only")), standby);
    EXPECT_EQ(ledTo(bothOf("reader", "?target_session_attrs=prefer-standby")), standby);
    // A terminal cannot write anywhere, and finds the one that could nevertheless.
    EXPECT_EQ(daysOf(*makePgHistoryServer(bothOf("reader", "?target_session_attrs=read-write"), kPatience)), 1);
    mStandby.kill();
    EXPECT_EQ(ledTo(bothOf("reader", "?target_session_attrs=prefer-standby")), first);
    EXPECT_EQ(daysOf(*makePgHistoryServer(bothOf("reader", "?target_session_attrs=standby"), kPatience)), -1);
    ASSERT_TRUE(mStandby.restart());
}

TEST_F(PgStandbyTest, ARefusalIsNotTakenToTheNextHost) {
    HistoryAddress address = bothOf("reader");
    address.password = "wrong-secret";
    const auto connection = makePgHistoryServer(address, kPatience);
    QVector<ListedDay> days;
    EXPECT_EQ(connection->days("SH600000", days).trouble, HistoryTrouble::Refused);
    EXPECT_FALSE(mStandby.log().contains("password authentication failed"));
}

TEST_F(PgStandbyTest, WhatIsLoadedIsOnTheStandbyWhenTheFirstWaitsForIt) {
    tests::PgServer::Admin admin = server()->admin("postgres");
    ASSERT_TRUE(admin.run("ALTER SYSTEM SET synchronous_standby_names = '*'").isNone());
    ASSERT_TRUE(admin.run("SELECT pg_reload_conf()").isNone());
    ASSERT_TRUE(eventually([&] {
        return admin.ask("SELECT count(*)::text FROM pg_stat_replication WHERE sync_state = 'sync'") == "1";
    }));
    EXPECT_EQ(runLoader(dayFile(kNextDate)).status, 0);
    killFirst(); // with no time for anything that was still under way
    EXPECT_EQ(mStandby.admin("postgres").ask("SELECT pg_promote()::text"), QByteArray("true"));
    EXPECT_EQ(mStandby.admin().ask("SELECT count(*)::text FROM timeshare.days"), QByteArray("2"));
    ASSERT_TRUE(server()->restart());
    mIsFirstGone = false;
    ASSERT_TRUE(server()->admin("postgres").run("ALTER SYSTEM RESET synchronous_standby_names").isNone());
    ASSERT_TRUE(server()->admin("postgres").run("SELECT pg_reload_conf()").isNone());
}

#endif
