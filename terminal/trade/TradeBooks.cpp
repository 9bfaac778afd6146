#include "terminal/trade/TradeBooks.h"

#include <algorithm>
#include <utility>

namespace terminal {

TradeBook *TradeBooks::find(int day) {
    const auto found = mEntries.find(day);
    if (found == mEntries.end()) {
        return nullptr;
    }
    found->second.used = ++mUses;
    return &found->second.book;
}

TradeBook &TradeBooks::add(int day, TradeBook book) {
    const auto [place, isNew] = mEntries.try_emplace(day);
    Entry &entry = place->second;
    (isNew ? entry.book : mDropped.emplace_back()) = std::move(book);
    entry.used = ++mUses;
    drop();
    return entry.book;
}

TradeBook &TradeBooks::addPart(int day) {
    TradeBook &book = add(day, TradeBook());
    mEntries[day].isPart = true;
    return book;
}

void TradeBooks::noteChange(int day) {
    mEntries[day].isChanged = true;
}

void TradeBooks::beginWriting() {
    for (auto &[day, entry] : mEntries) {
        entry.isBeingWritten = std::exchange(entry.isChanged, false);
    }
}

void TradeBooks::endWriting(bool written, bool allDays) {
    mWritings += allDays ? 1 : 0;
    for (auto &[day, entry] : mEntries) {
        if (entry.isBeingWritten) {
            ++mDayWritings[day];
        }
        entry.isChanged = entry.isChanged || (entry.isBeingWritten && !written);
        entry.isBeingWritten = false;
    }
    for (auto entry = mEntries.begin(); entry != mEntries.end();) {
        entry = entry->second.isPart && entry->second.isIdle() ? drop(entry) : std::next(entry);
    }
    drop();
}

quint64 TradeBooks::version(int day) const {
    const auto found = mDayWritings.find(day);
    return mWritings + (found == mDayWritings.end() ? 0 : found->second);
}

void TradeBooks::drop() {
    const auto isIdle = [](const auto &entry) { return entry.second.isIdle(); };
    const auto isOlder = [](const auto &one, const auto &other) {
        return std::pair(!one.second.isIdle(), one.second.used) <
               std::pair(!other.second.isIdle(), other.second.used);
    };
    for (auto idle = std::count_if(mEntries.begin(), mEntries.end(), isIdle); idle > static_cast<long>(kMost);
         --idle) {
        drop(std::min_element(mEntries.begin(), mEntries.end(), isOlder));
    }
}

TradeBooks::Entries::iterator TradeBooks::drop(Entries::iterator entry) {
    mDropped.push_back(std::move(entry->second.book));
    return mEntries.erase(entry);
}

void TradeBooks::forgetImports() {
    for (auto &[day, entry] : mEntries) {
        entry.book.forgetImports();
    }
}

const TradeTask *TradeBooks::task(int id) const {
    for (auto entry = mEntries.rbegin(); entry != mEntries.rend(); ++entry) {
        if (const TradeTask *known = entry->second.book.task(id)) {
            return known;
        }
    }
    return nullptr;
}

std::set<int> TradeBooks::daysFrom(int day) const {
    std::set<int> days;
    for (auto entry = mEntries.lower_bound(day); entry != mEntries.end(); ++entry) {
        if (!entry->second.isIdle() || !entry->second.book.isEmpty()) {
            days.insert(entry->first);
        }
    }
    return days;
}

} // namespace terminal
