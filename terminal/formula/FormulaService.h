#pragma once

#include "host/services/CFormulaManager.h"
#include "terminal/formula/DeliveryQueue.h"
#include "terminal/formula/FormulaProgram.h"
#include "terminal/formula/Worker.h"
#include "terminal/market/MarketFeed.h"

#include <QHash>
#include <QThread>

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
/// before the first bar have points that are not valid. Every change is sent at once, which is at least
/// as fresh as any refresh interval asks for.
///
/// Requests are made and withdrawn on any thread. What was withdrawn on the user-interface thread is not called back
/// any more; from another thread a call under way is finished. Callbacks are released on the user-interface thread
/// without any lock held. The service ends on the user-interface thread.
class FormulaService : public TC::CFormulaManager {
public:
    FormulaService(MarketFeed &feed, FormulaProgramMaker maker, RequestDay requestDay,
                   DayPositions positions = {}, int workers = 1);
    ~FormulaService() override;

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
    /// Native formulas have no hidden variables: empty.
    QString lookHideVar(const QString &requestId, int index) override;
    /// All data are in the store already: one call an instrument, that it is done.
    void suppleDataFromServer(const QString &name, TC::CHistoryDataParam &param,
                              TC::SuppleProgressCallback onProgress) override;
    /// There are no group models here: false.
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

    Worker &workerOf(const QString &requestId);
    void start(const RequestPtr &request);
    void stop(const RequestPtr &request);
    void withdraw(const QVector<QString> &requestIds);
    /// On the worker: the first history, and the subscription.
    void open(const RequestPtr &request);
    /// On the worker: one change of the running day.
    void update(const RequestPtr &request, const MinuteBar &bar);
    void sendHistory(const RequestPtr &request, bool keepRange);
    void deliver(const RequestPtr &request, std::function<void(const Callbacks &)> call);
    MinuteBars barsOf(const TC::CFormulaParam &param, int day);
    std::vector<qint64> positionsOf(const TC::CFormulaParam &param, int day);

    MarketFeed &mFeed;
    const FormulaProgramMaker mMaker;
    const RequestDay mRequestDay;
    const DayPositions mPositions;
    const Qt::HANDLE mUiThread = QThread::currentThreadId();
    DeliveryQueue mQueue;
    mutable std::mutex mLock; ///< guards what follows
    QHash<QString, RequestPtr> mRequests;
    std::vector<std::unique_ptr<Worker>> mWorkers; ///< fixed after construction
};

} // namespace terminal
