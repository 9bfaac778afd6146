#pragma once

#include "terminal/threads/BehindWindow.h"
#include "terminal/threads/WorkPlace.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <thread>

namespace terminal {

/// A thread that runs jobs in the order of posting.
class Worker : public WorkPlace {
public:
    /// `niceness` of the thread beyond that of its maker: the higher, the more it leaves the processor to others.
    explicit Worker(int niceness = kBehindWindow);
    ~Worker() override;
    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;

    void post(Job job) override;
    void postAfter(int milliseconds, Job job) override;
    /// Jobs that wait or are under way, those to be posted later left out.
    int load() const;
    /// Runs all jobs that wait, those that they post included, and ends the thread. Not from a job.
    void finish();

private:
    using Clock = std::chrono::steady_clock;

    void run(int niceness);
    bool takeFirst(Job &job);
    void postDueJobs();

    mutable std::mutex mLock; ///< guards what follows
    std::condition_variable mWake;
    std::deque<Job> mJobs;
    std::multimap<Clock::time_point, Job> mLater;
    bool mBusy = false;
    bool mStop = false;
    std::thread mThread; ///< last: starts when all else is there
};

} // namespace terminal
