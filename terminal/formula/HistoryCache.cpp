#include "terminal/formula/HistoryCache.h"

#include "terminal/market/MarketDate.h"

#include <utility>

namespace terminal {
namespace {

/// Day of the last point; none without points.
int dayOfLastPoint(const se::RPCFormulaResult &result) {
    return result.mTimes.empty() ? HistoryCache::kNoDay : dayOf(dateAt(result.mTimes.back().first));
}

} // namespace

HistoryCache::Delivery::Delivery(HistoryCache *cache, int day) : mCache(cache) {
    if (mCache) {
        mBefore = mCache->exchangeDelivered(day);
    }
}

HistoryCache::Delivery::~Delivery() {
    if (mCache) {
        mCache->exchangeDelivered(mBefore);
    }
}

HistoryCache::HistoryCache(int capacity) : mCapacity(capacity) {}

std::optional<int> HistoryCache::exchangeDelivered(std::optional<int> day) {
    std::lock_guard<std::mutex> hold(mLock);
    return std::exchange(mDelivered, day);
}

void HistoryCache::expect(const QString &stock, int day) {
    std::lock_guard<std::mutex> hold(mLock);
    mExpected.insert(stock, day);
}

bool HistoryCache::getFormulaHistoryData(const QString &stock, const QString &formula,
                                         std::shared_ptr<se::RPCFormulaMetaResult> &meta,
                                         std::shared_ptr<se::RPCFormulaResult> &result) {
    std::lock_guard<std::mutex> hold(mLock);
    const auto found = mEntries.find({stock, formula});
    if (found == mEntries.end() || mExpected.value(stock, mDay) != mDay) {
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
    const int day = mDelivered.value_or(dayOfLastPoint(*result));
    if (day == kNoDay || day < mDay) {
        return;
    }
    if (day > mDay) {
        mEntries.clear();
        mUse.clear();
        mDay = day;
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
    mDay = kNoDay;
}

int HistoryCache::size() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mEntries.size();
}

} // namespace terminal
