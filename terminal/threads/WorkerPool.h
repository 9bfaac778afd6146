#pragma once

#include "terminal/threads/Worker.h"

#include <atomic>
#include <memory>
#include <vector>

namespace terminal {

/// Workers that share work which may take long. Any thread.
class WorkerPool {
public:
    /// At least one; see Worker for the niceness.
    explicit WorkerPool(int count, int niceness = kBehindWindow);

    /// The worker where fewest jobs wait; equal ones take turns.
    Worker &idlest();
    /// The one for work that goes in order.
    Worker &first() { return *mWorkers.front(); }
    /// Finishes all of them, the jobs that wait included.
    void finish();

private:
    std::vector<std::unique_ptr<Worker>> mWorkers; ///< fixed after construction
    std::atomic<size_t> mNext{0};
};

} // namespace terminal
