#include "terminal/market/MarketWriter.h"

#include "terminal/market/SqlConnections.h"

#include <QSqlError>
#include <QVariant>

#include <algorithm>

namespace terminal {
namespace {

constexpr int kBarColumns = 10;
constexpr int kTickColumns = 7;

/// A null text is bound as NULL, which no column of texts takes.
QString text(const QString &value) {
    return value.isNull() ? QStringLiteral("") : value;
}

} // namespace

DaySummary summarize(int day, BarSource source, const MinuteBars &bars) {
    DaySummary summary;
    summary.day = day;
    summary.source = source;
    for (const MinuteBar &bar : bars) {
        const bool first = &bar == &bars.front();
        summary.open = first ? (bar.open > 0.0 ? bar.open : bar.price) : summary.open;
        summary.high = first ? bar.high : std::max(summary.high, bar.high);
        summary.low = first ? bar.low : std::min(summary.low, bar.low);
        summary.close = bar.price;
        summary.volume += bar.volume;
        summary.amount += bar.amount;
    }
    return summary;
}

MarketWriter::MarketWriter(CMarketStore &store)
    : mStore(store), mTurn(store), mDatabase(store.connection()), mInsertDay(mDatabase),
      mDeleteBars(mDatabase) {
    QSqlQuery begin(mDatabase);
    begin.prepare(QStringLiteral("BEGIN IMMEDIATE"));
    mOpen = run(begin);
    if (!mOpen) {
        return;
    }
    keepPages(mDatabase, kWritersPages); // an import writes all over the file
    mInsertDay.prepare(QStringLiteral(
        "INSERT INTO days VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?) "
        "ON CONFLICT (instrument, day) DO UPDATE SET source = excluded.source, "
        "open = excluded.open, high = excluded.high, low = excluded.low, close = excluded.close, "
        "volume = excluded.volume, amount = excluded.amount"));
    mDeleteBars.prepare(QStringLiteral("DELETE FROM minute_bars WHERE instrument = ? AND day = ?"));
    mTicks = std::make_unique<RowInserter>(mDatabase, QStringLiteral("ticks"), kTickColumns);
    mBars = std::make_unique<RowInserter>(mDatabase, QStringLiteral("minute_bars"), kBarColumns);
}

MarketWriter::~MarketWriter() {
    finishQueries();
    if (mOpen) {
        QSqlQuery(mDatabase).exec(QStringLiteral("ROLLBACK"));
    }
    keepPages(mDatabase, kReadersPages);
}

bool MarketWriter::run(QSqlQuery &query) {
    if (mError.isEmpty() && !query.exec()) {
        mError = mStore.describe(query.lastError());
    }
    return mError.isEmpty();
}

bool MarketWriter::check(RowInserter &rows) {
    if (mError.isEmpty() && !rows.isGood()) {
        mError = mStore.describe(rows.error());
    }
    return mError.isEmpty();
}

QSqlQuery &MarketWriter::prepared(const QString &statement) {
    const auto found = mPrepared.find(statement);
    if (found != mPrepared.end()) {
        return found->second;
    }
    QSqlQuery query(mDatabase);
    query.prepare(statement);
    return mPrepared.emplace(statement, query).first->second;
}

void MarketWriter::finishQueries() {
    mInsertDay.finish();
    mDeleteBars.finish();
    mBars.reset();
    mTicks.reset();
    mPrepared.clear();
}

bool MarketWriter::runText(const QString &statement, const QVariantList &values) {
    if (!mError.isEmpty()) {
        return false;
    }
    QSqlQuery &query = prepared(statement);
    for (int i = 0; i < values.size(); ++i) {
        query.bindValue(i, values[i]);
    }
    const bool good = run(query);
    query.finish();
    return good;
}

qint64 MarketWriter::rowOf(const QString &key) {
    QSqlQuery &query = prepared(QStringLiteral("SELECT id FROM instruments WHERE market || code = ?"));
    query.bindValue(0, key);
    if (!run(query)) {
        return 0;
    }
    const bool found = query.next();
    const qint64 row = found ? query.value(0).toLongLong() : 0;
    query.finish();
    if (!found) {
        mError = QStringLiteral("%1: no instrument %2").arg(mStore.path(), key);
    }
    return row;
}

qint64 MarketWriter::putInstrument(const Instrument &instrument) {
    mChangesCatalogue = true;
    const QVariant lastClose = instrument.lastClose == TC::kUnsetValue ? QVariant() : instrument.lastClose;
    if (!runText(
            QStringLiteral(
                "INSERT INTO instruments (market, code, name, initials, product, kind, price_tick, last_close, "
                "float_shares, underlying_market, underlying_code, own_sessions, simulated) "
                "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) ON CONFLICT (market, code) DO UPDATE SET "
                "name = excluded.name, initials = excluded.initials, product = excluded.product, "
                "kind = excluded.kind, price_tick = excluded.price_tick, last_close = excluded.last_close, "
                "float_shares = excluded.float_shares, underlying_market = excluded.underlying_market, "
                "underlying_code = excluded.underlying_code, own_sessions = excluded.own_sessions, "
                "simulated = excluded.simulated"),
            {text(instrument.market), text(instrument.code), text(instrument.name), text(instrument.initials),
             text(instrument.product), static_cast<int>(instrument.kind), instrument.priceTick, lastClose,
             instrument.floatShares, text(instrument.underlyingMarket), text(instrument.underlyingCode),
             instrument.ownSessions, instrument.simulated})) {
        return 0;
    }
    const qint64 row = rowOf(instrument.key());
    runText(QStringLiteral("DELETE FROM instrument_types WHERE instrument = ?"), {row});
    runText(QStringLiteral("DELETE FROM sessions WHERE instrument = ?"), {row});
    for (int type : instrument.types) {
        runText(QStringLiteral("INSERT INTO instrument_types VALUES (?, ?)"), {row, type});
    }
    const DaySessions::Table &table = instrument.sessions.table();
    for (int i = 0; i < table.size(); ++i) {
        runText(QStringLiteral("INSERT INTO sessions VALUES (?, ?, ?, ?)"),
                {row, i, table[i].first, table[i].second});
    }
    return isGood() ? row : 0;
}

bool MarketWriter::putTradingDay(const QString &market, const QDate &date, bool open) {
    mChangesCatalogue = true;
    return runText(QStringLiteral("INSERT INTO trading_days VALUES (?, ?, ?) "
                                  "ON CONFLICT (market, date) DO UPDATE SET open = excluded.open"),
                   {market, date.toString(Qt::ISODate), open});
}

bool MarketWriter::hasDay(qint64 instrument, int day) {
    QSqlQuery &query = prepared(QStringLiteral("SELECT 1 FROM days WHERE instrument = ? AND day = ?"));
    query.bindValue(0, instrument);
    query.bindValue(1, day);
    const bool found = run(query) && query.next();
    query.finish();
    return found;
}

MinuteBars MarketWriter::importedBars(qint64 instrument, int day) {
    if (!hasDay(instrument, day)) {
        return {}; // most are new, and the whole question takes longer than to store them
    }
    const std::optional<DaySummary> summary = mStore.summary(instrument, day);
    return summary && summary->source == BarSource::Imported ? mStore.bars(instrument, day) : MinuteBars();
}

Ticks MarketWriter::importedTicks(qint64 instrument, int day) {
    return mStore.ticks(instrument, day);
}

bool MarketWriter::putDay(qint64 instrument, int day, BarSource source, const MinuteBars &bars) {
    mDeleteBars.bindValue(0, instrument);
    mDeleteBars.bindValue(1, day);
    const DaySummary summary = summarize(day, source, bars);
    mInsertDay.bindValue(0, instrument);
    mInsertDay.bindValue(1, day);
    mInsertDay.bindValue(2, static_cast<int>(source));
    mInsertDay.bindValue(3, summary.open);
    mInsertDay.bindValue(4, summary.high);
    mInsertDay.bindValue(5, summary.low);
    mInsertDay.bindValue(6, summary.close);
    mInsertDay.bindValue(7, summary.volume);
    mInsertDay.bindValue(8, summary.amount);
    if (!run(mDeleteBars) || !run(mInsertDay)) {
        return false;
    }
    for (const MinuteBar &bar : bars) {
        mBars->add(instrument).add(qint64(day)).add(bar.time);
        mBars->add(bar.open).add(bar.high).add(bar.low).add(bar.price).add(bar.average);
        mBars->add(bar.volume).add(bar.amount);
    }
    mBars->flush();
    return check(*mBars);
}

bool MarketWriter::putTick(qint64 instrument, int day, int ordinal, const Tick &tick) {
    if (!isGood()) {
        return false;
    }
    mTicks->add(instrument).add(qint64(day)).add(qint64(ordinal));
    mTicks->add(tick.time).add(tick.price).add(tick.volume).add(tick.amount);
    return check(*mTicks);
}

bool MarketWriter::putNote(const QString &name, const QString &value) {
    return runText(QStringLiteral("INSERT INTO notes VALUES (?, ?) "
                                  "ON CONFLICT (name) DO UPDATE SET value = excluded.value"),
                   {name, value});
}

bool MarketWriter::putPreviousClose(qint64 instrument, int day, double price) {
    return runText(QStringLiteral("INSERT OR REPLACE INTO previous_closes VALUES (?, ?, ?)"),
                   {instrument, day, price});
}

bool MarketWriter::putDaySessions(qint64 instrument, int day, const DaySessions &sessions) {
    runText(QStringLiteral("DELETE FROM day_sessions WHERE instrument = ? AND day = ?"), {instrument, day});
    const DaySessions::Table &table = sessions.table();
    for (int i = 0; i < table.size(); ++i) {
        runText(QStringLiteral("INSERT INTO day_sessions VALUES (?, ?, ?, ?, ?)"),
                {instrument, day, i, table[i].first, table[i].second});
    }
    return isGood();
}

bool MarketWriter::addSector(const Sector &sector) {
    mChangesCatalogue = true;
    const QVariant index = sector.indexKey.isEmpty() ? QVariant() : QVariant(rowOf(sector.indexKey));
    runText(QStringLiteral("INSERT OR IGNORE INTO sectors (level, name, index_instrument) VALUES (?, ?, ?)"),
            {sector.level, sector.name, index});
    for (const QString &member : sector.members) {
        runText(
            QStringLiteral(
                "INSERT OR IGNORE INTO sector_members SELECT id, ? FROM sectors WHERE level = ? AND name = ?"),
            {rowOf(member), sector.level, sector.name});
    }
    return isGood();
}

bool MarketWriter::addConvertible(const QString &bond, const QString &share) {
    mChangesCatalogue = true;
    return runText(QStringLiteral("INSERT OR IGNORE INTO convertible_links VALUES (?, ?)"),
                   {rowOf(bond), rowOf(share)});
}

bool MarketWriter::addListedPair(const QString &aShare, const QString &hShare) {
    mChangesCatalogue = true;
    return runText(QStringLiteral("INSERT OR IGNORE INTO listed_pairs VALUES (?, ?)"),
                   {rowOf(aShare), rowOf(hShare)});
}

bool MarketWriter::addIndex(const UserIndex &index) {
    mChangesCatalogue = true;
    const TC::CIndexDetail &detail = index.detail;
    runText(
        QStringLiteral(
            "INSERT OR IGNORE INTO user_indexes (key, name, start_time, base_value, option1, option2, option3, "
            "last_value) VALUES (?, ?, ?, ?, ?, ?, ?, ?)"),
        {index.key, text(detail.mCode), detail.mStartTime, detail.mBaseValue, detail.mOption1, detail.mOption2,
         detail.mOption3, index.lastValue});
    for (int i = 0; i < detail.mMembers.size(); ++i) {
        runText(QStringLiteral(
                    "INSERT OR IGNORE INTO user_index_members SELECT id, ?, ? FROM user_indexes WHERE key = ?"),
                {i, rowOf(detail.mMembers[i]), index.key});
    }
    return isGood();
}

bool MarketWriter::addPortfolio(const Portfolio &portfolio) {
    mChangesCatalogue = true;
    runText(QStringLiteral("INSERT OR IGNORE INTO portfolios VALUES (?, ?)"),
            {portfolio.number, text(portfolio.name)});
    for (const PortfolioPosition &position : portfolio.positions) {
        runText(QStringLiteral("INSERT OR IGNORE INTO portfolio_positions VALUES (?, ?, ?)"),
                {portfolio.number, rowOf(position.key), position.quantity});
    }
    return isGood();
}

bool MarketWriter::commit() {
    if (isGood() && mTicks) {
        mTicks->flush();
        check(*mTicks);
    }
    finishQueries();
    QSqlQuery commit(mDatabase);
    commit.prepare(QStringLiteral("COMMIT"));
    if (!run(commit)) {
        return false;
    }
    mOpen = false;
    mStore.noteChange();
    mError = mChangesCatalogue ? mStore.reload() : QString();
    return isGood();
}

} // namespace terminal
