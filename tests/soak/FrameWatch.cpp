#include "tests/soak/FrameWatch.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>

#include <algorithm>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace tests {
namespace {

constexpr auto kBetween = std::chrono::milliseconds(10);
constexpr double kNanosecondsOfMillisecond = 1e6;
const auto kWatchEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

} // namespace

FrameWatch::FrameWatch(double bound, std::function<QString()> doing)
    : mBound(bound), mDoing(std::move(doing)),
      mSchedule(QStringLiteral("/proc/self/task/%1/schedstat").arg(syscall(SYS_gettid))),
      mThread([this] { post(); }) {}

FrameWatch::~FrameWatch() {
    {
        std::lock_guard<std::mutex> hold(mLock);
        mStopping = true;
    }
    mSignal.notify_all();
    mThread.join();
}

/// Milliseconds for which the user-interface thread has waited for a processor so far; 0 where the system does not tell.
double FrameWatch::starvedSoFar() const {
    QFile file(mSchedule);
    return file.open(QIODevice::ReadOnly)
               ? file.readAll().split(' ').value(1).toDouble() / kNanosecondsOfMillisecond
               : 0.0;
}

void FrameWatch::post() {
    std::unique_lock<std::mutex> hold(mLock);
    while (!mStopping) {
        mSignal.wait_for(hold, kBetween, [this] { return mStopping; });
        mSignal.wait(hold, [this] { return mStopping || !mUnderWay; });
        if (!mStopping) {
            mUnderWay = true;
            mStarvedBefore = starvedSoFar();
            mPosted = Clock::now();
            QCoreApplication::postEvent(this, new QEvent(kWatchEvent));
        }
    }
}

bool FrameWatch::event(QEvent *event) {
    if (event->type() != kWatchEvent) {
        return QObject::event(event);
    }
    const Clock::time_point now = Clock::now();
    double wait = 0.0;
    double starved = 0.0;
    {
        std::lock_guard<std::mutex> hold(mLock);
        wait = std::chrono::duration<double, std::milli>(now - mPosted).count();
        starved = starvedSoFar() - mStarvedBefore;
        mUnderWay = false;
    }
    mSignal.notify_all();
    ++mEvents;
    mLongest = std::max(mLongest, wait);
    if (wait > mBound) {
        mLate.push_back({wait, std::min(starved, wait), mDoing()});
    }
    return true;
}

std::vector<FrameWatch::Late> FrameWatch::lateByOneself() const {
    std::vector<Late> own;
    std::copy_if(mLate.begin(), mLate.end(), std::back_inserter(own),
                 [this](const Late &late) { return late.own() > mBound; });
    return own;
}

} // namespace tests
