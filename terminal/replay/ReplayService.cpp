#include "terminal/replay/ReplayService.h"

#include <QThread>

#include <algorithm>
#include <limits>
#include <utility>

namespace terminal {
namespace {

constexpr int kDefaultPace = 1000; ///< milliseconds a minute

} // namespace

ReplayService::ReplayService(const RequestTools &tools, RequestDay requestDay, HistoryCache *cache)
    : mTools(tools), mRequestDay(std::move(requestDay)), mCache(cache) {
    mTimer.setInterval(kDefaultPace);
    connect(&mTimer, &QTimer::timeout, this, &ReplayService::step);
}

ReplayService::~ReplayService() {
    for (const PlayedPtr &played : requests()) {
        played->model.reset(); // ends its run
    }
    mModels.finish();
}

void ReplayService::requestFormulas(const QString &, QVector<TC::CFormulaParam> &params,
                                    TC::FormulaHistoryCallback onHistory,
                                    TC::FormulaRealtimeCallback onRealtime) {
    for (const TC::CFormulaParam &param : qAsConst(params)) {
        if (mCache) {
            mCache->expect(feedKeyOf(param), HistoryCache::kNoDay);
        }
        const auto played = std::make_shared<Played>();
        played->request =
            std::make_shared<ReplayRequest>(mTools, param, mRequestDay(param), onHistory, onRealtime, mCache);
        {
            std::lock_guard<std::mutex> hold(mLock);
            mRequests.append(played);
        }
        QMetaObject::invokeMethod(
            this, [this, played] { begin(played); }, Qt::QueuedConnection);
    }
}

void ReplayService::deleteFormulas(QVector<QString> &requestIds) {
    QList<PlayedPtr> gone; // the callbacks go with it, outside the lock
    {
        std::lock_guard<std::mutex> hold(mLock);
        for (int i = mRequests.size() - 1; i >= 0; --i) {
            if (requestIds.contains(mRequests[i]->request->id())) {
                mRequests[i]->request->withdraw();
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

void ReplayService::withdrawAll() {
    QVector<QString> ids;
    for (const PlayedPtr &played : requests()) {
        ids.append(played->request->id());
    }
    deleteFormulas(ids);
}

void ReplayService::setThousandRange(qint64 start, qint64 end) {
    const bool whole = end <= start;
    mStart = whole ? 0 : start;
    mEnd = whole ? 0 : end;
    mTime = mStart;
    for (const PlayedPtr &played : requests()) {
        played->request->reset();
        begin(played);
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

QList<ReplayService::PlayedPtr> ReplayService::requests() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mRequests;
}

void ReplayService::begin(const PlayedPtr &played) {
    ReplayRequest &request = *played->request;
    if (request.isWithdrawn() || request.isBegun()) {
        return;
    }
    request.begin(mTime);
    if (request.isModel()) {
        played->model = std::make_shared<ReplayModel>(played->request, mModels, mQueue, mTools.models.pause());
        played->model->played(mTime);
    }
    updateTimer();
}

void ReplayService::step() {
    constexpr qint64 kNever = std::numeric_limits<qint64>::max();
    const QList<PlayedPtr> all = requests();
    qint64 next = kNever;
    for (const PlayedPtr &played : all) {
        next = std::min(next, played->request->nextTime().value_or(kNever));
    }
    if (next == kNever || (mEnd > 0 && next > mEnd)) {
        mTimer.stop();
        Q_EMIT finished();
        return;
    }
    mTime = next;
    for (const PlayedPtr &played : all) {
        played->request->play(next);
        if (played->model) {
            played->model->played(next);
        }
    }
    updateTimer();
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
