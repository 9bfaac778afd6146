#include "terminal/threads/Worker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <future>
#include <memory>
#include <vector>

#include <sys/resource.h>

using terminal::Worker;

TEST(Worker, RunsJobsInTheOrderOfPosting) {
    std::vector<int> ran;
    Worker worker;
    for (int i = 0; i < 100; ++i) {
        worker.post([&ran, i] { ran.push_back(i); });
    }
    worker.finish();
    ASSERT_EQ(ran.size(), 100u);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(ran[i], i);
    }
}

TEST(Worker, ALaterJobComesBehindThoseThatWait) {
    Worker worker;
    std::vector<int> ran;
    std::promise<void> done;
    worker.postAfter(20, [&] {
        ran.push_back(3);
        done.set_value();
    });
    worker.postAfter(10, [&] { ran.push_back(2); });
    worker.post([&] { ran.push_back(1); });
    done.get_future().wait();
    worker.finish();
    EXPECT_EQ(ran, (std::vector<int>{1, 2, 3}));
}

TEST(Worker, LeavesTheProcessorToTheThreadOfTheWindow) {
    const int own = ::getpriority(PRIO_PROCESS, 0);
    const auto ofWorker = [](Worker &worker) {
        std::promise<int> niceness;
        worker.post([&] { niceness.set_value(::getpriority(PRIO_PROCESS, 0)); });
        return niceness.get_future().get();
    };
    constexpr int kMost = 19; // of the system
    Worker worker;
    EXPECT_EQ(ofWorker(worker), std::min(kMost, own + terminal::kBehindWindow));
    Worker slow(terminal::kBehindWindow + 2);
    EXPECT_EQ(ofWorker(slow), std::min(kMost, own + terminal::kBehindWindow + 2));
    EXPECT_EQ(::getpriority(PRIO_PROCESS, 0), own) << "its maker goes on as it was";
}

TEST(Worker, AJobForLaterIsDroppedWithTheWorkerAndReleased) {
    const auto held = std::make_shared<int>(0);
    {
        Worker worker;
        worker.postAfter(1000000, [held] { ++*held; });
    }
    EXPECT_EQ(*held, 0);
    EXPECT_EQ(held.use_count(), 1);
}

TEST(Worker, ALoadIsWhatWaitsAndWhatIsUnderWay) {
    Worker worker;
    EXPECT_EQ(worker.load(), 0);
    std::promise<void> begun;
    std::promise<void> goOn;
    worker.post([&] {
        begun.set_value();
        goOn.get_future().wait();
    });
    begun.get_future().wait();
    worker.post([] {});
    worker.postAfter(1000000, [] {});
    EXPECT_EQ(worker.load(), 2);
    goOn.set_value();
    worker.finish();
    EXPECT_EQ(worker.load(), 0);
}
