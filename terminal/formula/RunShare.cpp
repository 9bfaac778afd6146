#include "terminal/formula/RunShare.h"

#include <algorithm>

namespace terminal {

void RunShare::note(std::chrono::nanoseconds taken, bool isSeries, qint64 now) {
    const qint64 milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(taken).count();
    const int limit = isSeries ? mLimits.seriesMilliseconds : mLimits.runMilliseconds;
    if (milliseconds < limit) {
        mPause = 0;
        mIsTold = false;
        return;
    }
    if (mPause == 0) {
        mLongSince = now;
    }
    constexpr qint64 kLongestPause = 60000;
    mPause = static_cast<int>(std::clamp<qint64>(milliseconds * mLimits.pauseFactor, 1, kLongestPause));
    mIsTold = now - mLongSince >= mLimits.patienceMilliseconds;
}

} // namespace terminal
