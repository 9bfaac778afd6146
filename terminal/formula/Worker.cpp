#include "terminal/formula/Worker.h"

#include <utility>

namespace terminal {

Worker::Worker() : mThread([this] { run(); }) {}

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

void Worker::run() {
    while (true) {
        Job job;
        {
            std::unique_lock<std::mutex> hold(mLock);
            mWake.wait(hold, [this] { return mStop || !mJobs.empty(); });
            if (mJobs.empty()) {
                return;
            }
            job = std::move(mJobs.front());
            mJobs.pop_front();
        }
        job();
    }
}

} // namespace terminal
