#pragma once

#include "terminal/trade/TradeBooks.h"
#include "terminal/trade/TradeNotices.h"
#include "terminal/trade/TradeStore.h"

#include <QList>
#include <QString>

#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace terminal {

/// The trading day that a time is of, for an instrument; one that the catalogue does not know is traded as a share.
int tradingDayAt(const Catalogue &catalogue, const std::string &instrument, qint64 time);

/// What is known of the user's trading: the records by day, the accounts, strategies and instruments; what of it is not
/// written yet; and what has to be signalled of it.
///
/// A change is in all three at once. Days are read from the store when they are asked for, without the lock, and those
/// used last stay in memory. Charts wait for the lock: the records of a day are made before it is taken, and freed after it.
/// Any thread; one of them writes.
class TradeLedger {
public:
    using Keys = TC::CLinkageManager::Keys;

    /// The store is open, and outlives the ledger.
    explicit TradeLedger(CMarketStore &store);

    /// Calls `use` with the records of a day, under the lock; not at all when the day has none, or they cannot be read
    /// now.
    template <class Use> void withDay(int day, Use use) {
        Hold hold(*this);
        const TradeBook *book = bookOf(day, hold.lock);
        if (book && !book->isEmpty()) {
            use(*book);
        }
    }
    /// What has been filled of a task's items of an instrument; 0 for an unknown task.
    long long finishedOf(int task, const std::string &instrument) const;
    std::vector<TradeAccount> accounts() const;
    Keys strategies() const;
    Keys stocks();
    /// Days from a day on that have own records of an account, or are in memory.
    std::set<int> daysFrom(const std::string &account, int day);
    std::set<int> finishedDays(const std::string &account) { return mStore.finishedDays(account); }
    /// Reads a day that is not in memory, so that who asks for its records does not wait for the store.
    void readAhead(int day) {
        withDay(day, [](const TradeBook &) {});
    }
    /// How many days' records are in memory, days without any included.
    size_t daysInMemory() const;
    /// In the order of their times.
    std::vector<TradeCancel> cancels(int day) { return mStore.cancels(day); }

    void addAccount(const TradeAccount &account);
    void enter(int day, TradeChanges changes);
    void enterCancel(const TradeCancel &cancel);
    /// Enters an imported record, and its account when it is not known yet.
    void import(const TradeOrder &order, const TradeAccount &account);
    void import(const TradeDeal &deal, const TradeAccount &account);
    /// A record was left out for this reason; told with the next writing.
    void refuse(const char *reason);
    /// Drops the own records of an account's day.
    void forgetDay(const std::string &account, int day);
    void forgetImports();
    /// A day is recorded to its end.
    void finishDay(const std::string &account, int day);

    void noteNewDay(int day);
    void noteFigures();
    /// What has to be signalled since the last call.
    TradeNotices takeNotices();

    /// Writes what is pending; what cannot be written now is kept for the next time. Answers whether nothing is.
    bool write();

private:
    /// Holds the lock, and frees what is dropped meanwhile when it is open again.
    class Hold {
    public:
        explicit Hold(TradeLedger &ledger) : mBooks(ledger.mBooks), lock(ledger.mLock) {}
        ~Hold() {
            if (lock.owns_lock()) {
                mDropped = mBooks.takeDropped();
            }
        }
        Hold(const Hold &) = delete;
        Hold &operator=(const Hold &) = delete;

    private:
        TradeBooks &mBooks;
        std::vector<TradeBook> mDropped;

    public:
        std::unique_lock<std::mutex> lock; ///< last: opens before that goes
    };

    /// What changes are about.
    struct Touched {
        explicit Touched(const TradeChanges &changes);

        Keys instruments;
        Keys tasks; ///< instruments of tasks
        Keys strategies;
    };

    /// The book of a day, in memory or from the store; an empty one when the day has no records, and null when they
    /// cannot be read: that is told, and tried again when the day is asked for once more. The lock is held before and
    /// afterwards, but not all the time.
    TradeBook *bookOf(int day, std::unique_lock<std::mutex> &hold);
    /// The same to be changed.
    TradeBook &bookToChange(int day, std::unique_lock<std::mutex> &hold);
    /// The records of a day in the store; nothing when they cannot be read.
    std::optional<TradeBook> readBook(int day, QString &trouble);
    template <class Record> void importRecord(const Record &record, const TradeAccount &account);
    void tellRefused();
    void readStocks();
    // Under the lock.
    void noteChanges(const Touched &touched);
    void addAccountLocked(const TradeAccount &account);

    TradeStore mStore;
    QString mTrouble; ///< of the last writing; of the thread that writes
    mutable std::mutex mLock; ///< guards what follows
    TradeBooks mBooks;
    std::map<std::string, TradeAccount> mAccounts;
    Keys mStrategies;
    Keys mStocks; ///< until those of the store are read, only of what has been entered
    bool mAreStocksRead = false;
    TradeBatch mPending; ///< not written yet
    QString mReadTrouble; ///< of the last reading, empty when it went well
    bool mIsForgettingImports = false; ///< the store has imports yet that are to go from it
    TradeNotices mNotices;
    int mRefused = 0; ///< imported records, since this was told last
    const char *mRefusedFor = "";
};

} // namespace terminal
