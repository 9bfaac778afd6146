#include "terminal/threads/WorkLanes.h"

#include <utility>

namespace terminal {
namespace {

constexpr int kModelsAtOnce = 2;
constexpr int kSlowNiceness = kBehindWindow + 10;

} // namespace

WorkLanes::WorkLanes(int quickWorkers) : mQuick(quickWorkers), mSlow(1, kSlowNiceness), mModel(kModelsAtOnce) {}

WorkerPool &WorkLanes::poolOf(WorkLane lane) {
    switch (lane) {
    case WorkLane::Price:
        return mPrice;
    case WorkLane::Quick:
        return mQuick;
    case WorkLane::First:
        return mFirst;
    case WorkLane::Slow:
        return mSlow;
    case WorkLane::Model:
        break;
    }
    return mModel;
}

bool WorkLanes::post(WorkLane lane, WorkPlace::Job job) {
    {
        std::lock_guard<std::mutex> hold(mLock);
        if (mIsClosed) {
            return false;
        }
        ++mUnderWay;
    }
    poolOf(lane).idlest().post([this, job = std::move(job)]() mutable {
        job();
        job = nullptr;
        ended();
    });
    return true;
}

void WorkLanes::ended() {
    std::lock_guard<std::mutex> hold(mLock);
    if (--mUnderWay == 0) {
        mIdle.notify_all();
    }
}

void WorkLanes::postAfter(int milliseconds, WorkPlace::Job job) {
    mPrice.first().postAfter(milliseconds, std::move(job)); // the worker that is never held up
}

void WorkLanes::finish() {
    {
        std::unique_lock<std::mutex> hold(mLock);
        mIdle.wait(hold, [this] { return mUnderWay == 0; });
        mIsClosed = true;
    }
    for (WorkerPool *pool : {&mPrice, &mQuick, &mFirst, &mSlow, &mModel}) {
        pool->finish();
    }
}

void SerialWork::post(Job job) {
    bool isFirst = false;
    {
        std::lock_guard<std::mutex> hold(mLock);
        isFirst = mJobs.empty();
        mJobs.push_back(std::move(job));
    }
    if (isFirst) {
        postFirst();
    }
}

void SerialWork::postAfter(int milliseconds, Job job) {
    mLanes.postAfter(milliseconds, [self = shared_from_this(), job = std::move(job)]() mutable {
        self->post(std::move(job));
    });
}

void SerialWork::postFirst() {
    if (!mLanes.post(mLane, [self = shared_from_this()] { self->runFirst(); })) {
        std::deque<Job> dropped; // what they hold goes outside the lock
        std::lock_guard<std::mutex> hold(mLock);
        dropped.swap(mJobs);
    }
}

void SerialWork::runFirst() {
    Job job;
    {
        std::lock_guard<std::mutex> hold(mLock);
        job = std::move(mJobs.front());
    }
    job();
    job = nullptr;
    bool isMore = false;
    {
        std::lock_guard<std::mutex> hold(mLock);
        mJobs.pop_front();
        isMore = !mJobs.empty();
    }
    if (isMore) {
        postFirst();
    }
}

} // namespace terminal
