#pragma once

#include "terminal/trade/TradeBook.h"

#include <QtGlobal>

#include <map>
#include <set>

namespace terminal {

/// The books of trading days that are in memory: those that were used last, and every one with changes that are not
/// written yet. Not for several threads at once.
class TradeBooks {
public:
    /// Days that stay without unwritten changes.
    static constexpr size_t kMost = 12;

    /// The book of a day, which counts as used now; null when it is not in memory.
    TradeBook *find(int day);
    /// Takes a book in and drops what has not been used for longest. One that is there already stays.
    TradeBook &add(int day, TradeBook book);
    /// The book of a day, which is in memory, has a change that is to be written.
    void noteChange(int day);
    /// The changes up to now are under way to the store.
    void beginWriting();
    /// They are in the store, or have to be written again.
    void endWriting(bool written);
    /// A number that is another one after every end of a writing and every book that was dropped: what was read from the
    /// store meanwhile may be old.
    quint64 version() const { return mVersion; }

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

        bool isIdle() const { return !isChanged && !isBeingWritten; }
    };

    void drop();

    std::map<int, Entry> mEntries;
    quint64 mUses = 0;
    quint64 mVersion = 0;
};

} // namespace terminal
