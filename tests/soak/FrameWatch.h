#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <pthread.h>
#include <thread>
#include <vector>

namespace tests {

/// Measures how long an event waits for the user-interface thread: a thread of its own posts one a hundredth of a second
/// after the last one was handled. A frame can be no earlier than such an event.
///
/// Of what an event has waited, the time in which the thread was ready to run and the system had no processor for it is
/// told apart: on a machine that others use it is theirs. Waiting for locks and for our own threads' results is not.
/// On a virtual machine the host may have no processor for one of ours, which then stands with all that is on it: that is taken
/// off as well, the longer of the two times only, as the one may hold the other.
class FrameWatch : public QObject {
public:
    struct Late {
        double wait = 0.0; ///< milliseconds in all
        double starved = 0.0; ///< of them without a processor
        double busy = 0.0; ///< of them at work; what is left was spent waiting for locks, files and threads
        double stolen = 0.0; ///< of them with one of the machine's processors taken away by its host, to a tick
        QString doing; ///< what the program was told to do last
        QStringList calls; ///< where the thread was after half of the bound, the innermost first

        double own() const { return wait - std::max(starved, stolen); }
    };

    /// `doing` is asked on the user-interface thread, on which the watch is made, when an event comes later than `bound`
    /// milliseconds.
    FrameWatch(double bound, std::function<QString()> doing);
    ~FrameWatch() override;

    /// What came later than the bound by the clock.
    std::vector<Late> late() const;
    /// What would have come later than the bound with a processor at hand.
    std::vector<Late> lateByOneself() const;
    double longest() const { return mLongest; }
    int events() const { return mEvents; }

protected:
    bool event(QEvent *event) override;

private:
    using Clock = std::chrono::steady_clock;
    /// Milliseconds of the thread.
    struct Share {
        double busy = 0.0; ///< with a processor
        double starved = 0.0; ///< ready to run, without one
    };

    void post();
    void attend(std::unique_lock<std::mutex> &hold);

    static Share shareOf(const QString &schedule);

    const double mBound;
    const std::function<QString()> mDoing;
    const QString mSchedule; ///< file that tells the thread's times
    const pthread_t mWatched;
    double mLongest = 0.0;
    int mEvents = 0;
    mutable std::mutex mLock; ///< guards the following
    mutable std::condition_variable mSignal;
    std::vector<Late> mLate;
    bool mStopping = false;
    bool mUnderWay = false;
    bool mIsLate =
        false; ///< what was handled last came too late, and the watch's thread has not added yet what it knows
    Clock::time_point mPosted;
    Share mBefore;
    std::vector<double> mStolenBefore;
    std::thread mThread;
};

} // namespace tests
