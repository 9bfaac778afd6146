#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace terminal {

/// A thread that runs jobs in the order of posting.
class Worker {
public:
    using Job = std::function<void()>;

    Worker();
    ~Worker();
    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;

    /// Any thread; never waits for jobs.
    void post(Job job);
    /// Runs all jobs that wait, those that they post included, and ends the thread. Not from a job.
    void finish();

private:
    void run();

    std::mutex mLock; ///< guards what follows
    std::condition_variable mWake;
    std::deque<Job> mJobs;
    bool mStop = false;
    std::thread mThread; ///< last: starts when all else is there
};

} // namespace terminal
