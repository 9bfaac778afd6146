#include "terminal/history/HistoryDesk.h"

#include "host/services/CHostClock.h"

#include <algorithm>
#include <utility>

namespace terminal {

HistoryDesk::HistoryDesk(CMarketStore &store, std::unique_ptr<HistoryServer> server)
    : mServer(std::move(server)), mHistory(store, *mServer) {}

HistoryDesk::~HistoryDesk() {
    stop();
}

void HistoryDesk::start() {
    std::lock_guard<std::mutex> hold(mLock);
    mWantsInstruments = true;
    mIsServing = true;
    mWorker.post([this] { serve(); });
}

void HistoryDesk::stop() {
    mIsEnding = true;
    mServer->interrupt();
    mWorker.finish();
}

void HistoryDesk::want(const QString &key, int day) {
    std::lock_guard<std::mutex> hold(mLock);
    if (key.isEmpty() || day == 0 || mIsEnding) {
        return;
    }
    mOrder.removeOne(key); // what is looked at now comes first
    mOrder.append(key);
    mWanted[key] = day;
    if (!mIsServing) {
        mIsServing = true;
        mWorker.post([this] { serve(); });
    }
}

/// Serves what is asked for until nothing is, or the server is in trouble: then again after a wait.
void HistoryDesk::serve() {
    while (!mIsEnding) {
        QString key;
        int day = 0;
        bool wantsInstruments = false;
        {
            std::lock_guard<std::mutex> hold(mLock);
            wantsInstruments = mWantsInstruments;
            key = mOrder.isEmpty() ? QString() : mOrder.last();
            day = mWanted.value(key);
            if (!wantsInstruments && key.isEmpty()) {
                mIsServing = false;
                mSettled.notify_all();
                return;
            }
        }
        const HistoryFailure failure = wantsInstruments ? serveInstruments() : serveKey(key, day);
        note(failure);
        if (!failure.isNone()) {
            mWorker.postAfter(mWait.next(), [this] { serve(); });
            return;
        }
        std::lock_guard<std::mutex> hold(mLock);
        mWantsInstruments = mWantsInstruments && !wantsInstruments;
        if (!wantsInstruments && mWanted.value(key) == day) { // else it was asked for anew meanwhile
            mWanted.remove(key);
            mOrder.removeOne(key);
        }
    }
}

HistoryFailure HistoryDesk::serveInstruments() {
    int taken = 0;
    HistoryFailure failure = mHistory.takeInstruments(taken);
    if (taken > 0) {
        tell({}, false);
    }
    return failure;
}

/// The day that is shown first, then those in front of it from the newest on.
HistoryFailure HistoryDesk::serveKey(const QString &key, int day) {
    const QVector<int> before = mHistory.knownDays(key);
    HistoryFailure failure = mHistory.list(key);
    if (!failure.isNone()) {
        return failure;
    }
    const QVector<int> known = mHistory.knownDays(key);
    const int last = static_cast<int>(std::upper_bound(known.begin(), known.end(), day) - known.begin());
    const int first = known.value(std::max(0, last - 1 - kDaysBefore));
    QVector<int> wanted;
    for (const int lacking : mHistory.lackingDays(key)) {
        if (lacking >= first && lacking <= day) {
            wanted.prepend(lacking);
        }
    }
    bool hasNew = false;
    if (!wanted.isEmpty()) {
        failure = fetch(key, {wanted.takeFirst()}, hasNew);
    }
    for (; failure.isNone() && !wanted.isEmpty() && !mIsEnding; wanted = wanted.mid(kDaysAtOnce)) {
        failure = fetch(key, wanted.mid(0, kDaysAtOnce), hasNew);
    }
    if (hasNew || known != before) {
        tell(key, hasNew);
    }
    return failure;
}

/// Fetches some days; one that holds no bars is told and does not keep the others from coming.
HistoryFailure HistoryDesk::fetch(const QString &key, QVector<int> days, bool &hasNew) {
    int taken = 0;
    HistoryFailure failure = mHistory.fetch(key, days, taken);
    hasNew = hasNew || taken > 0;
    if (failure.trouble == HistoryTrouble::BadDay) {
        if (mTellReason) {
            mTellReason(failure.reason);
        }
        return {};
    }
    return failure;
}

void HistoryDesk::note(const HistoryFailure &failure) {
    if (mIsEnding) {
        return; // what was interrupted is no trouble
    }
    if (failure.isNone()) {
        mWait.reset();
    }
    bool isNews = false;
    {
        std::lock_guard<std::mutex> hold(mLock);
        isNews = failure.trouble != mReport.failure.trouble && !failure.isNone();
        if (failure.trouble != mReport.failure.trouble) {
            mReport.since = failure.isNone() ? 0 : TC::hostNow().toMSecsSinceEpoch();
        }
        mReport.failure = failure;
    }
    mSettled.notify_all();
    if (isNews && mTellReason) {
        mTellReason(failure.reason);
    }
}

void HistoryDesk::tell(const QString &key, bool hasDays) {
    mQueue.post([this, key, hasDays] {
        if (mListener) {
            mListener(key, hasDays);
        }
    });
}

bool HistoryDesk::settle(std::chrono::milliseconds atMost) {
    std::unique_lock<std::mutex> hold(mLock);
    mSettled.wait_for(hold, atMost, [this] { return !mIsServing || !mReport.failure.isNone(); });
    return !mIsServing;
}

HistoryReport HistoryDesk::report() const {
    std::lock_guard<std::mutex> hold(mLock);
    HistoryReport report = mReport;
    report.waiting = mOrder.size();
    report.badDays = mHistory.badDays();
    return report;
}

} // namespace terminal
