#include "tests/soak/FrameWatch.h"

#include "tests/soak/StolenTime.h"
#include "tests/soak/ThreadCalls.h"

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
constexpr auto kUntilTold = std::chrono::milliseconds(20); ///< what was stolen is counted at the next ticks
constexpr double kNanosecondsOfMillisecond = 1e6;
const auto kWatchEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

double millisecondsOf(std::chrono::steady_clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

} // namespace

FrameWatch::FrameWatch(double bound, std::function<QString()> doing)
    : mBound(bound), mDoing(std::move(doing)),
      mSchedule(QStringLiteral("/proc/self/task/%1/schedstat").arg(syscall(SYS_gettid))),
      mWatched(pthread_self()) {
    watchCalls();
    mThread = std::thread([this] { post(); });
}

FrameWatch::~FrameWatch() {
    {
        std::lock_guard<std::mutex> hold(mLock);
        mStopping = true;
    }
    mSignal.notify_all();
    mThread.join();
}

/// What a thread has had of the processor so far; nothing where the system does not tell.
FrameWatch::Share FrameWatch::shareOf(const QString &schedule) {
    QFile file(schedule);
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
        if (!mStopping) {
            mUnderWay = true;
            mBefore = shareOf(mSchedule);
            mStolenBefore = stolenTimes();
            auto *const event = new QEvent(kWatchEvent); // which may wait for memory that another thread has
            mPosted = Clock::now();
            QCoreApplication::postEvent(this, event);
            attend(hold);
        }
    }
}

/// Until the event is handled; if it is late, looks once where the thread is, and afterwards what was stolen.
void FrameWatch::attend(std::unique_lock<std::mutex> &hold) {
    const auto isOver = [this] { return mStopping || !mUnderWay; };
    const std::chrono::duration<double, std::milli> half(mBound / 2.0);
    QStringList calls;
    if (!mSignal.wait_for(hold, half, isOver)) {
        calls = callsOf(mWatched);
        mSignal.wait(hold, isOver);
    }
    if (mIsLate) {
        mSignal.wait_for(hold, kUntilTold, [this] { return mStopping; });
        mLate.back().stolen = std::min(mostStolen(mStolenBefore, stolenTimes()), mLate.back().wait);
        mLate.back().calls = calls;
        mIsLate = false;
        mSignal.notify_all();
    }
}

bool FrameWatch::event(QEvent *event) {
    if (event->type() != kWatchEvent) {
        return QObject::event(event);
    }
    const Clock::time_point now = Clock::now();
    const Share share = shareOf(mSchedule);
    {
        std::lock_guard<std::mutex> hold(mLock);
        const double wait = millisecondsOf(now - mPosted);
        mLongest = std::max(mLongest, wait);
        mIsLate = wait > mBound;
        if (mIsLate) {
            mLate.push_back({wait, std::min(share.starved - mBefore.starved, wait),
                             std::min(share.busy - mBefore.busy, wait), 0.0, mDoing(), QStringList()});
        }
        mUnderWay = false;
    }
    mSignal.notify_all();
    ++mEvents;
    return true;
}

std::vector<FrameWatch::Late> FrameWatch::late() const {
    std::unique_lock<std::mutex> hold(mLock);
    mSignal.wait(hold, [this] { return !mIsLate; });
    return mLate;
}

std::vector<FrameWatch::Late> FrameWatch::lateByOneself() const {
    std::vector<Late> own = late();
    own.erase(std::remove_if(own.begin(), own.end(), [this](const Late &late) { return late.own() <= mBound; }),
              own.end());
    return own;
}

} // namespace tests
