#pragma once

#include <QObject>
#include <QString>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace tests {

/// Measures how long an event waits for the user-interface thread: a thread of its own posts one a hundredth of a second
/// after the last one was handled. A frame can be no earlier than such an event.
///
/// Of what an event has waited, the time in which the thread was ready to run and the system had no processor for it is
/// told apart: on a machine that others use it is theirs. Waiting for locks and for our own threads' results is not.
class FrameWatch : public QObject {
public:
    struct Late {
        double wait = 0.0; ///< milliseconds in all
        double starved = 0.0; ///< of them without a processor
        double busy = 0.0; ///< of them at work; what is left was spent waiting for locks, files and threads
        QString doing; ///< what the program was told to do last

        double own() const { return wait - starved; }
    };

    /// `doing` is asked on the user-interface thread, on which the watch is made, when an event comes later than `bound`
    /// milliseconds.
    FrameWatch(double bound, std::function<QString()> doing);
    ~FrameWatch() override;

    /// What came later than the bound by the clock.
    const std::vector<Late> &late() const { return mLate; }
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
    Share shareSoFar() const;

    const double mBound;
    const std::function<QString()> mDoing;
    const QString mSchedule; ///< file that tells the thread's times
    std::vector<Late> mLate;
    double mLongest = 0.0;
    int mEvents = 0;
    std::mutex mLock; ///< guards the following
    std::condition_variable mSignal;
    bool mStopping = false;
    bool mUnderWay = false;
    Clock::time_point mPosted;
    Share mBefore;
    std::thread mThread;
};

} // namespace tests
