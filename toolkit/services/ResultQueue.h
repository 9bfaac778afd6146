#pragma once

#include "host/services/CFormulaManager.h"

#include <QString>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <variant>

namespace TC {

/// Results of requests that wait for the user-interface thread, and who is to be called with them.
///
/// What waits of one request keeps its order; requests come by turns. Nothing waits that a later result of the request has
/// made void: a whole series stands in the place of all before it, and a point in that of the point of its time right
/// before it. So what waits is bounded by the minutes of the requests that are open, however much comes. Any thread unless
/// told otherwise; nothing is called or released under the lock.
class ResultQueue {
public:
    struct Callbacks {
        FormulaHistoryCallback onHistory;
        FormulaRealtimeCallback onRealtime;
    };
    /// What comes with a whole series, as FormulaHistoryCallback takes it.
    struct History {
        FormulaMetaPtr meta;
        FormulaResultPtr result;
        int type = 0;
        QString formula;
        bool keepRange = false;
    };
    /// What comes with a point, as FormulaRealtimeCallback takes it.
    struct Point {
        int number = 0;
        FormulaInstantPtr point;
    };
    using Task = std::function<void()>;
    using CallbacksPtr = std::shared_ptr<const Callbacks>;

    /// `wake` is called, under the lock, when something waits after nothing did.
    explicit ResultQueue(Task wake) : mWake(std::move(wake)) {}

    /// The number of the next round of requests. What is posted under the number of another round than that in which a
    /// request was opened last is dropped.
    quint64 nextRound();
    void open(const QString &id, quint64 round, CallbacksPtr callbacks);
    /// Nothing that waits of a request is delivered any more. The callbacks, for the caller to release.
    CallbacksPtr close(const QString &id);
    void postHistory(const QString &id, quint64 round, History history);
    void postPoint(const QString &id, quint64 round, Point point);
    /// Something else to be done on the user-interface thread, in its turn.
    void postTask(Task task);
    /// Delivers the oldest of what waits; false when nothing does. User-interface thread.
    bool deliverOne();
    /// How many results and tasks wait.
    int pending() const;
    /// Nothing is taken or delivered from now on; callbacks are released. User-interface thread.
    void end();

private:
    using Result = std::variant<History, Point>;
    struct Request {
        quint64 round = 0;
        CallbacksPtr callbacks;
        std::deque<Result> waiting;
    };
    /// A request that has something waiting has one turn.
    struct Turn {
        QString id;
        quint64 round = 0;
        Task task; ///< set: this, and no request
    };
    /// What a turn came to.
    struct Due {
        Task task;
        CallbacksPtr callbacks;
        QString id;
        std::optional<Result> result;
    };

    Request *find(const QString &id, quint64 round);
    void pushTurn(Turn turn);
    bool take(Due &due);

    Task mWake;
    mutable std::mutex mLock; ///< guards what follows
    bool mAwake = false; ///< deliverOne() is called until it answers false
    bool mEnded = false;
    quint64 mRounds = 0;
    std::map<QString, Request> mRequests; ///< by id
    std::deque<Turn> mTurns;
};

} // namespace TC
