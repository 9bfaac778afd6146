#pragma once

#include <QObject>
#include <QThread>

#include <atomic>
#include <functional>
#include <memory>

namespace terminal {

/// Work on a thread of its own, which tells how far it is and can be stopped. One work at a time.
class BackgroundJob : public QObject {
    Q_OBJECT
public:
    /// Runs on the other thread. It looks at isStopped() now and then.
    using Work = std::function<void(BackgroundJob &job)>;

    explicit BackgroundJob(QObject *parent = nullptr) : QObject(parent) {}
    /// Stops the work and waits for its end.
    ~BackgroundJob() override;

    /// Stops the work before, waits for its end, which is not told, and starts another one. Work for which the system has
    /// no thread ends undone; see isUndone().
    void start(Work work);
    void stop() { mStopped = true; }
    bool isRunning() const { return mThread != nullptr; }
    /// Whether the work that has ended was never begun.
    bool isUndone() const { return mUndone; }

    // Any thread.
    bool isStopped() const { return mStopped; }
    void tell(int done, int total);
    int done() const { return mDone; }
    int total() const { return mTotal; } ///< 0 as long as it is not known

Q_SIGNALS:
    // On the thread of this object.
    void progressed();
    void finished();

private:
    Q_INVOKABLE void passOn();
    /// Waits for the end of the work.
    void end();

    std::atomic<bool> mStopped{false};
    std::atomic<int> mDone{0};
    std::atomic<int> mTotal{0};
    std::atomic<bool> mTold{false}; ///< progress is on its way
    bool mUndone = false;
    int mRun = 0; ///< counts the works that have ended
    std::unique_ptr<QThread> mThread; ///< null when no work is under way
};

} // namespace terminal
