#include "terminal/formula/DueResult.h"

#include <algorithm>
#include <utility>

namespace terminal {

void DueResult::note(SeriesChange change) {
    switch (change) {
    case SeriesChange::None:
        break;
    case SeriesChange::LastPoint:
        mDue = mDue == Due::Nothing ? Due::Point : mDue;
        break;
    case SeriesChange::NewPoint: // with another point before it, two of them
        mDue = mDue == Due::Nothing ? Due::Point : Due::Whole;
        break;
    case SeriesChange::Whole:
        mDue = Due::Whole;
        break;
    }
}

std::optional<int> DueResult::wait(qint64 now) const {
    if (mDue == Due::Nothing || mIsAwaited) {
        return std::nullopt;
    }
    return mSent ? static_cast<int>(std::max<qint64>(0, std::max(mInterval, mPause) - (now - *mSent))) : 0;
}

DueResult::Due DueResult::take() {
    mIsAwaited = false;
    return std::exchange(mDue, Due::Nothing);
}

} // namespace terminal
