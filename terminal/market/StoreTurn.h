#pragma once

#include <chrono>
#include <mutex>

namespace terminal {

class CMarketStore;

/// The turn to write to a store. The program's writers queue for it, so that a store that SQLite calls busy is held by
/// another process. A thread that has the turn gets it again. To be let go on the thread that got it.
class StoreTurn {
public:
    /// Waits for the turn until it comes.
    explicit StoreTurn(CMarketStore &store);
    /// Waits for it so long; isMine() tells whether it came.
    StoreTurn(CMarketStore &store, std::chrono::milliseconds patience);

    bool isMine() const { return mHold.owns_lock(); }

private:
    std::unique_lock<std::recursive_timed_mutex> mHold;
};

} // namespace terminal
