#include "terminal/formula/RequestBook.h"

#include <utility>

namespace terminal {

RequestBook::RequestPtr RequestBook::enter(const QString &id, RequestPtr request) {
    std::lock_guard<std::mutex> hold(mLock);
    return std::exchange(mRequests[id], std::move(request));
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
