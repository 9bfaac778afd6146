#include "terminal/files/FileClient.h"

#include "terminal/files/FileLines.h"
#include "terminal/threads/BehindWindow.h"
#include "terminal/threads/ThreadStart.h"

#include <system_error>
#include <utility>

namespace terminal {

FileClient::~FileClient() {
    stop();
}

void FileClient::stop() {
    {
        std::lock_guard<std::mutex> hold(mLock);
        mStopping = true;
        mReads.clear();
    }
    mSignal.notify_all();
    if (mThread.joinable()) {
        mThread.join();
    }
}

void FileClient::readFileByLine(int &seq, TC::EFileType type, const QString &path, LineHandler lineHandler) {
    std::lock_guard<std::mutex> hold(mLock);
    seq = ++mLastSeq;
    if (mStopping) {
        return;
    }
    if (!mThread.joinable() && !start()) {
        mEnds.post([this, seq] { Q_EMIT sigReadFinished(seq, false, noThreadText()); });
        return;
    }
    mReads.push_back({seq, type, path, std::move(lineHandler)});
    mSignal.notify_all();
}

/// False when the system has no thread left.
bool FileClient::start() {
    try {
        mThread = std::thread([this] { run(); });
        return true;
    } catch (const std::system_error &) {
        return false;
    }
}

void FileClient::run() {
    leaveProcessor();
    for (;;) {
        std::unique_lock<std::mutex> hold(mLock);
        mSignal.wait(hold, [this] { return mStopping || !mReads.empty(); });
        if (mStopping) {
            return;
        }
        const Read next = std::move(mReads.front());
        mReads.pop_front();
        hold.unlock();
        read(next);
    }
}

bool FileClient::isStopping() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mStopping;
}

void FileClient::read(const Read &read) {
    mLine = 0;
    const QString trouble = readFileLines(read.path, read.type, [&](const QString &line) {
        ++mLine;
        read.handler(line);
        return !isStopping();
    });
    if (isStopping()) {
        return;
    }
    mEnds.post([this, seq = read.seq, trouble] { Q_EMIT sigReadFinished(seq, trouble.isEmpty(), trouble); });
}

} // namespace terminal
