#include "terminal/formula/RequestBook.h"

#include <utility>

namespace terminal {

RequestBook::RequestPtr RequestBook::enter(const QString &id, RequestPtr request) {
    QVector<RequestPtr> dropped; // released without the lock
    std::lock_guard<std::mutex> hold(mLock);
    mOrder.append(id);
    if (mOrder.size() > 2 * kMost) {
        dropped = dropFinished();
    }
    return std::exchange(mRequests[id], std::move(request));
}

/// The oldest of the finished requests go until there are kMost of all.
QVector<RequestBook::RequestPtr> RequestBook::dropFinished() {
    QVector<RequestPtr> dropped;
    QList<QString> kept;
    for (const QString &id : std::as_const(mOrder)) {
        const auto found = mRequests.find(id);
        if (found == mRequests.end()) {
            continue;
        }
        if (mRequests.size() > kMost && (*found)->isFinished()) {
            dropped.append(*found);
            mRequests.erase(found);
        } else {
            kept.append(id);
        }
    }
    mOrder = std::move(kept);
    return dropped;
}

QVector<RequestBook::RequestPtr> RequestBook::take(const QVector<QString> &ids) {
    QVector<RequestPtr> taken;
    std::lock_guard<std::mutex> hold(mLock);
    for (const QString &id : ids) {
        if (RequestPtr request = mRequests.take(id)) {
            taken.append(std::move(request));
        }
    }
    return taken;
}

QVector<RequestBook::RequestPtr> RequestBook::takeAll() {
    std::lock_guard<std::mutex> hold(mLock);
    return std::exchange(mRequests, {}).values().toVector();
}

RequestBook::RequestPtr RequestBook::find(const QString &id) const {
    std::lock_guard<std::mutex> hold(mLock);
    return mRequests.value(id);
}

int RequestBook::size() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mRequests.size();
}

} // namespace terminal
