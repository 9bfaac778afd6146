#include "terminal/formula/FormulaService.h"

#include "terminal/formula/MinuteSeries.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace terminal {
namespace {

constexpr int kHistoryOnly = 1;
constexpr int kAfterHoursMode = 3; ///< mDataMode of a fixed-price request
constexpr int kWholeSeries = 1; ///< data type of a history result

/// Puts a count of values in front of each line.
template <class Value> void padLines(std::vector<std::vector<Value>> &lines, size_t count, const Value &value) {
    for (std::vector<Value> &line : lines) {
        line.insert(line.begin(), count, value);
    }
}

/// The series of a program over placed bars, with points that are not valid for the positions in front.
se::RPCFormulaResult evaluatePlaced(const FormulaProgram &program, const PlacedBars &placed) {
    se::RPCFormulaResult result = program.evaluate(placed.bars);
    const size_t count = placed.leading.size();
    if (count == 0 || result.mTimes.empty()) {
        return result;
    }
    std::vector<se::TimePosition> times;
    for (const qint64 time : placed.leading) {
        times.emplace_back(time, 0);
    }
    result.mTimes.insert(result.mTimes.begin(), times.begin(), times.end());
    result.mValid.insert(result.mValid.begin(), count, 0);
    result.mPointTags.insert(result.mPointTags.begin(), count, 0);
    padLines(result.mValues, count, TC::kUnsetValue);
    padLines(result.mExtra1, count, se::kDefaultColor);
    padLines(result.mTexts, count, std::string());
    padLines(result.mExtra2, count, 0.0);
    return result;
}

/// Whether a time is the position that follows the last placed bar.
bool isNextPosition(const PlacedBars &placed, const std::vector<qint64> &positions, qint64 time) {
    if (placed.bars.empty()) {
        return false;
    }
    const auto next = std::upper_bound(positions.begin(), positions.end(), placed.bars.back().time);
    return positions.empty() || (next != positions.end() && *next == time);
}

} // namespace

/// One request at work. What stands under `worker` is touched by its worker thread alone.
struct FormulaService::Request {
    TC::CFormulaParam param;
    QString id;
    int day = 0;
    std::atomic<bool> withdrawn{false};

    std::mutex lock; ///< guards the callbacks
    std::shared_ptr<const Callbacks> callbacks;

    // worker
    std::unique_ptr<FormulaProgram> program;
    std::vector<qint64> positions;
    MinuteBars bars; ///< as the feed gave them
    PlacedBars placed; ///< the same on the positions of the day
    int subscription = 0;

    std::shared_ptr<const Callbacks> takeCallbacks() {
        std::lock_guard<std::mutex> hold(lock);
        return std::exchange(callbacks, nullptr);
    }
    std::shared_ptr<const Callbacks> copyCallbacks() {
        std::lock_guard<std::mutex> hold(lock);
        return callbacks;
    }
};

FormulaService::FormulaService(MarketFeed &feed, FormulaProgramMaker maker, RequestDay requestDay,
                               DayPositions positions, int workers)
    : mFeed(feed), mMaker(std::move(maker)), mRequestDay(std::move(requestDay)),
      mPositions(std::move(positions)) {
    for (int i = 0; i < std::max(1, workers); ++i) {
        mWorkers.push_back(std::make_unique<Worker>());
    }
}

FormulaService::~FormulaService() {
    QHash<QString, RequestPtr> requests;
    {
        std::lock_guard<std::mutex> hold(mLock);
        requests.swap(mRequests);
    }
    for (const RequestPtr &request : qAsConst(requests)) {
        stop(request);
    }
    // All subscriptions end on the workers; only then may what the listeners use go.
    for (const std::unique_ptr<Worker> &worker : mWorkers) {
        worker->finish();
    }
}

Worker &FormulaService::workerOf(const QString &requestId) {
    return *mWorkers[qHash(requestId) % mWorkers.size()];
}

void FormulaService::requestFormulas(QVector<TC::CFormulaParam> &params, TC::FormulaHistoryCallback onHistory,
                                     TC::FormulaRealtimeCallback onRealtime) {
    const auto callbacks =
        std::make_shared<const Callbacks>(Callbacks{std::move(onHistory), std::move(onRealtime)});
    for (const TC::CFormulaParam &param : qAsConst(params)) {
        const auto request = std::make_shared<Request>();
        request->param = param;
        request->id = QString::fromStdString(param.mRequestId);
        request->day = mRequestDay(param);
        request->callbacks = callbacks;
        start(request);
    }
}

void FormulaService::start(const RequestPtr &request) {
    RequestPtr before;
    {
        std::lock_guard<std::mutex> hold(mLock);
        before = std::exchange(mRequests[request->id], request);
    }
    if (before) {
        stop(before); // an id that is used again takes over
    }
    workerOf(request->id).post([this, request] { open(request); });
}

void FormulaService::unrequestFormula(const QString &requestId) {
    withdraw({requestId});
}

void FormulaService::unrequestFormulas(const QVector<QString> &requestIds) {
    withdraw(requestIds);
}

void FormulaService::withdraw(const QVector<QString> &requestIds) {
    QVector<RequestPtr> gone;
    {
        std::lock_guard<std::mutex> hold(mLock);
        for (const QString &id : requestIds) {
            if (RequestPtr request = mRequests.take(id)) {
                gone.append(std::move(request));
            }
        }
    }
    for (const RequestPtr &request : qAsConst(gone)) {
        stop(request);
    }
}

void FormulaService::stop(const RequestPtr &request) {
    request->withdrawn = true;
    std::shared_ptr<const Callbacks> callbacks = request->takeCallbacks();
    workerOf(request->id).post([this, request] {
        mFeed.unsubscribe(std::exchange(request->subscription, 0));
        request->program.reset();
        request->bars.clear();
    });
    if (QThread::currentThreadId() != mUiThread) {
        // The last owner of a chart's data must not be a thread that cannot destroy it.
        mQueue.post([callbacks = std::move(callbacks)] {});
    }
}

MinuteBars FormulaService::barsOf(const TC::CFormulaParam &param, int day) {
    const QString key = param.mMarket + param.mCode;
    return param.mDataMode == kAfterHoursMode ? mFeed.afterHoursBars(key, day) : mFeed.dayBars(key, day);
}

std::vector<qint64> FormulaService::positionsOf(const TC::CFormulaParam &param, int day) {
    const bool known = mPositions && param.mDataMode != kAfterHoursMode;
    return known ? mPositions(param.mMarket + param.mCode, day) : std::vector<qint64>();
}

void FormulaService::open(const RequestPtr &request) {
    if (request->withdrawn) {
        return;
    }
    const TC::CFormulaParam &param = request->param;
    request->program = mMaker(param);
    request->positions = positionsOf(param, request->day);
    if (!request->program || param.mDataDemand == kHistoryOnly || param.mDataMode == kAfterHoursMode) {
        request->bars = barsOf(param, request->day);
    } else {
        // The listener comes on the feed's thread; what it brings queues up behind this history.
        const std::weak_ptr<Request> weak = request;
        MarketFeed::Subscription subscription = mFeed.subscribe(
            param.mMarket + param.mCode, request->day, [this, weak](const MinuteUpdate &change) {
                if (const RequestPtr alive = weak.lock()) {
                    workerOf(alive->id).post([this, alive, bar = change.bar] { update(alive, bar); });
                }
            });
        request->subscription = subscription.id;
        request->bars = std::move(subscription.bars);
    }
    sendHistory(request, false);
}

void FormulaService::update(const RequestPtr &request, const MinuteBar &bar) {
    if (request->withdrawn || !request->program) {
        return;
    }
    const BarChange change = takeBar(request->bars, bar);
    if (change == BarChange::None) {
        return;
    }
    PlacedBars &placed = request->placed;
    if (change == BarChange::Last && !placed.bars.empty() && placed.bars.back().time == bar.time) {
        placed.bars.back() = bar;
    } else if (change == BarChange::Last && isNextPosition(placed, request->positions, bar.time)) {
        placed.bars.push_back(bar);
    } else {
        // An earlier minute, the first one, or minutes without a trade in between: more than one point changes.
        sendHistory(request, true);
        return;
    }
    const auto point =
        std::make_shared<se::RPCFormulaInstantResult>(request->program->evaluateLast(placed.bars));
    deliver(request, [id = request->id, point](const Callbacks &callbacks) {
        if (callbacks.onRealtime) {
            callbacks.onRealtime(0, id, point);
        }
    });
}

void FormulaService::sendHistory(const RequestPtr &request, bool keepRange) {
    const auto meta = std::make_shared<se::RPCFormulaMetaResult>();
    const auto result = std::make_shared<se::RPCFormulaResult>();
    if (request->program) {
        request->placed = placeBars(request->bars, request->positions);
        *meta = request->program->describe();
        *result = evaluatePlaced(*request->program, request->placed);
    }
    deliver(request, [id = request->id, name = request->param.mFormulaName, meta, result,
                      keepRange](const Callbacks &callbacks) {
        if (callbacks.onHistory) {
            callbacks.onHistory(meta, result, id, kWholeSeries, name, keepRange);
        }
    });
}

void FormulaService::deliver(const RequestPtr &request, std::function<void(const Callbacks &)> call) {
    mQueue.post([request, call = std::move(call)] {
        const std::shared_ptr<const Callbacks> callbacks = request->copyCallbacks();
        if (callbacks && !request->withdrawn) {
            call(*callbacks);
        }
    });
}

void FormulaService::requestFormulasSync(QVector<TC::CFormulaParam> &params,
                                         std::vector<TC::FormulaMetaPtr> &metas,
                                         std::vector<TC::FormulaResultPtr> &results) {
    metas.clear();
    results.clear();
    for (const TC::CFormulaParam &param : qAsConst(params)) {
        const auto meta = std::make_shared<se::RPCFormulaMetaResult>();
        const auto result = std::make_shared<se::RPCFormulaResult>();
        if (const std::unique_ptr<FormulaProgram> program = mMaker(param)) {
            *meta = program->describe();
            const int day = mRequestDay(param);
            *result = evaluatePlaced(*program, placeBars(barsOf(param, day), positionsOf(param, day)));
        }
        metas.push_back(meta);
        results.push_back(result);
    }
}

int FormulaService::liveRequests() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mRequests.size();
}

} // namespace terminal
