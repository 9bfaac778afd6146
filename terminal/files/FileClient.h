#pragma once

#include "host/services/CFileClient.h"
#include "terminal/threads/DeliveryQueue.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace terminal {

/// Reads files one after another on a thread of its own. The ends of reads are told on the user-interface thread, in
/// order.
class FileClient : public TC::CFileClient {
    Q_OBJECT
public:
    FileClient() = default;
    ~FileClient() override;

    void readFileByLine(int &seq, TC::EFileType type, const QString &path, LineHandler lineHandler) override;
    /// Ends a read that is under way, and forgets those that wait, without telling. Does not read afterwards.
    void stop();
    /// Number of the line that is handed over, or was last, from 1 on.
    int line() const { return mLine; }
    /// Whether stop() was called.
    bool isStopping() const;

private:
    struct Read {
        int seq = 0;
        TC::EFileType type = TC::EFileType::CommaSeparated;
        QString path;
        LineHandler handler;
    };

    bool start();
    void run();
    void read(const Read &read);

    DeliveryQueue mEnds; ///< of reads, to be told
    std::atomic<int> mLine{0};
    mutable std::mutex mLock; ///< guards what follows
    std::condition_variable mSignal;
    std::deque<Read> mReads;
    int mLastSeq = 0;
    bool mStopping = false;
    std::thread mThread; ///< from the first read on
};

} // namespace terminal
