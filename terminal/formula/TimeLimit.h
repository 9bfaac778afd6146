#pragma once

#include "terminal/threads/ThreadTime.h"

namespace terminal {

/// Watches how long this thread computes. A thread that other programs keep from the processor does not use its time
/// up. To be asked on the thread that made it.
class TimeLimit {
public:
    explicit TimeLimit(int milliseconds)
        : mLimit(milliseconds), mEarliestEnd(Clock::now() + mLimit), mStart(threadTime()) {}

    /// Quick until the limit has passed by the clock on the wall.
    bool isOver() const { return Clock::now() > mEarliestEnd && threadTime() - mStart > mLimit; }

private:
    using Clock = std::chrono::steady_clock;

    const std::chrono::milliseconds mLimit;
    const Clock::time_point mEarliestEnd;
    const std::chrono::nanoseconds mStart;
};

} // namespace terminal
