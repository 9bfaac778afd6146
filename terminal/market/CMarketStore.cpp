#include "terminal/market/CMarketStore.h"

#include "terminal/market/CatalogueReader.h"
#include "terminal/market/SqlColumns.h"
#include "terminal/market/StoreSchema.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace terminal {
namespace {

DaySummary summaryOf(const QSqlQuery &row) {
    DaySummary summary;
    takeColumns(row, summary.day, summary.source, summary.open, summary.high, summary.low, summary.close,
                summary.volume, summary.amount);
    return summary;
}

std::optional<DaySummary> oneSummary(QSqlDatabase database, const QString &condition, qint64 instrument,
                                     int day) {
    QSqlQuery query(database);
    query.prepare(QStringLiteral("SELECT day, source, open, high, low, close, volume, amount FROM days "
                                 "WHERE instrument = ? AND ") +
                  condition);
    query.addBindValue(instrument);
    query.addBindValue(day);
    if (query.exec() && query.next()) {
        return summaryOf(query);
    }
    return std::nullopt;
}

/// A whole look at the file's structure: the first damage found, or "ok".
QString checkStructure(QSqlQuery &query) {
    const bool read = query.exec(QStringLiteral("PRAGMA quick_check(1)")) && query.next();
    const QString text = read ? query.value(0).toString() : QString();
    query.finish();
    return text;
}

} // namespace

QString CMarketStore::describe(const QSqlError &error) const {
    const int code = error.nativeErrorCode().toInt() & 0xff;
    if (code == 5 || code == 6) {
        return QStringLiteral("%1: another process holds the store; close it and try again").arg(mPath);
    }
    if (code == 11 || code == 26) {
        return QStringLiteral("%1: the store is damaged; move the file away and start again to get a new one")
            .arg(mPath);
    }
    QString text = error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
    return QStringLiteral("%1: %2").arg(mPath, text.replace(QLatin1Char('\n'), QLatin1Char(' ')));
}

QString CMarketStore::open(const QString &path) {
    mPath = path;
    const QDir folder = QFileInfo(path).absoluteDir();
    if (!folder.exists() && !QDir().mkpath(folder.path())) {
        return QStringLiteral("%1: its folder cannot be made").arg(path);
    }
    mConnections = std::make_unique<SqlConnections>(path);
    QString trouble = prepare(connection());
    if (trouble.isEmpty()) {
        trouble = reload();
    }
    if (!trouble.isEmpty()) {
        mConnections.reset();
    }
    return trouble;
}

QString CMarketStore::prepare(QSqlDatabase database) {
    if (!database.isOpen()) {
        return describe(database.lastError());
    }
    QSqlQuery query(database);
    // The write-ahead log is turned on only for a file that is a store or is new.
    const SchemaOutcome outcome = migrateSchema(database);
    switch (outcome.state) {
    case SchemaOutcome::State::Foreign:
        return QStringLiteral("%1: is the database of another program, not a market store").arg(mPath);
    case SchemaOutcome::State::Newer:
        return QStringLiteral("%1: was written by a newer version of this program").arg(mPath);
    case SchemaOutcome::State::Failed:
        return describe(outcome.error);
    case SchemaOutcome::State::Ready:
        break;
    }
    if (!query.exec(QStringLiteral("PRAGMA journal_mode = WAL"))) {
        return describe(query.lastError());
    }
    query.finish();
    const QString structure = checkStructure(query);
    if (structure != QLatin1String("ok")) {
        return query.lastError().isValid()
                   ? describe(query.lastError())
                   : QStringLiteral("%1: the store is damaged; move the file away and start "
                                    "again to get a new one")
                         .arg(mPath);
    }
    return {};
}

QSqlDatabase CMarketStore::connection() {
    return mConnections ? mConnections->forThisThread() : QSqlDatabase();
}

std::shared_ptr<const Catalogue> CMarketStore::catalogue() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mCatalogue;
}

QString CMarketStore::reload() {
    auto fresh = std::make_shared<Catalogue>();
    CatalogueReader reader(connection(), *fresh);
    if (!reader.read()) {
        return describe(reader.error());
    }
    std::lock_guard<std::mutex> hold(mLock);
    mCatalogue = fresh;
    return {};
}

MinuteBars CMarketStore::bars(qint64 instrument, int day) {
    QSqlQuery query(connection());
    query.setForwardOnly(true);
    query.prepare(
        QStringLiteral("SELECT time, open, high, low, price, average, volume, amount FROM minute_bars "
                       "WHERE instrument = ? AND day = ? ORDER BY time"));
    query.addBindValue(instrument);
    query.addBindValue(day);
    MinuteBars bars;
    for (query.exec(); query.next();) {
        bars.push_back({query.value(0).toLongLong(), query.value(1).toDouble(), query.value(2).toDouble(),
                        query.value(3).toDouble(), query.value(4).toDouble(), query.value(5).toDouble(),
                        query.value(6).toDouble(), query.value(7).toDouble()});
    }
    return bars;
}

Ticks CMarketStore::ticks(qint64 instrument, int day) {
    QSqlQuery query(connection());
    query.setForwardOnly(true);
    query.prepare(QStringLiteral("SELECT time, price, volume, amount FROM ticks "
                                 "WHERE instrument = ? AND day = ? ORDER BY ordinal"));
    query.addBindValue(instrument);
    query.addBindValue(day);
    Ticks ticks;
    for (query.exec(); query.next();) {
        ticks.push_back({query.value(0).toLongLong(), query.value(1).toDouble(), query.value(2).toDouble(),
                         query.value(3).toDouble()});
    }
    return ticks;
}

QVector<int> CMarketStore::days(qint64 instrument) {
    QSqlQuery query(connection());
    query.setForwardOnly(true);
    query.prepare(QStringLiteral("SELECT day FROM days WHERE instrument = ? ORDER BY day"));
    query.addBindValue(instrument);
    QVector<int> days;
    for (query.exec(); query.next();) {
        days.append(query.value(0).toInt());
    }
    return days;
}

std::optional<DaySummary> CMarketStore::summary(qint64 instrument, int day) {
    return oneSummary(connection(), QStringLiteral("day = ?"), instrument, day);
}

std::optional<DaySummary> CMarketStore::summaryBefore(qint64 instrument, int day) {
    return oneSummary(connection(), QStringLiteral("day < ? ORDER BY day DESC LIMIT 1"), instrument, day);
}

QString CMarketStore::note(const QString &name) {
    QSqlQuery query(connection());
    query.prepare(QStringLiteral("SELECT value FROM notes WHERE name = ?"));
    query.addBindValue(name);
    return query.exec() && query.next() ? query.value(0).toString() : QString();
}

} // namespace terminal
