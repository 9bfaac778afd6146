#pragma once

#include "terminal/formula/PlacedDay.h"

#include <optional>

namespace terminal {

/// What a request has to send, and when: what has changed goes out at once, or when a time has passed since the result
/// before. Changes that come meanwhile go out together, as one point where they are of the last one alone.
///
/// At most one call is awaited at any time. Times are milliseconds of a clock that never goes back. Not for several
/// threads at once.
class DueResult {
public:
    enum class Due { Nothing, Point, Whole };

    /// `interval` is the least time between two results; none for 0 and less.
    explicit DueResult(qint64 interval = 0) : mInterval(interval) {}

    void note(SeriesChange change);
    /// How long to wait before what is due may be taken; nothing when nothing is due or a call is awaited already.
    std::optional<int> wait(qint64 now) const;
    /// A call of take() comes by itself after the wait.
    void await() { mIsAwaited = true; }
    /// What is due; nothing is any more, nor awaited.
    Due take();
    /// A result has been made, and the next one is not due before a pause, whatever the interval; none for 0.
    void sent(qint64 now, qint64 pause = 0) {
        mSent = now;
        mPause = pause;
    }

private:
    const qint64 mInterval;
    qint64 mPause = 0; ///< after the last result
    Due mDue = Due::Nothing;
    bool mIsAwaited = false;
    std::optional<qint64> mSent;
};

} // namespace terminal
