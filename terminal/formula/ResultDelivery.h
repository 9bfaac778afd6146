#pragma once

#include "host/services/CFormulaManager.h"
#include "terminal/formula/HiddenVariables.h"
#include "terminal/formula/HistoryCache.h"
#include "terminal/formula/SeriesComputer.h"
#include "terminal/threads/DeliveryQueue.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace terminal {

/// Who is called with the results of requests.
struct ResultCallbacks {
    TC::FormulaHistoryCallback onHistory;
    TC::FormulaRealtimeCallback onRealtime;
};

/// The results of one request on their way to the user-interface thread.
///
/// They come in the order of posting. After withdraw() on the user-interface thread nothing is called any more; from
/// another thread a call under way is finished. The callbacks are released on the user-interface thread without any
/// lock held. Any thread.
class ResultDelivery : public std::enable_shared_from_this<ResultDelivery> {
public:
    /// What is delivered.
    struct Subject {
        QString requestId;
        QString formula;
        HistoryCache *cache = nullptr; ///< hears of the day of whole series; may be null
        int day = HistoryCache::kNoDay;
    };

    /// The queue and the cache have to outlive what is posted to it.
    ResultDelivery(DeliveryQueue &queue, Subject subject, std::shared_ptr<const ResultCallbacks> callbacks);

    /// A whole series in place of what was shown; `keepRange` when its value range goes on.
    void postSeries(FormulaSeries series, bool keepRange);
    /// The last point, changed or new. It takes the place of the one posted before it while that one of the same time
    /// still waits: however long the user-interface thread stands still, a request has no more points than minutes
    /// waiting.
    void postPoint(se::RPCFormulaInstantResult point);
    /// What was posted last, once more; nothing when there was nothing.
    void repeat();
    /// Whether nothing has come since this was asked before. False the first time.
    bool wasQuiet() { return mIsQuiet.exchange(true); }
    /// Nothing is posted any more: the callbacks are released when all that was posted has come.
    void finish();
    void withdraw();
    bool isWithdrawn() const { return mIsWithdrawn; }
    /// The hidden lines of what has been delivered, at a point counted from 0; see HiddenVariables.
    QString hiddenAt(int index) const;
    /// What its hidden lines take, once all that was posted has come; nothing before.
    std::optional<size_t> hiddenBytes() const;

private:
    /// Calls with one result; `isAgain` when it was delivered before.
    using Call = std::function<void(const ResultCallbacks &, bool isAgain)>;
    using PointPtr = std::shared_ptr<se::RPCFormulaInstantResult>;
    void post(Call call);
    /// The point as one to be posted; null when it took the place of one that waits.
    PointPtr newWaiting(se::RPCFormulaInstantResult made);
    /// From here on the point is not written any more.
    void settle(const PointPtr &point);
    void deliver(const Call &call, bool isAgain);
    std::shared_ptr<const ResultCallbacks> callbacks() const;
    template <class... Result> void takeHidden(const Result &...result);

    DeliveryQueue &mQueue;
    const Subject mSubject;
    std::atomic<bool> mIsWithdrawn{false};
    std::atomic<bool> mIsQuiet{false};
    mutable std::mutex mLock; ///< guards what follows
    std::shared_ptr<const ResultCallbacks> mCallbacks; ///< null once withdrawn or finished
    PointPtr mWaiting; ///< posted last, to be delivered yet; null when there is none or a series came behind it
    Call mLast; ///< delivered last; empty once withdrawn or finished
    HiddenVariables mHidden;
};

} // namespace terminal
