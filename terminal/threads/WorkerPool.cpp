#include "terminal/threads/WorkerPool.h"

#include <algorithm>

namespace terminal {

WorkerPool::WorkerPool(int count, int niceness) {
    for (int i = 0; i < std::max(1, count); ++i) {
        mWorkers.push_back(std::make_unique<Worker>(niceness));
    }
}

Worker &WorkerPool::idlest() {
    const size_t start = mNext++;
    Worker *found = mWorkers[start % mWorkers.size()].get();
    for (size_t i = 1; i < mWorkers.size(); ++i) {
        Worker *other = mWorkers[(start + i) % mWorkers.size()].get();
        found = other->load() < found->load() ? other : found;
    }
    return *found;
}

void WorkerPool::finish() {
    for (const std::unique_ptr<Worker> &worker : mWorkers) {
        worker->finish();
    }
}

} // namespace terminal
