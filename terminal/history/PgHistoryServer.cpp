#include "terminal/history/PgHistoryServer.h"

#include "terminal/history/PgReading.h"
#include "terminal/history/PgSchema.h"

namespace terminal {
namespace {

constexpr int kMostBars = 1440; ///< of a day; one with more is no day, and not all of it is taken to tell

/// A terminal reads, and a statement that it no longer waits for ends by itself.
QByteArray readersOptions(std::chrono::milliseconds patience) {
    return "-c default_transaction_read_only=on -c statement_timeout=" +
           QByteArray::number(qint64(patience.count()));
}

/// Its sessions cannot write anywhere: whether the host can is told by what it is.
HistoryAddress readersAddress(HistoryAddress address) {
    if (address.session == "read-write") {
        address.session = "primary";
    } else if (address.session == "read-only") {
        address.session = "standby";
    }
    return address;
}

} // namespace

PgHistoryServer::PgHistoryServer(const HistoryAddress &address, std::chrono::milliseconds patience)
    : mConnection(readersAddress(address), readersOptions(patience), patience) {}

/// Runs a statement; of a new connection the version of the tables is looked at first. A connection that stood idle may be
/// gone since, and is made once more.
HistoryFailure PgHistoryServer::ask(const char *statement, const PgConnection::Values &values, PgRows &rows) {
    for (bool isNew = false;;) {
        HistoryFailure failure = mConnection.connect(isNew);
        failure = failure.isNone() && isNew ? checkPgVersion(mConnection) : failure;
        if (!failure.isNone()) {
            mConnection.close();
            return failure;
        }
        failure = mConnection.ask(statement, values, rows);
        if (failure.trouble != HistoryTrouble::Gone || isNew) {
            return failure;
        }
    }
}

HistoryFailure PgHistoryServer::instruments(QString &stamp, QVector<Instrument> &instruments) {
    PgRows rows;
    HistoryFailure failure = ask(kPgInstruments, {stamp.toUtf8()}, rows);
    if (failure.isNone() && rows.count() > 0) {
        stamp = QString::fromUtf8(rows.text(0, 0));
        instruments = pgInstruments(rows);
    }
    return failure;
}

HistoryFailure PgHistoryServer::days(const QString &key, QVector<ListedDay> &days) {
    PgRows rows;
    HistoryFailure failure = ask("SELECT day - date '1970-01-01', bars FROM timeshare.days WHERE instrument = "
                                 "(SELECT id FROM timeshare.instruments WHERE key = $1) ORDER BY day",
                                 {key.toUtf8()}, rows);
    for (int row = 0; row < rows.count(); ++row) {
        days.append({dayOfPgDate(rows.whole(row, 0)), rows.whole(row, 1)});
    }
    return failure;
}

HistoryFailure PgHistoryServer::read(const QString &key, const QVector<int> &days, QVector<ServedDay> &served) {
    PgRows rows;
    HistoryFailure failure =
        ask("SELECT d.day - date '1970-01-01', d.bars, d.previous_close, array_to_string(d.sessions, ','), b.* "
            "FROM timeshare.days d CROSS JOIN LATERAL "
            "(SELECT time, open, high, low, price, average, volume, amount FROM timeshare.minute_bars b "
            "WHERE b.instrument = d.instrument AND b.day = d.day ORDER BY time LIMIT $3::integer) b "
            "WHERE d.instrument = (SELECT id FROM timeshare.instruments WHERE key = $1) "
            "AND d.day = ANY ($2::date[]) ORDER BY d.day, b.time",
            {key.toUtf8(), pgDates(days), QByteArray::number(kMostBars + 1)}, rows);
    for (int row = 0; row < rows.count(); ++row) {
        const int day = dayOfPgDate(rows.whole(row, 0));
        if (served.isEmpty() || served.last().day != day) {
            served.append({day, rows.whole(row, 1), rows.number(row, 2), pgSessions(rows.text(row, 3)), {}});
        }
        served.last().bars.push_back(pgBar(rows, row, 4));
    }
    return failure;
}

} // namespace terminal
