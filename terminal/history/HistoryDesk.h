#pragma once

#include "terminal/history/HistoryReport.h"
#include "terminal/history/ServerHistory.h"
#include "terminal/servers/RetryWait.h"
#include "terminal/threads/DeliveryQueue.h"
#include "terminal/threads/Worker.h"

#include <QStringList>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>

namespace terminal {

/// Brings from a server of history what charts show, on a thread of its own: nobody waits for it. What cannot be had now is
/// tried again, with growing waits, until it is there.
class HistoryDesk {
public:
    /// Days in front of the one shown that come with it.
    static constexpr int kDaysBefore = 20;
    /// Days of one instrument that are asked for at once.
    static constexpr int kDaysAtOnce = 7;

    /// Hears on the user-interface thread that days of an instrument have come into the store, or that the list of its days is
    /// another; with an empty key, that there are more instruments.
    using Listener = std::function<void(const QString &key, bool hasDays)>;
    /// Hears of every reason that is a new one, on the thread of this.
    using ReasonSink = std::function<void(const QString &reason)>;

    HistoryDesk(CMarketStore &store, std::unique_ptr<HistoryServer> server);
    ~HistoryDesk();
    HistoryDesk(const HistoryDesk &) = delete;
    HistoryDesk &operator=(const HistoryDesk &) = delete;

    // On the user-interface thread.
    void setListener(Listener listener) { mListener = std::move(listener); }
    void setReasonSink(ReasonSink sink) { mTellReason = std::move(sink); } ///< before start()
    /// Asks for the instruments.
    void start();
    /// Asks for a day of an instrument and those in front of it; returns at once.
    void want(const QString &key, int day);
    /// Ends the thread and what is under way.
    void stop();

    // Any thread.
    /// Waits until nothing is asked for any more or the server is in trouble, at most so long; whether nothing is missing.
    bool settle(std::chrono::milliseconds atMost);
    HistoryReport report() const;
    /// Where days come from when they are asked for one by one.
    ServerHistory &source() { return mHistory; }

private:
    void serve();
    HistoryFailure serveInstruments();
    HistoryFailure serveKey(const QString &key, int day);
    HistoryFailure fetch(const QString &key, QVector<int> days, bool &hasNew);
    void note(const HistoryFailure &failure);
    void tell(const QString &key, bool hasDays);

    std::unique_ptr<HistoryServer> mServer;
    ServerHistory mHistory;
    DeliveryQueue mQueue;
    Listener mListener;
    ReasonSink mTellReason;
    RetryWait mWait; ///< of the worker
    std::atomic<bool> mIsEnding{false};
    mutable std::mutex mLock; ///< guards what follows
    std::condition_variable mSettled;
    bool mWantsInstruments = false;
    bool mIsServing = false; ///< a job of the worker is due or under way
    QStringList mOrder; ///< of what is asked for, the newest last
    QHash<QString, int> mWanted; ///< the last day, by key
    HistoryReport mReport;
    Worker mWorker; ///< last: its jobs use all else
};

} // namespace terminal
