#include "terminal/formula/FormulaService.h"

#include "terminal/formula/FormulaServiceRequest.h"
#include "terminal/formula/RequestDays.h"

#include <algorithm>
#include <utility>

namespace terminal {
namespace {

constexpr int kHistoryOnly = 1;
constexpr int kWholeSeries = 1; ///< data type of a history result
constexpr int kAfterHoursLook = 1000; ///< milliseconds between looks at the after-hours minutes
constexpr int kModelsAtOnce = 2;

/// Puts a count of values in front of each line.
template <class Value> void padLines(std::vector<std::vector<Value>> &lines, size_t count, const Value &value) {
    for (std::vector<Value> &line : lines) {
        line.insert(line.begin(), count, value);
    }
}

/// The series of a program over placed bars, with points that are not valid for the positions in front.
se::RPCFormulaResult evaluatePlaced(const FormulaProgram &program, const PlacedBars &placed) {
    se::RPCFormulaResult result = program.evaluate(placed.bars);
    padSeries(result, placed.leading);
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

void padSeries(se::RPCFormulaResult &series, const std::vector<qint64> &times) {
    const size_t count = times.size();
    if (count == 0 || series.mTimes.empty()) {
        return;
    }
    std::vector<se::TimePosition> leading;
    for (const qint64 time : times) {
        leading.emplace_back(time, 0);
    }
    series.mTimes.insert(series.mTimes.begin(), leading.begin(), leading.end());
    series.mValid.insert(series.mValid.begin(), count, 0);
    series.mPointTags.insert(series.mPointTags.begin(), count, 0);
    padLines(series.mValues, count, TC::kUnsetValue);
    padLines(series.mExtra1, count, se::kDefaultColor);
    padLines(series.mTexts, count, std::string());
    padLines(series.mExtra2, count, 0.0);
}

FormulaService::FormulaService(MarketFeed &feed, FormulaProgramMaker maker, RequestDay requestDay,
                               DayPositions positions, int workers)
    : mFeed(feed), mMaker(std::move(maker)), mRequestDay(std::move(requestDay)),
      mPositions(std::move(positions)) {
    for (int i = 0; i < std::max(1, workers); ++i) {
        mWorkers.push_back(std::make_unique<Worker>());
    }
    for (int i = 0; i < kModelsAtOnce; ++i) {
        mModelWorkers.push_back(std::make_unique<Worker>());
    }
}

FormulaService::~FormulaService() {
    QHash<QString, RequestPtr> requests;
    {
        std::lock_guard<std::mutex> hold(mLock);
        requests.swap(mRequests);
    }
    mEnding = true;
    for (const RequestPtr &request : qAsConst(requests)) {
        stop(request);
    }
    // All subscriptions end on the workers; only then may what the listeners use go.
    for (const auto *workers : {&mWorkers, &mModelWorkers}) {
        for (const std::unique_ptr<Worker> &worker : *workers) {
            worker->finish();
        }
    }
    mDownloads.finish();
}

/// Where a request is worked on: where fewest wait, since a model may take long, and a faulty formula too. Equal ones
/// take turns.
Worker &FormulaService::workerOf(const Request &request) {
    const std::vector<std::unique_ptr<Worker>> &workers = request.isModel() ? mModelWorkers : mWorkers;
    const size_t first = mNextWorker++;
    Worker *idlest = workers[first % workers.size()].get();
    for (size_t i = 1; i < workers.size(); ++i) {
        Worker *other = workers[(first + i) % workers.size()].get();
        idlest = other->load() < idlest->load() ? other : idlest;
    }
    return *idlest;
}

void FormulaService::requestFormulas(QVector<TC::CFormulaParam> &params, TC::FormulaHistoryCallback onHistory,
                                     TC::FormulaRealtimeCallback onRealtime) {
    const auto callbacks =
        std::make_shared<const Callbacks>(Callbacks{std::move(onHistory), std::move(onRealtime)});
    for (const TC::CFormulaParam &param : qAsConst(params)) {
        const auto request = std::make_shared<Request>();
        request->param = param;
        request->id = QString::fromStdString(param.mRequestId);
        request->key = feedKeyOf(param);
        request->day = mRequestDay(param);
        request->home = &workerOf(*request);
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
    request->home->post([this, request] { open(request); });
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
    request->withdraw();
    std::shared_ptr<const Callbacks> callbacks = request->takeCallbacks();
    request->home->post([this, request] {
        mFeed.unsubscribe(std::exchange(request->subscription, 0));
        mFeed.unsubscribe(std::exchange(request->underlyingSubscription, 0));
        request->program.reset();
        request->bars.clear();
    });
    if (QThread::currentThreadId() != mUiThread) {
        // The last owner of a chart's data must not be a thread that cannot destroy it.
        mQueue.post([callbacks = std::move(callbacks)] {});
    }
}

MinuteBars FormulaService::barsOf(const TC::CFormulaParam &param, int day) {
    const QString key = feedKeyOf(param);
    return isAfterHours(param) ? mFeed.afterHoursBars(key, day) : mFeed.dayBars(key, day);
}

std::vector<qint64> FormulaService::positionsOf(const TC::CFormulaParam &param, int day) {
    const bool known = mPositions && !isAfterHours(param);
    return known ? mPositions(feedKeyOf(param), day) : std::vector<qint64>();
}

void FormulaService::open(const RequestPtr &request) {
    if (request->withdrawn) {
        return;
    }
    const TC::CFormulaParam &param = request->param;
    request->program = request->isModel() ? nullptr : mMaker(param);
    request->positions = positionsOf(param, request->day);
    const bool works = request->program || request->isModel();
    const bool isStream = works && param.mDataDemand != kHistoryOnly;
    if (isStream && !isAfterHours(param)) {
        subscribe(request);
    } else {
        request->bars = barsOf(param, request->day);
    }
    subscribeUnderlying(request, isStream);
    if (request->isModel()) {
        runModel(request, false);
    } else {
        sendHistory(request, false);
    }
    if (isStream && isAfterHours(param)) {
        request->home->postAfter(kAfterHoursLook, [this, request] { lookAfterHours(request); });
    }
}

void FormulaService::subscribe(const RequestPtr &request) {
    // The listener comes on the feed's thread; what it brings queues up behind the history.
    const std::weak_ptr<Request> weak = request;
    MarketFeed::Subscription subscription =
        mFeed.subscribe(request->key, request->day, [this, weak](const MinuteUpdate &change) {
            if (const RequestPtr alive = weak.lock()) {
                alive->home->post([this, alive, bar = change.bar] { update(alive, bar); });
            }
        });
    request->subscription = subscription.id;
    request->bars = std::move(subscription.bars);
}

/// The bars of the underlying instrument, for a program that reads them, and in a stream their changes.
void FormulaService::subscribeUnderlying(const RequestPtr &request, bool isStream) {
    const QString key = request->program ? request->program->underlying() : QString();
    if (key.isEmpty()) {
        return;
    }
    if (!isStream) {
        takeUnderlying(*request->program, mFeed, request->day);
        return;
    }
    const std::weak_ptr<Request> weak = request;
    MarketFeed::Subscription subscription =
        mFeed.subscribe(key, request->day, [this, weak](const MinuteUpdate &change) {
            if (const RequestPtr alive = weak.lock()) {
                alive->home->post([this, alive, bar = change.bar] { updateUnderlying(alive, bar); });
            }
        });
    request->underlyingSubscription = subscription.id;
    request->underlying = std::move(subscription.bars);
    request->program->setUnderlying(request->underlying);
}

/// The feed has no stream of the minutes after hours: there are few of them, and it is asked once a second.
void FormulaService::lookAfterHours(const RequestPtr &request) {
    if (request->withdrawn) {
        return;
    }
    for (const MinuteBar &bar : barsOf(request->param, request->day)) {
        update(request, bar);
    }
    request->home->postAfter(kAfterHoursLook, [this, request] { lookAfterHours(request); });
}

void FormulaService::update(const RequestPtr &request, const MinuteBar &bar) {
    using Due = Request::Due;
    if (request->withdrawn || !(request->program || request->isModel())) {
        return;
    }
    const size_t before = request->bars.size();
    const BarChange change = takeBar(request->bars, bar);
    if (change == BarChange::None) {
        return;
    }
    if (request->isModel()) {
        noteModelChange(request, change == BarChange::Earlier || request->bars.size() > before);
        return;
    }
    PlacedBars &placed = request->placed;
    const bool isLast = change == BarChange::Last && request->due != Due::Whole && !placed.bars.empty();
    if (isLast && placed.bars.back().time == bar.time) {
        placed.bars.back() = bar;
        request->due = Due::Point;
    } else if (isLast && request->due == Due::Nothing && isNextPosition(placed, request->positions, bar.time)) {
        placed.bars.push_back(bar);
        request->due = Due::Point;
    } else {
        // An earlier minute, the first one, or minutes without a trade in between: more than one point changes.
        request->due = Due::Whole;
    }
    sendWhenDue(request);
}

/// A change of the underlying concerns the minutes from its own on.
void FormulaService::updateUnderlying(const RequestPtr &request, const MinuteBar &bar) {
    using Due = Request::Due;
    if (request->withdrawn || !request->program || takeBar(request->underlying, bar) == BarChange::None) {
        return;
    }
    request->program->setUnderlying(request->underlying);
    const MinuteBars &shown = request->placed.bars;
    if (shown.empty() || shown.back().time < bar.time) {
        return; // the minute that is concerned is still to come
    }
    const bool isLastAlone = shown.size() == 1 || shown[shown.size() - 2].time < bar.time;
    if (!isLastAlone) {
        request->due = Due::Whole;
    } else if (request->due == Due::Nothing) {
        request->due = Due::Point;
    }
    sendWhenDue(request);
}

/// Sends what has changed, at once or when the refresh interval is over.
void FormulaService::sendWhenDue(const RequestPtr &request) {
    using Due = Request::Due;
    const int wait = request->wait(request->param.mInterval);
    if (request->withdrawn || request->due == Due::Nothing || request->scheduled) {
        return;
    }
    if (wait > 0) {
        request->scheduled = true;
        request->home->postAfter(wait, [this, request] {
            request->scheduled = false;
            sendWhenDue(request);
        });
    } else if (std::exchange(request->due, Due::Nothing) == Due::Whole) {
        sendHistory(request, true);
    } else {
        sendPoint(request);
    }
}

void FormulaService::sendPoint(const RequestPtr &request) {
    const auto point =
        std::make_shared<se::RPCFormulaInstantResult>(request->program->evaluateLast(request->placed.bars));
    request->sent.start();
    deliver(request, [request, point](const Callbacks &callbacks) {
        {
            std::lock_guard<std::mutex> hold(request->lock);
            request->hidden.take(*point);
        }
        if (callbacks.onRealtime) {
            callbacks.onRealtime(0, request->id, point);
        }
    });
}

void FormulaService::sendHistory(const RequestPtr &request, bool keepRange) {
    se::RPCFormulaMetaResult meta;
    se::RPCFormulaResult result;
    if (request->program) {
        request->placed = placeBars(request->bars, request->positions);
        meta = request->program->describe();
        result = evaluatePlaced(*request->program, request->placed);
    }
    sendSeries(request, std::move(meta), std::move(result), keepRange);
}

void FormulaService::sendSeries(const RequestPtr &request, se::RPCFormulaMetaResult described,
                                se::RPCFormulaResult points, bool keepRange) {
    const auto meta = std::make_shared<se::RPCFormulaMetaResult>(std::move(described));
    const auto result = std::make_shared<se::RPCFormulaResult>(std::move(points));
    request->sent.start();
    deliver(request, [request, meta, result, keepRange](const Callbacks &callbacks) {
        {
            std::lock_guard<std::mutex> hold(request->lock);
            request->hidden.take(*meta, *result);
        }
        if (callbacks.onHistory) {
            callbacks.onHistory(meta, result, request->id, kWholeSeries, request->param.mFormulaName,
                                keepRange);
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
        const int day = mRequestDay(param);
        if (param.mLanguage == static_cast<qint32>(TC::EFormulaLanguage::Python)) {
            const PlacedBars placed = placeBars(barsOf(param, day), positionsOf(param, day));
            ScriptModelProcess process;
            ScriptModelOutcome outcome = runOnce(process, param, day, placed, {});
            *meta = std::move(outcome.meta);
            *result = std::move(outcome.result);
        } else if (const std::unique_ptr<FormulaProgram> program = mMaker(param)) {
            *meta = program->describe();
            takeUnderlying(*program, mFeed, day);
            *result = evaluatePlaced(*program, placeBars(barsOf(param, day), positionsOf(param, day)));
        }
        metas.push_back(meta);
        results.push_back(result);
    }
}

QString FormulaService::lookHideVar(const QString &requestId, int index) {
    const RequestPtr request = find(requestId);
    if (!request) {
        return {};
    }
    std::lock_guard<std::mutex> hold(request->lock);
    return request->hidden.textAt(index);
}

FormulaService::RequestPtr FormulaService::find(const QString &requestId) const {
    std::lock_guard<std::mutex> hold(mLock);
    return mRequests.value(requestId);
}

int FormulaService::liveRequests() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mRequests.size();
}

} // namespace terminal
