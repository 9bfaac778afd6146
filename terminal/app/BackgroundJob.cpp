#include "terminal/app/BackgroundJob.h"

#include "terminal/threads/BehindWindow.h"
#include "terminal/threads/ThreadStart.h"

#include <utility>

namespace terminal {

BackgroundJob::~BackgroundJob() {
    stop();
    end();
}

void BackgroundJob::end() {
    if (mThread) {
        ++mRun; // its end may be on its way
        mThread->wait();
        mThread.reset();
    }
}

void BackgroundJob::start(Work work) {
    stop();
    end();
    mStopped = false;
    mDone = 0;
    mTotal = 0;
    mThread.reset(QThread::create([this, work = std::move(work)] {
        leaveProcessor();
        work(*this);
    }));
    // The thread object lives here: whoever hears of its end is on this thread.
    const auto onFinished = [this, run = mRun] {
        if (run == mRun) {
            end();
            Q_EMIT finished();
        }
    };
    connect(mThread.get(), &QThread::finished, this, onFinished, Qt::QueuedConnection);
    mUndone = !startThread(*mThread);
    if (mUndone) {
        QMetaObject::invokeMethod(this, onFinished, Qt::QueuedConnection);
    }
}

void BackgroundJob::tell(int done, int total) {
    mDone = done;
    mTotal = total;
    if (!mTold.exchange(true)) {
        QMetaObject::invokeMethod(this, "passOn", Qt::QueuedConnection);
    }
}

void BackgroundJob::passOn() {
    mTold = false;
    Q_EMIT progressed();
}

} // namespace terminal
