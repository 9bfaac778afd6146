#pragma once

#include <QString>
#include <QStringList>

#include <mutex>

namespace fakehost {

/// What the doubles were asked, in order, over all services: one text a call, "Class::operation arguments".
/// Any thread.
class CallLog {
public:
    void add(const QString &call) {
        std::lock_guard<std::mutex> hold(mLock);
        if (mRecording) {
            mCalls.append(call);
        }
    }
    QStringList all() const {
        std::lock_guard<std::mutex> hold(mLock);
        return mCalls;
    }
    /// Those that begin with a text.
    QStringList of(const QString &beginning) const {
        QStringList found;
        for (const QString &call : all()) {
            if (call.startsWith(beginning)) {
                found.append(call);
            }
        }
        return found;
    }
    void clear() {
        std::lock_guard<std::mutex> hold(mLock);
        mCalls.clear();
    }

    /// Whether calls are kept; they are unless told.
    void setRecording(bool recording) {
        std::lock_guard<std::mutex> hold(mLock);
        mRecording = recording;
    }

private:
    bool mRecording = true;
    mutable std::mutex mLock;
    QStringList mCalls;
};

} // namespace fakehost
