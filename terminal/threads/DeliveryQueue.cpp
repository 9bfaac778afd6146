#include "terminal/threads/DeliveryQueue.h"

#include <utility>

namespace terminal {

DeliveryQueue::DeliveryQueue(int sliceMilliseconds) : mSlice(sliceMilliseconds) {
    mNextSlice.setSingleShot(true);
    mNextSlice.setInterval(0);
    connect(&mNextSlice, &QTimer::timeout, this, &DeliveryQueue::drain);
}

DeliveryQueue::~DeliveryQueue() {
    // What the tasks hold may call back into this queue when it goes: it goes outside the lock.
    std::deque<Task> rest;
    std::lock_guard<std::mutex> hold(mLock);
    rest.swap(mTasks);
}

void DeliveryQueue::post(Task task) {
    {
        std::lock_guard<std::mutex> hold(mLock);
        mTasks.push_back(std::move(task));
        if (mAwake) {
            return;
        }
        mAwake = true;
    }
    QMetaObject::invokeMethod(this, "drain", Qt::QueuedConnection);
}

int DeliveryQueue::pending() const {
    std::lock_guard<std::mutex> hold(mLock);
    return static_cast<int>(mTasks.size());
}

bool DeliveryQueue::takeFirst(Task &task) {
    std::lock_guard<std::mutex> hold(mLock);
    if (mTasks.empty()) {
        mAwake = false;
        return false;
    }
    task = std::move(mTasks.front());
    mTasks.pop_front();
    return true;
}

void DeliveryQueue::drain() {
    QElapsedTimer slice;
    slice.start();
    Task task;
    while (takeFirst(task)) {
        task();
        task = nullptr;
        if (slice.elapsed() >= mSlice) {
            // A timer comes due once a turn of the event loop; a posted event would come before any input.
            mNextSlice.start();
            return;
        }
    }
}

} // namespace terminal
