#pragma once

#include "terminal/history/HistoryServer.h"
#include "terminal/loader/LoadBatch.h"
#include "terminal/loader/PgLoader.h"
#include "terminal/market/CMarketStore.h"
#include "terminal/market/MarketDate.h"
#include "tests/history/PgServer.h"
#include "tests/history/ScriptedServer.h"

namespace tests {

inline const QDate kDate(2025, 11, 21);
/// One server for all tests, with a database of its own for each.
class PgHistoryFixture : public ::testing::Test {
protected:
    static PgServer *&server() {
        static PgServer *theServer = nullptr;
        return theServer;
    }
    static void SetUpTestSuite() {
        if (!PgServer::isInstalled()) {
            return;
        }
        server() = new PgServer;
        ASSERT_TRUE(server()->start()) << server()->log().constData();
        PgServer::Admin admin = server()->admin("postgres");
        ASSERT_TRUE(admin.run("CREATE ROLE timeshare_reader NOLOGIN").isNone());
        ASSERT_TRUE(
            admin.run("CREATE ROLE reader LOGIN PASSWORD 'reader-secret' IN ROLE timeshare_reader").isNone());
        ASSERT_TRUE(admin.run("CREATE ROLE loader LOGIN PASSWORD 'loader-secret'").isNone());
    }
    static void TearDownTestSuite() {
        delete server();
        server() = nullptr;
    }
    void SetUp() override {
        TIMESHARE_NEEDS_POSTGRES();
        PgServer::Admin admin = server()->admin("postgres");
        ASSERT_TRUE(admin.run("DROP DATABASE IF EXISTS history WITH (FORCE)").isNone());
        ASSERT_TRUE(admin.run("CREATE DATABASE history OWNER loader").isNone());
    }

    static terminal::HistoryAddress address(const char *user, const char *password = nullptr,
                                            const char *rest = "") {
        terminal::HistoryAddress read;
        EXPECT_EQ(terminal::readHistoryAddress(server()->url(user, rest), read), QString());
        read.password = password ? QByteArray(password) : QByteArray(user) + "-secret";
        return read;
    }
    static std::unique_ptr<terminal::HistoryServer>
    reader(const char *password = nullptr, std::chrono::milliseconds patience = terminal::kHistoryPatience) {
        return terminal::makePgHistoryServer(address("reader", password), patience);
    }
    static terminal::Instrument share(const char *code) {
        terminal::Instrument instrument;
        instrument.market = "SH";
        instrument.code = code;
        instrument.name = "浦发";
        instrument.types = {277, 5};
        instrument.sessions = terminal::DaySessions({{571, 690}, {781, 900}});
        return instrument;
    }
    /// Loads days of instruments; what went wrong.
    static terminal::HistoryFailure load(const QStringList &codes, const QVector<QDate> &dates,
                                         int minutes = 240, terminal::LoadOutcome *outcome = nullptr) {
        QTemporaryDir folder;
        terminal::CMarketStore store;
        EXPECT_EQ(store.open(folder.filePath("catalogue.db")), QString());
        terminal::LoadBatch batch;
        const std::unique_ptr<terminal::ImportTarget> target = batch.target(store, "fixture");
        for (const QString &code : codes) {
            const qint64 row = target->putInstrument(share(code.toLatin1()));
            for (const QDate &date : dates) {
                target->putDay(row, terminal::dayOf(date), terminal::BarSource::Imported,
                               minutesOf(terminal::dayOf(date), minutes, 10.0));
            }
            target->putPreviousClose(row, terminal::dayOf(dates[0]), 9.5);
        }
        target->commit();
        terminal::PgLoader loader(address("loader"));
        terminal::LoadOutcome own;
        const terminal::HistoryFailure failure = loader.prepare();
        return failure.isNone() ? loader.put(batch, outcome ? *outcome : own) : failure;
    }
    static QByteArray count(const char *table) {
        return server()->admin().ask(QByteArray("SELECT count(*)::text FROM timeshare.") + table);
    }

    QTemporaryDir mFolder;
};

} // namespace tests
