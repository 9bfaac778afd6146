#include "terminal/threads/WorkerPool.h"

#include <gtest/gtest.h>

#include <future>
#include <set>

using namespace terminal;

TEST(WorkerPool, IdleWorkersTakeTurns) {
    WorkerPool pool(3);
    std::set<Worker *> workers;
    for (int i = 0; i < 3; ++i) {
        workers.insert(&pool.idlest());
    }
    EXPECT_EQ(workers.size(), 3u);
}

TEST(WorkerPool, ABusyWorkerIsPassedOver) {
    WorkerPool pool(2);
    std::promise<void> release;
    std::shared_future<void> released(release.get_future());
    Worker &busy = pool.first();
    busy.post([released] { released.wait(); });
    for (int i = 0; i < 4; ++i) {
        EXPECT_NE(&pool.idlest(), &busy);
    }
    release.set_value();
}

TEST(WorkerPool, ThereIsAlwaysOne) {
    WorkerPool pool(0);
    EXPECT_EQ(&pool.idlest(), &pool.first());
}

TEST(WorkerPool, FinishingRunsWhatWaits) {
    std::atomic<int> runs{0};
    WorkerPool pool(2);
    for (int i = 0; i < 10; ++i) {
        pool.idlest().post([&] { ++runs; });
    }
    pool.finish();
    EXPECT_EQ(runs, 10);
}
