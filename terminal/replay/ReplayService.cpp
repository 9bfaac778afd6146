#include "terminal/replay/ReplayService.h"

#include <QThread>

#include <algorithm>
#include <atomic>
#include <limits>
#include <utility>

namespace terminal {
namespace {

constexpr int kDefaultPace = 1000; ///< milliseconds a minute
constexpr int kWholeSeries = 1; ///< data type of a history result

bool earlier(const MinuteBar &bar, qint64 time) {
    return bar.time <= time;
}

} // namespace

struct ReplayService::Request {
    QString id;
    QString name;
    TC::FormulaHistoryCallback onHistory;
    TC::FormulaRealtimeCallback onRealtime;
    std::unique_ptr<FormulaProgram> program; ///< null for an unknown formula
    MinuteBars bars; ///< the whole day
    size_t played = 0;
    bool started = false;
    std::atomic<bool> withdrawn{false};
};

ReplayService::ReplayService(MarketFeed &feed, FormulaProgramMaker maker, RequestDay requestDay)
    : mFeed(feed), mMaker(std::move(maker)), mRequestDay(std::move(requestDay)) {
    mTimer.setInterval(kDefaultPace);
    connect(&mTimer, &QTimer::timeout, this, &ReplayService::step);
}

ReplayService::~ReplayService() = default;

void ReplayService::requestFormulas(const QString &, QVector<TC::CFormulaParam> &params,
                                    TC::FormulaHistoryCallback onHistory,
                                    TC::FormulaRealtimeCallback onRealtime) {
    for (const TC::CFormulaParam &param : qAsConst(params)) {
        const auto request = std::make_shared<Request>();
        request->id = QString::fromStdString(param.mRequestId);
        request->name = param.mFormulaName;
        request->onHistory = onHistory;
        request->onRealtime = onRealtime;
        request->program = mMaker(param);
        const int day = mRequestDay(param);
        request->bars = mFeed.dayBars(feedKeyOf(param), day);
        if (request->program) {
            takeUnderlying(*request->program, mFeed, day);
        }
        {
            std::lock_guard<std::mutex> hold(mLock);
            mRequests.append(request);
        }
        QMetaObject::invokeMethod(
            this, [this, request] { begin(request); }, Qt::QueuedConnection);
    }
}

void ReplayService::deleteFormulas(QVector<QString> &requestIds) {
    QList<RequestPtr> gone; // the callbacks go with it, outside the lock
    {
        std::lock_guard<std::mutex> hold(mLock);
        for (int i = mRequests.size() - 1; i >= 0; --i) {
            if (requestIds.contains(mRequests[i]->id)) {
                mRequests[i]->withdrawn = true;
                gone.append(mRequests.takeAt(i));
            }
        }
    }
    if (QThread::currentThread() != thread()) {
        // The last owner of a chart's data is this thread.
        QMetaObject::invokeMethod(
            this, [gone] {}, Qt::QueuedConnection);
    }
}

void ReplayService::setThousandRange(qint64 start, qint64 end) {
    const bool whole = end <= start;
    mStart = whole ? 0 : start;
    mEnd = whole ? 0 : end;
    mTime = mStart;
    for (const RequestPtr &request : requests()) {
        request->started = false;
        begin(request);
    }
}

void ReplayService::setPace(int millisecondsPerMinute) {
    mTimer.setInterval(std::max(0, millisecondsPerMinute));
}

void ReplayService::setPaused(bool paused) {
    mPaused = paused;
    updateTimer();
}

qint64 ReplayService::replayTime() const {
    return mTime;
}

int ReplayService::liveRequests() const {
    return requests().size();
}

QList<ReplayService::RequestPtr> ReplayService::requests() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mRequests;
}

void ReplayService::begin(const RequestPtr &request) {
    if (request->withdrawn || request->started) {
        return;
    }
    request->started = true;
    const auto first = std::partition_point(request->bars.begin(), request->bars.end(),
                                            [this](const MinuteBar &bar) { return earlier(bar, mTime); });
    request->played = static_cast<size_t>(first - request->bars.begin());
    const auto meta = std::make_shared<se::RPCFormulaMetaResult>();
    const auto result = std::make_shared<se::RPCFormulaResult>();
    if (request->program) {
        *meta = request->program->describe();
        *result = request->program->evaluate(MinuteBars(request->bars.begin(), first));
    }
    if (request->onHistory) {
        request->onHistory(meta, result, request->id, kWholeSeries, request->name, false);
    }
    updateTimer();
}

void ReplayService::step() {
    const QList<RequestPtr> all = requests();
    qint64 next = std::numeric_limits<qint64>::max();
    for (const RequestPtr &request : all) {
        if (request->started && request->played < request->bars.size()) {
            next = std::min(next, request->bars[request->played].time);
        }
    }
    if (next == std::numeric_limits<qint64>::max() || (mEnd > 0 && next > mEnd)) {
        mTimer.stop();
        emit finished();
        return;
    }
    mTime = next;
    for (const RequestPtr &request : all) {
        play(request, next);
    }
    updateTimer();
}

void ReplayService::play(const RequestPtr &request, qint64 until) {
    while (request->started && !request->withdrawn && request->played < request->bars.size() &&
           earlier(request->bars[request->played], until)) {
        ++request->played;
        if (!request->program || !request->onRealtime) {
            continue;
        }
        const MinuteBars bars(request->bars.begin(),
                              request->bars.begin() + static_cast<std::ptrdiff_t>(request->played));
        request->onRealtime(
            0, request->id,
            std::make_shared<se::RPCFormulaInstantResult>(request->program->evaluateLast(bars)));
    }
}

void ReplayService::updateTimer() {
    const bool wanted = !mPaused && !requests().isEmpty();
    if (wanted && !mTimer.isActive()) {
        mTimer.start();
    } else if (!wanted) {
        mTimer.stop();
    }
}

} // namespace terminal
