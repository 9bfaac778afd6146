#include "terminal/formula/RequestBook.h"

#include <QSet>

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace terminal {

RequestBook::RequestPtr RequestBook::enter(const QString &id, RequestPtr request) {
    std::lock_guard<std::mutex> hold(mLock);
    mOrder.append(id);
    ++mUnlooked;
    return std::exchange(mRequests[id], std::move(request));
}

QVector<RequestBook::RequestPtr> RequestBook::look() {
    QVector<RequestPtr> dropped; // released without the lock
    QVector<RequestPtr> quiet;
    std::lock_guard<std::mutex> hold(mLock);
    if (mUnlooked < kLook) {
        return quiet;
    }
    mUnlooked = 0;
    dropped = dropFinished();
    std::copy_if(mRequests.cbegin(), mRequests.cend(), std::back_inserter(quiet),
                 [](const RequestPtr &request) { return request->wasQuiet(); });
    return quiet;
}

/// Of the finished requests go those that keep nothing, and the oldest of the others beyond the room.
QVector<RequestBook::RequestPtr> RequestBook::dropFinished() {
    QVector<RequestPtr> dropped;
    QSet<QString> kept;
    QList<QString> newestFirst;
    size_t bytes = 0;
    for (auto id = mOrder.crbegin(); id != mOrder.crend(); ++id) {
        const auto found = mRequests.find(*id);
        if (found == mRequests.end() || kept.contains(*id)) {
            continue;
        }
        const std::optional<size_t> keeps = (*found)->keptBytes();
        bytes += keeps.value_or(0);
        const bool isRoom = newestFirst.size() < kMost && bytes <= kMostBytes;
        if (keeps && (*keeps == 0 || !isRoom)) {
            dropped.append(*found);
            mRequests.erase(found);
        } else {
            kept.insert(*id);
            newestFirst.append(*id);
        }
    }
    mOrder = QList<QString>(newestFirst.crbegin(), newestFirst.crend());
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
