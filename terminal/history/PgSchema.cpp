#include "terminal/history/PgSchema.h"

#include "terminal/history/PgReading.h"
#include "terminal/market/MarketDate.h"

#include <QSet>

namespace terminal {
namespace {

/// Owned by whoever prepares them. A bar is held to what a market can have: a number that is none is above all others.
const char *const kTables[] = {
    "CREATE SCHEMA IF NOT EXISTS timeshare",
    "CREATE TABLE IF NOT EXISTS timeshare.version (version integer NOT NULL)",
    "CREATE SEQUENCE IF NOT EXISTS timeshare.revisions",
    "CREATE TABLE IF NOT EXISTS timeshare.instruments ("
    "id integer GENERATED ALWAYS AS IDENTITY PRIMARY KEY, "
    "market text NOT NULL, code text NOT NULL, "
    "key text NOT NULL GENERATED ALWAYS AS (market || code) STORED UNIQUE, "
    "name text NOT NULL, initials text NOT NULL, product text NOT NULL, kind integer NOT NULL, "
    "types integer[] NOT NULL, price_tick double precision NOT NULL, last_close double precision, "
    "float_shares double precision NOT NULL, underlying_market text NOT NULL, underlying_code text NOT NULL, "
    "sessions integer[] NOT NULL, own_sessions boolean NOT NULL, "
    "revision bigint NOT NULL DEFAULT nextval('timeshare.revisions'))",
    "CREATE TABLE IF NOT EXISTS timeshare.days ("
    "instrument integer NOT NULL, day date NOT NULL, bars integer NOT NULL CHECK (bars > 0), "
    "previous_close double precision, sessions integer[] NOT NULL, "
    "loaded_at timestamptz NOT NULL DEFAULT now(), PRIMARY KEY (instrument, day)) PARTITION BY RANGE (day)",
    "CREATE TABLE IF NOT EXISTS timeshare.minute_bars ("
    "instrument integer NOT NULL, day date NOT NULL, time bigint NOT NULL, "
    "open double precision NOT NULL, high double precision NOT NULL, low double precision NOT NULL, "
    "price double precision NOT NULL, average double precision NOT NULL, volume double precision NOT NULL, "
    "amount double precision NOT NULL, PRIMARY KEY (instrument, day, time), "
    "CONSTRAINT is_bar CHECK (time % 60000 = 0 AND open BETWEEN 0 AND 1e9 AND high BETWEEN low AND 1e9 AND low "
    ">= 0 AND "
    "price > 0 AND price <= 1e9 AND average BETWEEN 0 AND 1e30 AND volume BETWEEN 0 AND 1e30 AND "
    "amount BETWEEN 0 AND 1e30)) PARTITION BY RANGE (day)",
    "DO $$ BEGIN IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname = 'timeshare_reader') THEN "
    "CREATE ROLE timeshare_reader NOLOGIN; END IF; END $$",
    "GRANT USAGE ON SCHEMA timeshare TO timeshare_reader",
    "GRANT SELECT ON timeshare.version, timeshare.instruments, timeshare.days, timeshare.minute_bars "
    "TO timeshare_reader",
    "INSERT INTO timeshare.version SELECT 1 WHERE NOT EXISTS (SELECT FROM timeshare.version)",
};

/// Runs statements in a transaction of their own, one such at a time of all programs.
HistoryFailure runLocked(PgConnection &connection, const QVector<QByteArray> &statements) {
    HistoryFailure failure = connection.run("BEGIN");
    failure = failure.isNone() ? connection.run(kPgLock) : failure;
    for (const QByteArray &statement : statements) {
        failure = failure.isNone() ? connection.run(statement.constData()) : failure;
    }
    if (failure.isNone()) {
        return connection.run("COMMIT");
    }
    connection.run("ROLLBACK");
    return failure;
}

QByteArray partition(const char *table, const QDate &month) {
    return QStringLiteral(
               "CREATE TABLE IF NOT EXISTS timeshare.%1_%2 PARTITION OF timeshare.%1 FOR VALUES FROM ('%3') TO "
               "('%4')")
        .arg(QLatin1String(table), month.toString(QStringLiteral("yyyy_MM")), month.toString(Qt::ISODate),
             month.addMonths(1).toString(Qt::ISODate))
        .toLatin1();
}

} // namespace

HistoryFailure checkPgVersion(PgConnection &connection) {
    PgRows rows;
    HistoryFailure failure = connection.ask("SELECT version FROM timeshare.version", {}, rows);
    if (!failure.isNone()) {
        return failure;
    }
    if (rows.count() == 0) {
        return {HistoryTrouble::Unprepared, QStringLiteral("the tables of history have no version")};
    }
    if (rows.whole(0, 0) > kPgVersion) {
        return {HistoryTrouble::Newer,
                QStringLiteral("the tables of history are of version %1, this program knows %2")
                    .arg(rows.whole(0, 0))
                    .arg(kPgVersion)};
    }
    return {};
}

HistoryFailure preparePgTables(PgConnection &connection) {
    QVector<QByteArray> statements;
    for (const char *table : kTables) {
        statements.append(table);
    }
    HistoryFailure failure = checkPgVersion(connection);
    return failure.trouble == HistoryTrouble::Unprepared ? runLocked(connection, statements) : failure;
}

HistoryFailure preparePgMonths(PgConnection &connection, const QVector<int> &days) {
    QSet<QDate> months;
    for (const int day : days) {
        const QDate date = dateOf(day);
        months.insert(QDate(date.year(), date.month(), 1));
    }
    QVector<QByteArray> statements;
    PgRows rows;
    for (const QDate &month : months) {
        const QByteArray name = "timeshare.minute_bars_" + month.toString(QStringLiteral("yyyy_MM")).toLatin1();
        HistoryFailure failure = connection.ask("SELECT 1 WHERE to_regclass($1) IS NOT NULL", {name}, rows);
        if (!failure.isNone()) {
            return failure;
        }
        if (rows.count() == 0) { // one that is there is not touched, which would hold up its readers
            statements.append(partition("days", month));
            statements.append(partition("minute_bars", month));
        }
    }
    return statements.isEmpty() ? HistoryFailure() : runLocked(connection, statements);
}

} // namespace terminal
