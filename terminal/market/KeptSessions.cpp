#include "terminal/market/KeptSessions.h"

namespace terminal {

DaySessions KeptSessions::of(qint64 instrument, int day, const std::function<DaySessions()> &read) {
    const std::pair<qint64, int> key(instrument, day);
    quint64 version = 0;
    {
        std::lock_guard<std::mutex> hold(mLock);
        const auto found = mKept.find(key);
        if (found != mKept.end()) {
            return found->second;
        }
        version = mVersion;
    }
    DaySessions sessions = read();
    std::lock_guard<std::mutex> hold(mLock);
    if (version == mVersion) {
        if (mKept.size() >= kMost) {
            mKept.clear();
        }
        mKept[key] = sessions;
    }
    return sessions;
}

void KeptSessions::forget() {
    std::lock_guard<std::mutex> hold(mLock);
    mKept.clear();
    ++mVersion;
}

} // namespace terminal
