#pragma once

#include "host/services/CFormulaManager.h"
#include "terminal/formula/FormulaRequest.h"
#include "terminal/formula/HistoryCache.h"
#include "terminal/formula/HistoryDownloads.h"
#include "terminal/formula/HistoryQuotes.h"
#include "terminal/formula/RequestBook.h"
#include "terminal/formula/RequestDays.h"
#include "terminal/threads/WorkLanes.h"

namespace terminal {

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
/// Formulas run on lanes (WorkLanes): prices have a worker of their own, and so have formulas whose runs are long, which
/// hold up each other alone. At most one run of a request waits, and computes the newest state. Who hears of errors is
/// told of long runs that go on, as is the pane (FormulaRequest).
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

    /// The lane of a request whose formula has not run yet: that of prices for their lines, that of quick work for a
    /// formula that can be trusted; the first lane without it. To be called before the first request.
    using LaneChoice = std::function<WorkLane(const TC::CFormulaParam &)>;
    void setLanes(LaneChoice lanes) { mLaneChoice = std::move(lanes); }
    /// What of a run counts as long. To be called before the first request.
    void setShare(const RunShareLimits &share) { mTools.share = share; }

    /// How script models are run, and who hears of errors, on a thread of the service. To be called before the
    /// first request.
    void setScriptModels(const ScriptModelSettings &settings, FormulaErrorSink onError);

    /// What hears of requests and of the days of their results; none without it. To be called before the first request; has to
    /// outlive the service.
    void setHistoryCache(HistoryCache *cache) { mCache = cache; }

    /// Where transactions come from, on a thread of the service; none without it. To be called before the first request.
    void setTransactions(TransactionSource transactions) { mQuotes.setTransactions(std::move(transactions)); }

    /// Where downloads come from; none without it. To be called before the first download; has to outlive the service.
    void setHistorySource(HistorySource *source) { mDownloads.setSource(source); }
    /// Who hears of every step of every download, with the numbers of suppleDataFromServer(); on the user-interface
    /// thread.
    using DownloadListener = HistoryDownloads::Listener;
    void setDownloadListener(DownloadListener listener) { mDownloads.setListener(std::move(listener)); }
    /// Stops the downloads that wait or are under way. Any thread; does not wait.
    void stopDownloads() { mDownloads.stop(); }
    /// Downloads whose end has not been told yet.
    int downloadsUnderWay() const { return mDownloads.underWay(); }

    void requestFormulas(QVector<TC::CFormulaParam> &params, TC::FormulaHistoryCallback onHistory,
                         TC::FormulaRealtimeCallback onRealtime) override;
    void requestFormulasSync(QVector<TC::CFormulaParam> &params, std::vector<TC::FormulaMetaPtr> &metas,
                             std::vector<TC::FormulaResultPtr> &results) override;
    void unrequestFormula(const QString &requestId) override;
    void unrequestFormulas(const QVector<QString> &requestIds) override;

    /// The day bars of the instruments in the range, one record a trading day, the newest `mCount` of them.
    void fetchCacheData(se::RPCFetchCacheDataParam &param,
                        std::vector<std::shared_ptr<quoter::QuoterBase>> &records) override;
    /// The transactions of the range for the data kind 1806, the minutes for any other; they come through the callback,
    /// on the user-interface thread.
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

    /// What its requests work with; for another service over the same market, which has to go first.
    const RequestTools &tools() const { return mTools; }
    /// Requests that live.
    int liveRequests() const { return mRequests.size(); }
    /// Results that wait for the user-interface thread.
    int pendingResults() const { return mQueue.pending(); }

private:
    WorkLane wantedLane(const TC::CFormulaParam &param) const;

    DeliveryQueue mQueue;
    const RequestDay mRequestDay;
    RequestTools mTools;
    HistoryQuotes mQuotes;
    LaneChoice mLaneChoice;
    HistoryCache *mCache = nullptr;
    RequestBook mRequests;
    // The workers go only when no thread posts to them any more.
    WorkLanes mLanes;
    HistoryDownloads mDownloads;
};

} // namespace terminal
