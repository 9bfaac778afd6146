#include "terminal/formula/HistoryCache.h"

#include <utility>

namespace terminal {
namespace {

/// Calendar day at UTC+8 of the last point, counted since the epoch; -1 without points.
qint64 dayOf(const se::RPCFormulaResult &result) {
    constexpr qint64 kZone = 8LL * 3600 * 1000;
    constexpr qint64 kDay = 24LL * 3600 * 1000;
    return result.mTimes.empty() ? -1 : (result.mTimes.back().first + kZone) / kDay;
}

} // namespace

HistoryCache::HistoryCache(int capacity) : mCapacity(capacity) {}

bool HistoryCache::getFormulaHistoryData(const QString &stock, const QString &formula,
                                         std::shared_ptr<se::RPCFormulaMetaResult> &meta,
                                         std::shared_ptr<se::RPCFormulaResult> &result) {
    std::lock_guard<std::mutex> hold(mLock);
    const auto found = mEntries.find({stock, formula});
    if (found == mEntries.end()) {
        return false;
    }
    mUse.splice(mUse.begin(), mUse, found->use);
    meta = found->meta;
    result = found->result;
    return true;
}

void HistoryCache::addFormulaHistoryData(const QString &stock, const QString &formula,
                                         const std::shared_ptr<se::RPCFormulaMetaResult> &meta,
                                         const std::shared_ptr<se::RPCFormulaResult> &result) {
    if (!meta || !result || result->mTimes.empty() || mCapacity < 1) {
        return;
    }
    std::lock_guard<std::mutex> hold(mLock);
    const qint64 day = dayOf(*result);
    // All entries are of one day: the newest.
    const qint64 newest = mEntries.isEmpty() ? day : dayOf(*mEntries.first().result);
    if (day < newest) {
        return;
    }
    if (day > newest) {
        mEntries.clear();
        mUse.clear();
    }
    const Key key(stock, formula);
    const auto found = mEntries.find(key);
    if (found != mEntries.end()) {
        mUse.erase(found->use);
        mEntries.erase(found);
    }
    mUse.push_front(key);
    mEntries.insert(key, {meta, result, mUse.begin()});
    if (mEntries.size() > mCapacity) {
        mEntries.remove(mUse.back());
        mUse.pop_back();
    }
}

void HistoryCache::clear() {
    std::lock_guard<std::mutex> hold(mLock);
    mEntries.clear();
    mUse.clear();
}

int HistoryCache::size() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mEntries.size();
}

} // namespace terminal
