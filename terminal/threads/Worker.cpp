#include "terminal/threads/Worker.h"

#include <utility>

namespace terminal {

Worker::Worker(int niceness) : mThread([this, niceness] { run(niceness); }) {}

Worker::~Worker() {
    finish();
}

void Worker::finish() {
    {
        std::lock_guard<std::mutex> hold(mLock);
        mStop = true;
    }
    mWake.notify_one();
    if (mThread.joinable()) {
        mThread.join();
    }
}

void Worker::post(Job job) {
    {
        std::lock_guard<std::mutex> hold(mLock);
        mJobs.push_back(std::move(job));
    }
    mWake.notify_one();
}

void Worker::postAfter(int milliseconds, Job job) {
    {
        std::lock_guard<std::mutex> hold(mLock);
        mLater.emplace(Clock::now() + std::chrono::milliseconds(milliseconds), std::move(job));
    }
    mWake.notify_one();
}

int Worker::load() const {
    std::lock_guard<std::mutex> hold(mLock);
    return static_cast<int>(mJobs.size()) + (mBusy ? 1 : 0);
}

void Worker::postDueJobs() {
    const Clock::time_point now = Clock::now();
    while (!mLater.empty() && mLater.begin()->first <= now) {
        mJobs.push_back(std::move(mLater.begin()->second));
        mLater.erase(mLater.begin());
    }
}

/// Waits for the next job; false when the worker has to end.
bool Worker::takeFirst(Job &job) {
    std::unique_lock<std::mutex> hold(mLock);
    mBusy = false;
    while (true) {
        postDueJobs();
        if (!mJobs.empty()) {
            job = std::move(mJobs.front());
            mJobs.pop_front();
            mBusy = true;
            return true;
        }
        if (mStop) {
            return false;
        }
        if (mLater.empty()) {
            mWake.wait(hold);
        } else {
            // A copy: the entry may go while the lock is open.
            const Clock::time_point due = mLater.begin()->first;
            mWake.wait_until(hold, due);
        }
    }
}

void Worker::run(int niceness) {
    leaveProcessor(niceness);
    Job job;
    while (takeFirst(job)) {
        job();
        job = nullptr; // before the wait: what it holds may be the last of its kind
    }
}

} // namespace terminal
