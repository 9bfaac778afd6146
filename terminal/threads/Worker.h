#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
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
    /// Posts a job when a time of milliseconds is over. Any thread; dropped when the worker is finished before.
    void postAfter(int milliseconds, Job job);
    /// Jobs that wait or are under way, those to be posted later left out.
    int load() const;
    /// Runs all jobs that wait, those that they post included, and ends the thread. Not from a job.
    void finish();

private:
    using Clock = std::chrono::steady_clock;

    void run();
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
