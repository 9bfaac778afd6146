#pragma once

#include <QtGlobal>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace TC {

/// Writes the lines of a log on a thread of its own, so that nothing a log does - an error, a signal, a file that takes
/// nothing - reaches who logs.
///
/// Any thread. The thread starts with the first line and is never waited for at the end of the program: an object of
/// this class is never destroyed.
class LogThread {
public:
    using Line = std::function<void()>;

    static constexpr int kMostWaiting = 1000; ///< lines; further ones are lost
    static constexpr int kLongestWait =
        2; ///< milliseconds that a log which is not done holds one caller up, once

    /// Calls `line`, which writes one line and may throw, on the thread. Returns when it is written, or at once while the
    /// log stalls. Never throws.
    void write(Line line) noexcept;
    /// Waits until all is written; false when that takes longer than this.
    bool flush(int milliseconds) noexcept;
    /// A line was lost before it came here.
    void countLost() noexcept { ++mLost; }
    /// Lines that could not be written so far.
    qint64 lost() const noexcept { return mLost; }

private:
    void post(Line line);
    void start();
    void run();

    std::atomic<qint64> mLost{0};
    std::mutex mLock; ///< guards what follows
    std::condition_variable mWake;
    std::condition_variable mWritten;
    std::deque<Line> mLines; ///< the first one is being written
    qint64 mPosted = 0;
    qint64 mDone = 0;
    bool mIsStalled = false; ///< somebody has waited too long since it was last idle
    std::thread::id mThread;
};

} // namespace TC
