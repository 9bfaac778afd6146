#include "chartdata/LogThread.h"

#include <chrono>
#include <csignal>
#include <utility>

namespace TC {

void LogThread::write(Line line) noexcept {
    try {
        post(std::move(line));
    } catch (...) {
        ++mLost; // neither memory nor a thread is left
    }
}

void LogThread::post(Line line) {
    std::unique_lock<std::mutex> hold(mLock);
    if (mLines.size() >= size_t(kMostWaiting)) {
        ++mLost;
        return;
    }
    if (mThread == std::thread::id()) {
        start();
    }
    mLines.push_back(std::move(line));
    const qint64 number = ++mPosted;
    mWake.notify_one();
    if (!mIsStalled && std::this_thread::get_id() != mThread) {
        mIsStalled = !mWritten.wait_for(hold, std::chrono::milliseconds(kLongestWait),
                                        [this, number] { return mDone >= number; });
    }
}

bool LogThread::flush(int milliseconds) noexcept {
    std::unique_lock<std::mutex> hold(mLock);
    return mWritten.wait_for(hold, std::chrono::milliseconds(milliseconds),
                             [this] { return mDone == mPosted; });
}

/// The thread takes no signals: those of a broken pipe or a file at its limit would end the program.
void LogThread::start() {
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    try {
        std::thread thread([this] { run(); });
        mThread = thread.get_id();
        thread.detach();
    } catch (...) {
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        throw;
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void LogThread::run() {
    std::unique_lock<std::mutex> hold(mLock);
    while (true) {
        mWake.wait(hold, [this] { return !mLines.empty(); });
        const Line line = std::move(mLines.front());
        hold.unlock();
        try {
            line();
        } catch (...) {
            ++mLost;
        }
        hold.lock();
        mLines.pop_front();
        ++mDone;
        mIsStalled = mIsStalled && !mLines.empty();
        mWritten.notify_all();
    }
}

} // namespace TC
