#pragma once

#include "terminal/market/DaySessions.h"

#include <QtGlobal>

#include <functional>
#include <map>
#include <mutex>
#include <utility>

namespace terminal {

/// The sessions of days as they were read from the store, so that a chart which asks for them with every request has them
/// at hand. Any thread.
class KeptSessions {
public:
    static constexpr size_t kMost = 4096; ///< days; all go when there would be more

    /// The sessions of a day, from `read` when they are not at hand.
    DaySessions of(qint64 instrument, int day, const std::function<DaySessions()> &read);
    /// The store has been changed: all are read anew.
    void forget();

private:
    std::mutex mLock; ///< guards what follows
    std::map<std::pair<qint64, int>, DaySessions> mKept;
    quint64 mVersion = 0; ///< another one after forget(): what was read before may be old
};

} // namespace terminal
