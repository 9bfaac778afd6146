#pragma once

#include <QtGlobal>

#include <chrono>

namespace terminal {

/// What of a formula's runs counts as long.
struct RunShareLimits {
    int runMilliseconds = 20; ///< of a processor, for one point
    int seriesMilliseconds = 100; ///< for a whole series, which is wanted once in a while
    int pauseFactor =
        4; ///< a long run is followed by a pause of so many times its time: a fifth of a processor
    int patienceMilliseconds = 3000; ///< of long runs before they are told
};

/// How much of a processor the runs of one request take. A request whose run was long pauses before the next one, and is
/// told when that goes on. Times are milliseconds of a clock that never goes back. Not for several threads at once.
class RunShare {
public:
    explicit RunShare(const RunShareLimits &limits = {}) : mLimits(limits) {}

    /// A run has ended `now` that took that much of a processor; `isSeries` when it made a whole series.
    void note(std::chrono::nanoseconds taken, bool isSeries, qint64 now);
    /// Whether the last run was long.
    bool isLong() const { return mPause > 0; }
    /// The pause before the next run; 0 for none.
    int pause() const { return mPause; }
    /// Whether all runs have been long for as long as patience lasts.
    bool isTold() const { return mIsTold; }

private:
    RunShareLimits mLimits;
    int mPause = 0;
    qint64 mLongSince = 0; ///< end of the first of the long runs
    bool mIsTold = false;
};

} // namespace terminal
