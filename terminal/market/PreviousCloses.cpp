#include "terminal/market/PreviousCloses.h"

namespace terminal {

PreviousClose PreviousCloses::of(const QString &key, int day) {
    const quint64 version = mStore.version(); // before the reading, which may be of a later one
    const qint64 now = mNow();
    {
        std::lock_guard<std::mutex> hold(mLock);
        const auto known = mKnown.constFind({key, day});
        if (known != mKnown.constEnd() && known->version == version && now - known->asked < kAge) {
            return known->close;
        }
    }
    const PreviousClose close = previousCloseOf(mStore, key, day);
    if (close.price == TC::kUnsetValue) {
        return close; // it may be that the store could not be read
    }
    std::lock_guard<std::mutex> hold(mLock);
    if (mKnown.size() >= kMost) {
        mKnown.clear();
    }
    mKnown.insert({key, day}, {close, version, now});
    return close;
}

int PreviousCloses::daysInMemory() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mKnown.size();
}

} // namespace terminal
