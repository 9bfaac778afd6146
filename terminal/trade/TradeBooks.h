#pragma once

#include "terminal/trade/TradeBook.h"

#include <QtGlobal>

#include <map>
#include <set>
#include <utility>
#include <vector>

namespace terminal {

/// The books of trading days that are in memory: those that were used last, and every one with changes that are not
/// written yet. Not for several threads at once.
class TradeBooks {
public:
    /// Days that stay without unwritten changes.
    static constexpr size_t kMost = 12;

    /// The book of a day, which counts as used now; null when it is not in memory.
    TradeBook *find(int day);
    /// Takes a book in and drops what has not been used for longest (see takeDropped). One that is there already stays.
    TradeBook &add(int day, TradeBook book);
    /// Takes in an empty book for the changes of a day whose other records could not be read. It goes when its changes
    /// are in the store, to be read whole.
    TradeBook &addPart(int day);
    /// The book of a day, which is in memory, has a change that is to be written.
    void noteChange(int day);
    /// The changes up to now are under way to the store.
    void beginWriting();
    /// They are in the store, or have to be written again. With `allDays` the writing changed days that are not in
    /// memory, too.
    void endWriting(bool written, bool allDays);
    /// A number that is another one after every end of a writing that changed the day: what was read from the store
    /// meanwhile may be old.
    quint64 version(int day) const;

    /// The books that were dropped since the last call: to free a day of records takes a while, which nobody has to wait for.
    std::vector<TradeBook> takeDropped() { return std::exchange(mDropped, {}); }

    /// Drops what was imported from every book.
    void forgetImports();
    /// A task of an id, or null; the newest day counts.
    const TradeTask *task(int id) const;
    std::set<int> daysFrom(int day) const;
    size_t size() const { return mEntries.size(); }

private:
    struct Entry {
        TradeBook book;
        quint64 used = 0;
        bool isChanged = false;
        bool isBeingWritten = false;
        bool isPart = false; ///< the store has records of the day that it does not

        bool isIdle() const { return !isChanged && !isBeingWritten; }
    };

    using Entries = std::map<int, Entry>;

    void drop();
    Entries::iterator drop(Entries::iterator entry);

    Entries mEntries;
    std::vector<TradeBook> mDropped;
    quint64 mUses = 0;
    quint64 mWritings = 0; ///< that changed all days
    std::map<int, quint64> mDayWritings; ///< that changed one
};

} // namespace terminal
