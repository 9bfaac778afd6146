#pragma once

#include "terminal/market/Catalogue.h"
#include "terminal/market/MinuteBar.h"
#include "terminal/market/SqlConnections.h"
#include "terminal/market/StoreFaults.h"
#include "terminal/market/Tick.h"
#include "terminal/threads/Listeners.h"

#include <QString>
#include <QVector>

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>

class QSqlQuery;

namespace terminal {

/// Where the bars of a day came from.
enum class BarSource : int { Simulated = 0, Imported = 1 };

/// One trading day of an instrument.
struct DaySummary {
    int day = 0; ///< seconds since the epoch at its midnight (UTC+8)
    BarSource source = BarSource::Simulated;
    double open = 0.0;
    double high = 0.0;
    double low = 0.0;
    double close = 0.0;
    double volume = 0.0;
    double amount = 0.0;
};

/// The market store: instruments, calendars, minute bars and what belongs to them, in one SQLite file with
/// write-ahead log. It is opened on one thread; after that every operation may be called from any. Writing goes
/// through MarketWriter. Rows that cannot be right are passed over and told, see StoreRows.
class CMarketStore {
public:
    CMarketStore() = default;
    /// Closes the store; other threads have to be done with it.
    ~CMarketStore();
    CMarketStore(const CMarketStore &) = delete;
    CMarketStore &operator=(const CMarketStore &) = delete;

    /// Opens or creates the store and brings its tables up to date. Answers an empty text, or one line that says
    /// why not: held by another process, damaged, no store, of a newer version, not writable.
    QString open(const QString &path);
    bool isOpen() const { return mConnections != nullptr; }
    QString path() const { return mPath; }

    /// What the store knows but for the bars, as of the last reading.
    std::shared_ptr<const Catalogue> catalogue() const;
    /// Called when there is another one.
    Listeners &catalogueChanges() { return mCatalogueChanges; }
    /// Another number after every change of the market's tables by this program, and of what it knows of them.
    quint64 version() const { return mVersion; }
    /// Tells of a change.
    void noteChange() { ++mVersion; }
    /// Reads the catalogue again, after a change. Answers an empty text or what went wrong.
    QString reload();

    /// Bars of an instrument's day, in the order of time; after-hours minutes included.
    MinuteBars bars(qint64 instrument, int day);
    /// Ticks of an instrument's day, in the order in which they happened; empty when only bars are known.
    Ticks ticks(qint64 instrument, int day);
    /// Days of an instrument that have bars, ascending.
    QVector<int> days(qint64 instrument);
    /// The days that no simulation has made, with the number of their bars.
    QMap<int, int> importedCounts(qint64 instrument);
    std::optional<DaySummary> summary(qint64 instrument, int day);
    /// The last stored day before a day.
    std::optional<DaySummary> summaryBefore(qint64 instrument, int day);
    /// The close before a day, as the source of the day has told it.
    std::optional<double> previousClose(qint64 instrument, int day);
    /// The sessions that are kept with a day, as its source has shown them; empty for those of the instrument.
    DaySessions daySessions(qint64 instrument, int day);
    /// A value of the store's own bookkeeping, or empty.
    QString note(const QString &name);

    /// What was read and could not be right.
    StoreFaults &faults() { return mFaults; }
    /// Whether another thread of the program is writing.
    bool isBeingWritten();

    /// The calling thread's connection, for writers.
    QSqlDatabase connection();
    /// One line for a failed query of this store.
    QString describe(const QSqlError &error) const;
    /// One line for a writer that has lost its patience.
    QString describeBusy() const;

private:
    friend class StoreTurn;

    QString prepare(QSqlDatabase database);
    QString lookOver(QSqlQuery &query) const;
    QString describeDamage() const;
    std::optional<DaySummary> oneSummary(const char *condition, qint64 instrument, int day);

    QString mPath;
    mutable std::atomic<bool> mIsWhole{
        false}; ///< it was looked over, and nothing was met since that is damaged
    std::unique_ptr<SqlConnections> mConnections;
    StoreFaults mFaults;
    Listeners mCatalogueChanges;
    std::atomic<quint64> mVersion{0};
    std::recursive_timed_mutex mWriting; ///< held by the one that writes
    mutable std::mutex mLock; ///< guards the pointer below
    std::shared_ptr<const Catalogue> mCatalogue = std::make_shared<Catalogue>();
};

} // namespace terminal
