#include "terminal/market/CMarketStore.h"

#include "terminal/market/CatalogueReader.h"
#include "terminal/market/SqlColumns.h"
#include "terminal/market/StoreRows.h"
#include "terminal/market/StoreSchema.h"
#include "terminal/market/StoreSeal.h"
#include "terminal/market/StoreTurn.h"
#include "toolkit/files/RegularFile.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <utility>

namespace terminal {
namespace {

DaySummary summaryOf(const QSqlQuery &row) {
    DaySummary summary;
    takeColumns(row, summary.day, summary.source, summary.open, summary.high, summary.low, summary.close,
                summary.volume, summary.amount);
    return summary;
}

bool isDamage(int code) {
    return code == 11 || code == 26;
}

} // namespace

QString CMarketStore::describe(const QSqlError &error) const {
    const int code = error.nativeErrorCode().toInt() & 0xff;
    if (code == 8 &&
        mConnections) { // it could be opened for reading alone, which may have been for want of files
        mConnections->reopenForThisThread();
    }
    if (code == 5 || code == 6) {
        return QStringLiteral("%1: another process holds the store; close it and try again").arg(mPath);
    }
    if (isDamage(code)) {
        return describeDamage();
    }
    QString text = error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
    return QStringLiteral("%1: %2").arg(mPath, text.replace(QLatin1Char('\n'), QLatin1Char(' ')));
}

QString CMarketStore::describeBusy() const {
    return QStringLiteral(
               "%1: another task of this program is writing, such as an import; try again when it is done")
        .arg(mPath);
}

QString CMarketStore::describeDamage() const {
    mIsWhole = false;
    return QStringLiteral("%1: the store is damaged; move the file away and start again to get a new one")
        .arg(mPath);
}

/// A whole look at the file's structure, unless nobody has touched it since the program left it whole. Values that are wrong in a file that is whole are found where they are read, and
/// a page that was not read for want of memory is no damage.
QString CMarketStore::lookOver(QSqlQuery &query) const {
    if (StoreSeal(mPath).takeOff()) {
        return {};
    }
    static const QRegularExpression value(QStringLiteral("^(ok$|\\S+ value in |CHECK constraint failed)"));
    static const QRegularExpression unread(QStringLiteral("error code=(\\d+)"));
    query.exec(QStringLiteral("PRAGMA ignore_check_constraints = ON"));
    query.exec(QStringLiteral("PRAGMA quick_check(1000)"));
    while (query.next()) {
        const QString line = query.value(0).toString();
        if (value.match(line).hasMatch()) {
            continue;
        }
        const QString code = unread.match(line).captured(1);
        return code.isEmpty() || isDamage(code.toInt() & 0xff)
                   ? describeDamage()
                   : QStringLiteral(
                         "%1: could not be read to its end (error %2 of SQLite): look after memory and "
                         "disk, and try again")
                         .arg(mPath, code);
    }
    return query.lastError().isValid() ? describe(query.lastError()) : QString();
}

CMarketStore::~CMarketStore() {
    mConnections.reset();
    if (mIsWhole) {
        StoreSeal(mPath).putOn();
    }
}

QString CMarketStore::open(const QString &path) {
    if (path.isEmpty() || path == QLatin1String(":memory:") || path.startsWith(QLatin1String("file:"))) {
        return QStringLiteral("\"%1\": the store is a file on disk: give the path of one").arg(path);
    }
    const QString reason = GZ::RegularFile::notRegularReason(path);
    if (!reason.isEmpty()) {
        return QStringLiteral("%1: %2: the store is a file on disk: give the path of one").arg(path, reason);
    }
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
    const SchemaOutcome outcome = migrateSchema(database, mFaults);
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
    const QString trouble = lookOver(query);
    if (!trouble.isEmpty()) {
        return trouble;
    }
    query.finish();
    query.exec(QStringLiteral("PRAGMA ignore_check_constraints = OFF"));
    mIsWhole = true;
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
    const auto fresh = std::make_shared<Catalogue>();
    CatalogueReader reader(connection(), mFaults, *fresh);
    if (!reader.read()) {
        return describe(reader.error());
    }
    std::shared_ptr<const Catalogue> former = fresh; // goes without the lock
    {
        std::lock_guard<std::mutex> hold(mLock);
        std::swap(mCatalogue, former);
    }
    noteChange();
    mCatalogueChanges.call();
    return {};
}

bool CMarketStore::isBeingWritten() {
    return !StoreTurn(*this, std::chrono::milliseconds(0)).isMine();
}

MinuteBars CMarketStore::bars(qint64 instrument, int day) {
    MinuteBars bars;
    StoreRows(connection(), mFaults)
        .read({QStringLiteral("minute_bars"),
               QStringLiteral("time, open, high, low, price, average, volume, amount"),
               QStringLiteral("WHERE instrument = ? AND day = ? ORDER BY time"),
               {instrument, day}},
              [&bars](const QSqlQuery &row) {
                  bars.push_back({row.value(0).toLongLong(), row.value(1).toDouble(), row.value(2).toDouble(),
                                  row.value(3).toDouble(), row.value(4).toDouble(), row.value(5).toDouble(),
                                  row.value(6).toDouble(), row.value(7).toDouble()});
                  return true;
              });
    return bars;
}

Ticks CMarketStore::ticks(qint64 instrument, int day) {
    Ticks ticks;
    StoreRows(connection(), mFaults)
        .read({QStringLiteral("ticks"),
               QStringLiteral("time, price, volume, amount"),
               QStringLiteral("WHERE instrument = ? AND day = ? ORDER BY ordinal"),
               {instrument, day}},
              [&ticks](const QSqlQuery &row) {
                  ticks.push_back({row.value(0).toLongLong(), row.value(1).toDouble(), row.value(2).toDouble(),
                                   row.value(3).toDouble()});
                  return true;
              });
    return ticks;
}

QVector<int> CMarketStore::days(qint64 instrument) {
    QVector<int> days;
    StoreRows(connection(), mFaults)
        .read({QStringLiteral("days"),
               QStringLiteral("day"),
               QStringLiteral("WHERE instrument = ? ORDER BY day"),
               {instrument}},
              [&days](const QSqlQuery &row) {
                  days.append(row.value(0).toInt());
                  return true;
              });
    return days;
}

QMap<int, int> CMarketStore::importedCounts(qint64 instrument) {
    QMap<int, int> counts;
    StoreRows(connection(), mFaults)
        .read({QStringLiteral("days"),
               QStringLiteral(
                   "day, (SELECT COUNT(*) FROM minute_bars WHERE minute_bars.instrument = days.instrument AND "
                   "minute_bars.day = days.day)"),
               QStringLiteral("WHERE instrument = ? AND source = ?"),
               {instrument, static_cast<int>(BarSource::Imported)}},
              [&counts](const QSqlQuery &row) {
                  counts[row.value(0).toInt()] = row.value(1).toInt();
                  return true;
              });
    return counts;
}

/// The first sound day of an order.
std::optional<DaySummary> CMarketStore::oneSummary(const char *condition, qint64 instrument, int day) {
    std::optional<DaySummary> first;
    StoreRows(connection(), mFaults)
        .read({QStringLiteral("days"),
               QStringLiteral("day, source, open, high, low, close, volume, amount"),
               QStringLiteral("WHERE instrument = ? AND ") + QLatin1String(condition),
               {instrument, day}},
              [&first](const QSqlQuery &row) {
                  first = first ? first : summaryOf(row);
                  return true;
              });
    return first;
}

std::optional<DaySummary> CMarketStore::summary(qint64 instrument, int day) {
    return oneSummary("day = ?", instrument, day);
}

std::optional<DaySummary> CMarketStore::summaryBefore(qint64 instrument, int day) {
    // More than one, so that a day that is set aside hides none before it.
    return oneSummary("day < ? ORDER BY day DESC LIMIT 5", instrument, day);
}

std::optional<double> CMarketStore::previousClose(qint64 instrument, int day) {
    std::optional<double> price;
    StoreRows(connection(), mFaults)
        .read({QStringLiteral("previous_closes"),
               QStringLiteral("price"),
               QStringLiteral("WHERE instrument = ? AND day = ?"),
               {instrument, day}},
              [&price](const QSqlQuery &row) {
                  price = row.value(0).toDouble();
                  return true;
              });
    return price;
}

DaySessions CMarketStore::daySessions(qint64 instrument, int day) {
    DaySessions::Table table;
    StoreRows(connection(), mFaults)
        .read({QStringLiteral("day_sessions"),
               QStringLiteral("first_minute, last_minute"),
               QStringLiteral("WHERE instrument = ? AND day = ? ORDER BY ordinal"),
               {instrument, day}},
              [&table](const QSqlQuery &row) {
                  table.append(qMakePair(row.value(0).toInt(), row.value(1).toInt()));
                  return true;
              });
    const bool sound = areApart(table);
    if (!sound) {
        mFaults.tell(QStringLiteral("day_sessions"),
                     QStringLiteral("(instrument %1, day %2)").arg(instrument).arg(day),
                     QStringLiteral("a minute in two sessions"));
    }
    return sound ? DaySessions(table) : DaySessions();
}

QString CMarketStore::note(const QString &name) {
    QString value;
    StoreRows(connection(), mFaults)
        .read({QStringLiteral("notes"), QStringLiteral("value"), QStringLiteral("WHERE name = ?"), {name}},
              [&value](const QSqlQuery &row) {
                  value = row.value(0).toString();
                  return true;
              });
    return value;
}

} // namespace terminal
