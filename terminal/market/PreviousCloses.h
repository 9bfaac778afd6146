#pragma once

#include "terminal/market/PreviousClose.h"
#include "terminal/threads/SteadyTime.h"

#include <QHash>
#include <QPair>

#include <functional>
#include <mutex>

namespace terminal {

/// What previousCloseOf() answers, for who asks again and again: charts do with every tick and every movement of the mouse. What
/// this program changes in the store counts at once, what another process does within a second. Any thread.
class PreviousCloses {
public:
    static constexpr qint64 kAge = 1000; ///< milliseconds, after which the store is asked again
    static constexpr int kMost = 500; ///< days that are kept

    explicit PreviousCloses(CMarketStore &store, std::function<qint64()> now = steadyMilliseconds)
        : mStore(store), mNow(std::move(now)) {}

    PreviousClose of(const QString &key, int day);
    int daysInMemory() const;

private:
    struct Known {
        PreviousClose close;
        quint64 version = 0; ///< of the store
        qint64 asked = 0;
    };
    using Day = QPair<QString, int>; ///< key and day

    CMarketStore &mStore;
    const std::function<qint64()> mNow;
    mutable std::mutex mLock; ///< guards what follows
    QHash<Day, Known> mKnown;
};

} // namespace terminal
