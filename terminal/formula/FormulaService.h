#pragma once

#include "host/services/CFormulaManager.h"
#include "terminal/formula/FormulaError.h"
#include "terminal/formula/FormulaProgram.h"
#include "terminal/formula/ScriptModel.h"
#include "terminal/market/HistorySource.h"
#include "terminal/market/MarketFeed.h"
#include "terminal/threads/DeliveryQueue.h"
#include "terminal/threads/Worker.h"

#include <QHash>
#include <QThread>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace terminal {

/// The trading day that a request names by its range; 0 when it names none.
using RequestDay = std::function<int(const TC::CFormulaParam &)>;
/// The times of all positions of an instrument's trading day, ascending; empty when they are not known.
using DayPositions = std::function<std::vector<qint64>(const QString &key, int day)>;

/// Computes formulas over the market feed on worker threads, and hands results over on the user-interface thread.
///
/// A request gets its history first: one whole series, as a replacement of what was shown before. With data demand 3
/// the stream of the running day follows: a changed last minute and a new one as single points, and the whole series
/// once more when an earlier minute was revised or came late. The results of one request come in order. A formula
/// that is not known, and a day without bars, give an empty series. A series has a point for every position of the day
/// up to its last one, since a chart draws them by position: a minute without a trade repeats the price, and positions
/// before the first bar have points that are not valid. A change is sent at once, or with a refresh interval when that
/// much real time lies between it and the result before; what has changed meanwhile goes out together, as one point
/// where it is the last minute alone. The minutes after hours are streamed too.
///
/// Script models run as child processes, two at a time, and give whole series: once, and in a stream again when a
/// minute has been added or an earlier one has changed. Their errors go to the sink, and an error leaves the series as
/// it was.
///
/// Requests are made and withdrawn on any thread. What was withdrawn on the user-interface thread is not called back
/// any more; from another thread a call under way is finished. Callbacks are released on the user-interface thread
/// without any lock held. The service ends on the user-interface thread.
class FormulaService : public TC::CFormulaManager {
public:
    FormulaService(MarketFeed &feed, FormulaProgramMaker maker, RequestDay requestDay,
                   DayPositions positions = {}, int workers = 1);
    ~FormulaService() override;

    /// How script models are run, and who hears of their errors, on a thread of the service. To be called before the
    /// first request.
    void setScriptModels(const ScriptModelSettings &settings, FormulaErrorSink onError);

    /// Where downloads come from; none without it. To be called before the first download; has to outlive the service.
    void setHistorySource(HistorySource *source);
    /// Who hears of every step of every download, with the numbers of suppleDataFromServer(); on the user-interface
    /// thread.
    using DownloadListener = std::function<void(const QString &key, int done, int total)>;
    void setDownloadListener(DownloadListener listener);
    /// Stops the downloads that wait or are under way. Any thread; does not wait.
    void stopDownloads();
    /// Downloads whose end has not been told yet.
    int downloadsUnderWay() const { return mDownloadsUnderWay; }

    void requestFormulas(QVector<TC::CFormulaParam> &params, TC::FormulaHistoryCallback onHistory,
                         TC::FormulaRealtimeCallback onRealtime) override;
    void requestFormulasSync(QVector<TC::CFormulaParam> &params, std::vector<TC::FormulaMetaPtr> &metas,
                             std::vector<TC::FormulaResultPtr> &results) override;
    void unrequestFormula(const QString &requestId) override;
    void unrequestFormulas(const QVector<QString> &requestIds) override;

    /// The day bars of the instruments in the range, one record a trading day, the newest `mCount` of them.
    void fetchCacheData(se::RPCFetchCacheDataParam &param,
                        std::vector<std::shared_ptr<quoter::QuoterBase>> &records) override;
    /// The minutes of the range; they come through the callback, on the user-interface thread.
    void requestHistoryQuote(const quoter::TSMetaInfo &meta, const quoter::TRegionInfo &region,
                             TC::HistoryQuoteCallback onQuotes) override;
    /// The lines of a request's series that are not shown, as "name:value", at a point counted from 0. Empty when
    /// there are none, and for an unknown id.
    QString lookHideVar(const QString &requestId, int index) override;
    /// Fetches the days that the store lacks, on a thread of its own, one after the other. The progress comes on the
    /// user-interface thread: a step for every day and one for the end of every instrument, -1 steps when it fails or
    /// is stopped, which ends it and is told to the sink of errors. A caller that asks anew at each step before the
    /// last sees all days.
    void suppleDataFromServer(const QString &name, TC::CHistoryDataParam &param,
                              TC::SuppleProgressCallback onProgress) override;
    /// The fields "done", "total", "text" and "state" ("waiting", "running", "finished" or "failed") of a script
    /// model's last run; false for any other id.
    bool groupRunProgress(const std::string &requestId, bson::BSONObj &progress) override;

    /// Requests that live.
    int liveRequests() const;
    /// Results that wait for the user-interface thread.
    int pendingResults() const { return mQueue.pending(); }

private:
    struct Callbacks {
        TC::FormulaHistoryCallback onHistory;
        TC::FormulaRealtimeCallback onRealtime;
    };
    struct Request;
    using RequestPtr = std::shared_ptr<Request>;

    Worker &workerOf(const Request &request);
    RequestPtr find(const QString &requestId) const;
    void start(const RequestPtr &request);
    void stop(const RequestPtr &request);
    void withdraw(const QVector<QString> &requestIds);
    // On the request's worker.
    void open(const RequestPtr &request);
    void subscribe(const RequestPtr &request);
    void subscribeUnderlying(const RequestPtr &request, bool isStream);
    void lookAfterHours(const RequestPtr &request);
    void update(const RequestPtr &request, const MinuteBar &bar);
    void updateUnderlying(const RequestPtr &request, const MinuteBar &bar);
    void sendWhenDue(const RequestPtr &request);
    void sendPoint(const RequestPtr &request);
    void sendHistory(const RequestPtr &request, bool keepRange);
    void sendSeries(const RequestPtr &request, se::RPCFormulaMetaResult described, se::RPCFormulaResult points,
                    bool keepRange);
    void noteModelChange(const RequestPtr &request, bool isNewMinute);
    void runModel(const RequestPtr &request, bool again);

    /// Any thread.
    ScriptModelOutcome runOnce(ScriptModelProcess &process, const TC::CFormulaParam &param, int day,
                               const PlacedBars &placed,
                               const std::function<void(const ScriptModelProgress &)> &onProgress);
    void deliver(const RequestPtr &request, std::function<void(const Callbacks &)> call);
    MinuteBars barsOf(const TC::CFormulaParam &param, int day);
    std::vector<qint64> positionsOf(const TC::CFormulaParam &param, int day);

    MarketFeed &mFeed;
    const FormulaProgramMaker mMaker;
    const RequestDay mRequestDay;
    const DayPositions mPositions;
    ScriptModelSettings mModels;
    FormulaErrorSink mOnError;
    HistorySource *mHistory = nullptr;
    std::atomic<int> mDownloadsStopped{0}; ///< counts the stops
    std::atomic<int> mDownloadsUnderWay{0};
    DownloadListener mOnDownload;
    const Qt::HANDLE mUiThread = QThread::currentThreadId();
    DeliveryQueue mQueue;
    mutable std::mutex mLock; ///< guards what follows
    QHash<QString, RequestPtr> mRequests;
    std::atomic<bool> mEnding{false};
    // Fixed after construction. A worker goes only when no thread posts to it any more.
    std::vector<std::unique_ptr<Worker>> mWorkers;
    std::vector<std::unique_ptr<Worker>> mModelWorkers;
    std::atomic<size_t> mNextWorker{0};
    Worker mDownloads;
};

} // namespace terminal
