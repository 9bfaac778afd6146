#pragma once

#include "host/services/CFormulaManager.h"
#include "terminal/formula/FormulaError.h"
#include "terminal/market/HistorySource.h"
#include "terminal/threads/DeliveryQueue.h"
#include "terminal/threads/Worker.h"

#include <atomic>
#include <functional>
#include <memory>
#include <utility>

namespace terminal {

/// Fetches the days that the store lacks, on a thread of its own, one download after the other.
///
/// The progress comes on the user-interface thread: a step for every day and one for the end of every instrument. A
/// download that fails or is stopped tells -1 steps, which end it. One is under way until its end has been told.
class HistoryDownloads {
public:
    using Listener = std::function<void(const QString &key, int done, int total)>;

    /// The queue has to outlive it.
    explicit HistoryDownloads(DeliveryQueue &queue) : mQueue(queue) {}

    // To be called before the first download.
    /// Has to outlive this.
    void setSource(HistorySource *source) { mSource = source; }
    /// Who hears why a download failed, on the thread of the downloads.
    void setErrorSink(FormulaErrorSink sink) { mOnError = std::move(sink); }
    /// Who hears of every step of every download; on the user-interface thread.
    void setListener(Listener listener) { mListener = std::move(listener); }

    /// Any thread. The callback is released on the user-interface thread.
    void start(const TC::CHistoryDataParam &param, TC::SuppleProgressCallback onProgress);
    /// Ends those that wait or are under way. Any thread; does not wait.
    void stop() { ++mStops; }
    int underWay() const { return mUnderWay; }
    /// Ends the thread after the step it is at.
    void finish();

private:
    struct Step;
    using Callback = std::shared_ptr<TC::SuppleProgressCallback>;

    QVector<Step> stepsOf(const TC::CHistoryDataParam &param) const;
    void run(const QVector<Step> &steps, int stops, const Callback &callback);
    QString fetch(const Step &step, int stops) const;
    void tell(const Callback &callback, int done, int total, const Step &step);

    DeliveryQueue &mQueue;
    HistorySource *mSource = nullptr;
    FormulaErrorSink mOnError;
    Listener mListener;
    std::atomic<int> mStops{0}; ///< counts the calls of stop()
    std::atomic<int> mUnderWay{0};
    std::atomic<bool> mIsEnding{false};
    Worker mWorker;
};

} // namespace terminal
