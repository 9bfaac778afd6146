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

/// What the user-interface thread has had of the processor so far; nothing where the system does not tell.
FrameWatch::Share FrameWatch::shareSoFar() const {
    QFile file(mSchedule);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QList<QByteArray> fields = file.readAll().split(' ');
    return {fields.value(0).toDouble() / kNanosecondsOfMillisecond,
            fields.value(1).toDouble() / kNanosecondsOfMillisecond};
}

void FrameWatch::post() {
    std::unique_lock<std::mutex> hold(mLock);
    while (!mStopping) {
        mSignal.wait_for(hold, kBetween, [this] { return mStopping; });
        mSignal.wait(hold, [this] { return mStopping || !mUnderWay; });
        if (!mStopping) {
            mUnderWay = true;
            mBefore = shareSoFar();
            auto *const event = new QEvent(kWatchEvent); // which may wait for memory that another thread has
            mPosted = Clock::now();
            QCoreApplication::postEvent(this, event);
        }
    }
}

bool FrameWatch::event(QEvent *event) {
    if (event->type() != kWatchEvent) {
        return QObject::event(event);
    }
    const Clock::time_point now = Clock::now();
    double wait = 0.0;
    Share share;
    {
        std::lock_guard<std::mutex> hold(mLock);
        wait = std::chrono::duration<double, std::milli>(now - mPosted).count();
        share = shareSoFar();
        share.busy -= mBefore.busy;
        share.starved -= mBefore.starved;
        mUnderWay = false;
    }
    mSignal.notify_all();
    ++mEvents;
    mLongest = std::max(mLongest, wait);
    if (wait > mBound) {
        mLate.push_back({wait, std::min(share.starved, wait), std::min(share.busy, wait), mDoing()});
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
