#include "toolkit/services/ResultQueue.h"

#include <utility>

namespace TC {

quint64 ResultQueue::nextRound() {
    const std::lock_guard<std::mutex> hold(mLock);
    return ++mRounds;
}

void ResultQueue::open(const QString &id, quint64 round, CallbacksPtr callbacks) {
    Request former; // released without the lock
    const std::lock_guard<std::mutex> hold(mLock);
    if (!mEnded) {
        former = std::exchange(mRequests[id], Request{round, std::move(callbacks), {}});
    }
}

ResultQueue::CallbacksPtr ResultQueue::close(const QString &id) {
    Request gone; // what waits goes without the lock
    const std::lock_guard<std::mutex> hold(mLock);
    const auto found = mRequests.find(id);
    if (found == mRequests.end()) {
        return nullptr;
    }
    gone = std::move(found->second);
    mRequests.erase(found);
    return gone.callbacks;
}

ResultQueue::Request *ResultQueue::find(const QString &id, quint64 round) {
    const auto found = mRequests.find(id);
    return found != mRequests.end() && found->second.round == round ? &found->second : nullptr;
}

void ResultQueue::pushTurn(Turn turn) {
    mTurns.push_back(std::move(turn));
    if (!std::exchange(mAwake, true)) {
        mWake();
    }
}

void ResultQueue::postHistory(const QString &id, quint64 round, History history) {
    std::deque<Result> made; // void now; goes without the lock
    const std::lock_guard<std::mutex> hold(mLock);
    Request *request = find(id, round);
    if (!request) {
        return;
    }
    made.swap(request->waiting);
    for (const Result &result : made) {
        const History *before = std::get_if<History>(&result);
        history.keepRange = history.keepRange && (!before || before->keepRange);
    }
    request->waiting.push_back(std::move(history));
    if (made.empty()) {
        pushTurn({id, round, nullptr});
    }
}

void ResultQueue::postPoint(const QString &id, quint64 round, Point point) {
    const std::lock_guard<std::mutex> hold(mLock);
    Request *request = find(id, round);
    if (!request) {
        return;
    }
    const bool isFirst = request->waiting.empty();
    Point *last = isFirst ? nullptr : std::get_if<Point>(&request->waiting.back());
    if (last && last->point && point.point && last->point->mTime == point.point->mTime) {
        std::swap(*last, point);
        return;
    }
    request->waiting.push_back(std::move(point));
    if (isFirst) {
        pushTurn({id, round, nullptr});
    }
}

void ResultQueue::postTask(Task task) {
    const std::lock_guard<std::mutex> hold(mLock);
    if (!mEnded) {
        pushTurn({QString(), 0, std::move(task)});
    }
}

/// The next of what waits; false when nothing does.
bool ResultQueue::take(Due &due) {
    const std::lock_guard<std::mutex> hold(mLock);
    while (!mTurns.empty()) {
        Turn turn = std::move(mTurns.front());
        mTurns.pop_front();
        if (turn.task) {
            due.task = std::move(turn.task);
            return true;
        }
        Request *request = find(turn.id, turn.round);
        if (!request || request->waiting.empty()) {
            continue; // withdrawn meanwhile
        }
        due = {nullptr, request->callbacks, turn.id, std::move(request->waiting.front())};
        request->waiting.pop_front();
        if (!request->waiting.empty()) {
            mTurns.push_back(std::move(turn));
        }
        return true;
    }
    mAwake = false;
    return false;
}

bool ResultQueue::deliverOne() {
    Due due;
    if (!take(due)) {
        return false;
    }
    if (due.task) {
        due.task();
        return true;
    }
    if (const auto *history = std::get_if<History>(&*due.result)) {
        if (due.callbacks->onHistory) {
            due.callbacks->onHistory(history->meta, history->result, due.id, history->type, history->formula,
                                     history->keepRange);
        }
    } else if (due.callbacks->onRealtime) {
        const auto &point = std::get<Point>(*due.result);
        due.callbacks->onRealtime(point.number, due.id, point.point);
    }
    return true;
}

int ResultQueue::pending() const {
    const std::lock_guard<std::mutex> hold(mLock);
    std::size_t count = 0;
    for (const auto &[id, request] : mRequests) {
        count += request.waiting.size();
    }
    for (const Turn &turn : mTurns) {
        count += turn.task ? 1 : 0;
    }
    return static_cast<int>(count);
}

void ResultQueue::end() {
    std::map<QString, Request> requests; // both go without the lock
    std::deque<Turn> turns;
    const std::lock_guard<std::mutex> hold(mLock);
    mEnded = true;
    mAwake = true; // nobody is woken any more
    requests.swap(mRequests);
    turns.swap(mTurns);
}

} // namespace TC
