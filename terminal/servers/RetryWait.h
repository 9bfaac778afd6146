#pragma once

#include <algorithm>

namespace terminal {

/// Waits between tries to reach a server: each is twice the one before, up to the longest.
class RetryWait {
public:
    static constexpr int kFirst = 250; ///< milliseconds
    static constexpr int kLongest = 8000;

    /// The wait before the next try, in milliseconds.
    int next() {
        const int wait = mNext;
        mNext = std::min(2 * mNext, kLongest);
        return wait;
    }
    /// The server was reached.
    void reset() { mNext = kFirst; }

private:
    int mNext = kFirst;
};

} // namespace terminal
