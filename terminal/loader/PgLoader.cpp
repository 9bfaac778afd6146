#include "terminal/loader/PgLoader.h"

#include "terminal/history/PgReading.h"
#include "terminal/history/PgSchema.h"
#include "terminal/loader/PgCopyRows.h"
#include "terminal/market/BarDays.h"
#include "terminal/market/DayMerge.h"
#include "terminal/market/MarketDate.h"

#include <algorithm>
#include <set>

namespace terminal {
namespace {

constexpr std::chrono::minutes kLoadersPatience{30}; ///< another loader may have a long batch
constexpr int kCopied = 1 << 19; ///< bytes of one message

/// A standby takes nothing: unless something else is wanted, the host that does is looked for.
HistoryAddress loadersAddress(HistoryAddress address) {
    if (address.session.isEmpty()) {
        address.session = "read-write";
    }
    return address;
}

/// Numbers as PostgreSQL writes arrays.
template <class Numbers> QByteArray pgArray(const Numbers &numbers) {
    QByteArray text;
    for (const int number : numbers) {
        text += (text.isEmpty() ? "" : ",") + QByteArray::number(number);
    }
    return '{' + text + '}';
}

QVector<int> flatSessions(const DaySessions &sessions) {
    QVector<int> minutes;
    for (const auto &session : sessions.table()) {
        minutes << session.first << session.second;
    }
    return minutes;
}

QByteArray pgNumber(double number) {
    return QByteArray::number(number, 'g', 17);
}

PgConnection::Values valuesOf(const Instrument &instrument) {
    const auto text = [](const QString &value) { return value.isEmpty() ? QByteArray("") : value.toUtf8(); };
    return {text(instrument.market),
            text(instrument.code),
            text(instrument.name),
            text(instrument.initials),
            text(instrument.product),
            QByteArray::number(static_cast<int>(instrument.kind)),
            pgArray(instrument.types),
            pgNumber(instrument.priceTick),
            instrument.lastClose == TC::kUnsetValue ? QByteArray() : pgNumber(instrument.lastClose),
            pgNumber(instrument.floatShares),
            text(instrument.underlyingMarket),
            text(instrument.underlyingCode),
            pgArray(flatSessions(instrument.sessions)),
            instrument.ownSessions ? "true" : "false"};
}

/// Sessions of a day that two sources have told parts of.
DaySessions mergedSessions(const DaySessions &known, const LoadedDay &day, int date) {
    if (known == day.sessions || known.isEmpty()) {
        return day.sessions;
    }
    std::vector<qint64> times;
    for (const MinuteBar &bar : day.bars) {
        times.push_back(bar.time);
    }
    return observedSessions(dateOf(date), times);
}

} // namespace

PgLoader::PgLoader(const HistoryAddress &address)
    : mConnection(loadersAddress(address), "-c synchronous_commit=on", kLoadersPatience) {}

HistoryFailure PgLoader::prepare() {
    bool isNew = false;
    HistoryFailure failure = mConnection.connect(isNew);
    return failure.isNone() ? preparePgTables(mConnection) : failure;
}

HistoryFailure PgLoader::readRows(QMap<QString, int> &rows) {
    PgRows found;
    HistoryFailure failure = mConnection.ask("SELECT id, key FROM timeshare.instruments", {}, found);
    for (int row = 0; row < found.count(); ++row) {
        rows[QString::fromUtf8(found.text(row, 1))] = found.whole(row, 0);
    }
    return failure;
}

/// Rows of the instruments of a batch; those that the server lacks are made.
HistoryFailure PgLoader::placeInstruments(const LoadBatch &batch, QMap<QString, int> &rows) {
    HistoryFailure failure = readRows(rows);
    bool hasNew = false;
    for (const Instrument &instrument : batch.instruments()) {
        if (failure.isNone() && !rows.contains(instrument.key())) {
            failure = hasNew ? failure : mConnection.run("BEGIN");
            failure = failure.isNone() && !hasNew ? mConnection.run(kPgLock) : failure;
            hasNew = true;
            failure = failure.isNone()
                          ? mConnection.run(
                                "INSERT INTO timeshare.instruments (market, code, name, initials, product, "
                                "kind, types, price_tick, last_close, float_shares, underlying_market, "
                                "underlying_code, sessions, own_sessions) VALUES ($1, $2, $3, $4, $5, $6, $7, "
                                "$8, $9, $10, $11, $12, $13, $14) ON CONFLICT (key) DO NOTHING",
                                valuesOf(instrument))
                          : failure;
        }
    }
    if (!failure.isNone() || !hasNew) {
        return failure;
    }
    failure = mConnection.run("COMMIT");
    return failure.isNone() ? readRows(rows) : failure;
}

HistoryFailure PgLoader::put(const LoadBatch &batch, LoadOutcome &outcome) {
    bool isNew = false;
    QMap<QString, int> rows;
    std::set<int> dates;
    for (const auto &day : batch.days()) {
        dates.insert(day.first.second);
    }
    HistoryFailure failure = mConnection.connect(isNew);
    failure = failure.isNone() ? placeInstruments(batch, rows) : failure;
    failure =
        failure.isNone() ? preparePgMonths(mConnection, QVector<int>(dates.begin(), dates.end())) : failure;
    bool isOvertaken = failure.isNone();
    for (bool isAlone = false; failure.isNone() && isOvertaken; isAlone = true) {
        outcome = {};
        failure = attempt(batch, rows, isAlone, isOvertaken, outcome);
    }
    if (!failure.isNone()) {
        mConnection.close(); // and so the transaction
    }
    return failure;
}

/// One transaction. The rows are sent before the lock is taken, so that loaders wait for each other only while days are put in
/// place; one that was overtaken meanwhile begins anew, `isAlone`.
HistoryFailure PgLoader::attempt(const LoadBatch &batch, const QMap<QString, int> &rows, bool isAlone,
                                 bool &isOvertaken, LoadOutcome &outcome) {
    PlacedDays days;
    QMap<int, QString> keys;
    for (const auto &day : batch.days()) {
        const int row = rows.value(day.first.first);
        keys[row] = day.first.first;
        days[{row, day.first.second}] = {0, day.second};
    }
    HistoryFailure failure = mConnection.run("BEGIN");
    failure = failure.isNone() && isAlone ? mConnection.run(kPgLock) : failure;
    failure = failure.isNone() ? mergeKnown(keys, days, outcome) : failure;
    failure = failure.isNone() ? stage(days) : failure;
    failure = failure.isNone() ? putInPlace(isOvertaken) : failure;
    if (!failure.isNone() || isOvertaken) {
        return failure.isNone() ? mConnection.run("ROLLBACK") : failure;
    }
    outcome.days = static_cast<int>(days.size());
    for (const auto &placed : days) {
        outcome.bars += static_cast<int>(placed.second.day.bars.size());
    }
    return mConnection.run("COMMIT");
}

/// Adds what the server has of the days, and leaves those out to which nothing is added.
HistoryFailure PgLoader::mergeKnown(const QMap<int, QString> &keys, PlacedDays &days, LoadOutcome &outcome) {
    std::set<int> dates;
    QByteArray dateTexts;
    for (const auto &placed : days) {
        if (dates.insert(placed.first.second).second) {
            dateTexts += (dateTexts.isEmpty() ? "" : ",") + pgDate(placed.first.second);
        }
    }
    PgRows known;
    HistoryFailure failure =
        mConnection.ask("SELECT instrument, day - date '1970-01-01', bars FROM timeshare.days WHERE "
                        "instrument = ANY ($1::integer[]) AND day = ANY ($2::date[])",
                        {pgArray(keys.keys()), '{' + dateTexts + '}'}, known);
    std::set<int> instruments;
    for (int row = 0; row < known.count(); ++row) {
        const auto found = days.find({known.whole(row, 0), dayOfPgDate(known.whole(row, 1))});
        if (found != days.end()) {
            found->second.seen = known.whole(row, 2);
            instruments.insert(found->first.first);
        }
    }
    for (const int instrument : instruments) {
        failure = failure.isNone() ? mergeOf(instrument, keys[instrument], days) : failure;
    }
    for (auto day = days.begin(); day != days.end();) {
        const bool hasAll = day->second.seen == static_cast<int>(day->second.day.bars.size());
        outcome.known += hasAll ? 1 : 0;
        day = hasAll ? days.erase(day) : std::next(day);
    }
    return failure;
}

/// Adds what the server has of the days of one instrument.
HistoryFailure PgLoader::mergeOf(int instrument, const QString &key, PlacedDays &days) {
    QVector<int> dates;
    for (auto day = days.lower_bound({instrument, 0}); day != days.end() && day->first.first == instrument;
         ++day) {
        if (day->second.seen > 0) {
            dates.append(day->first.second);
        }
    }
    PgRows rows;
    HistoryFailure failure = mConnection.ask(
        "SELECT b.day - date '1970-01-01', d.previous_close, array_to_string(d.sessions, ','), b.time, b.open, "
        "b.high, "
        "b.low, b.price, b.average, b.volume, b.amount FROM timeshare.days d JOIN timeshare.minute_bars b "
        "ON b.instrument = d.instrument AND b.day = d.day WHERE d.instrument = $1 AND d.day = ANY ($2::date[]) "
        "AND b.day = ANY ($2::date[]) ORDER BY b.day, b.time",
        {QByteArray::number(instrument), pgDates(dates)}, rows);
    for (int row = 0; row < rows.count() && failure.isNone();) {
        const int first = row;
        MinuteBars known;
        for (; row < rows.count() && rows.whole(row, 0) == rows.whole(first, 0); ++row) {
            known.push_back(pgBar(rows, row, 3));
        }
        const int date = dayOfPgDate(rows.whole(first, 0));
        LoadedDay &day = days[{instrument, date}].day;
        clearFilledAverages(known);
        clearFilledAverages(day.bars);
        if (const std::optional<qint64> other = mergeBars(known, day.bars)) {
            const QString time = marketDateTime(*other).toString(QStringLiteral("yyyy-MM-dd HH:mm"));
            return {HistoryTrouble::Failed,
                    QStringLiteral("%1 of %2 is on the server with other values").arg(time, key)};
        }
        fillAverages(day.bars);
        day.sessions = mergedSessions(pgSessions(rows.text(first, 2)), day, date);
        day.previousClose = day.previousClose > 0.0 ? day.previousClose : rows.number(first, 1);
    }
    return failure;
}

/// Sends the days into tables of this transaction alone.
HistoryFailure PgLoader::stage(const PlacedDays &days) {
    HistoryFailure failure =
        mConnection.run("CREATE TEMPORARY TABLE loaded_bars (LIKE timeshare.minute_bars) ON COMMIT DROP");
    failure = failure.isNone()
                  ? mConnection.run(
                        "CREATE TEMPORARY TABLE loaded_days (instrument integer, day date, bars integer, seen "
                        "integer, previous_close double precision, sessions integer[]) ON COMMIT DROP")
                  : failure;
    auto day = days.begin();
    PgCopyRows rows;
    bool isFinished = false;
    const auto nextBars = [&] {
        for (; day != days.end() && rows.size() < kCopied; ++day) {
            for (const MinuteBar &bar : day->second.day.bars) {
                rows.add(day->first.first, day->first.second, bar);
            }
        }
        if (day == days.end() && !isFinished) {
            isFinished = true;
            rows.finish();
        }
        return rows.take();
    };
    failure = failure.isNone() ? mConnection.copy("COPY loaded_bars FROM STDIN WITH (FORMAT binary)", nextBars)
                               : failure;
    auto listed = days.begin();
    const auto nextDays = [&] {
        QByteArray text;
        for (; listed != days.end() && text.size() < kCopied; ++listed) {
            const Placed &placed = listed->second;
            const QByteArray close =
                placed.day.previousClose > 0.0 ? pgNumber(placed.day.previousClose) : "\\N";
            text += QByteArray::number(listed->first.first) + '\t' + pgDate(listed->first.second) + '\t' +
                    QByteArray::number(static_cast<int>(placed.day.bars.size())) + '\t' +
                    QByteArray::number(placed.seen) + '\t' + close + '\t' +
                    pgArray(flatSessions(placed.day.sessions)) + '\n';
        }
        return text;
    };
    return failure.isNone() ? mConnection.copy("COPY loaded_days FROM STDIN", nextDays) : failure;
}

/// Takes the lock and puts what was sent into the tables, unless another loader has changed one of the days since.
HistoryFailure PgLoader::putInPlace(bool &isOvertaken) {
    HistoryFailure failure = mConnection.run(kPgLock);
    PgRows rows;
    failure =
        failure.isNone()
            ? mConnection.ask("SELECT 1 FROM loaded_days l LEFT JOIN timeshare.days d USING (instrument, day) "
                              "WHERE l.seen <> coalesce(d.bars, 0) LIMIT 1",
                              {}, rows)
            : failure;
    isOvertaken = rows.count() > 0;
    if (!failure.isNone() || isOvertaken) {
        return failure;
    }
    for (const char *statement :
         {"DELETE FROM timeshare.minute_bars b USING loaded_days l WHERE l.seen > 0 AND b.instrument = "
          "l.instrument "
          "AND b.day = l.day",
          "INSERT INTO timeshare.minute_bars SELECT * FROM loaded_bars",
          "INSERT INTO timeshare.days (instrument, day, bars, previous_close, sessions) "
          "SELECT instrument, day, bars, previous_close, sessions FROM loaded_days "
          "ON CONFLICT (instrument, day) DO UPDATE SET bars = excluded.bars, "
          "previous_close = excluded.previous_close, sessions = excluded.sessions, loaded_at = now()"}) {
        failure = failure.isNone() ? mConnection.run(statement) : failure;
    }
    return failure;
}

} // namespace terminal
