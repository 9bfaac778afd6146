#pragma once

#include "terminal/formula/FormulaRequest.h"

#include <QHash>

#include <memory>
#include <mutex>

namespace terminal {

/// The requests that live, by their ids: one of an id, the one that came last. Any thread.
class RequestBook {
public:
    using RequestPtr = std::shared_ptr<FormulaRequest>;

    /// Enters a request; answers the one whose id it takes over, or null.
    RequestPtr enter(const QString &id, RequestPtr request);
    /// Takes those of these ids out; unknown ids are passed over.
    QVector<RequestPtr> take(const QVector<QString> &ids);
    QVector<RequestPtr> takeAll();
    /// The request of an id, or null.
    RequestPtr find(const QString &id) const;
    int size() const;

private:
    mutable std::mutex mLock; ///< guards what follows
    QHash<QString, RequestPtr> mRequests;
};

} // namespace terminal
