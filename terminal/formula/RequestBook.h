#pragma once

#include "terminal/formula/FormulaRequest.h"

#include <QHash>
#include <QList>

#include <memory>
#include <mutex>

namespace terminal {

/// The requests that live, by their ids: one of an id, the one that came last. Those that are finished are kept for their
/// hidden lines, the oldest of them no longer than there is room, and not at all when they have none.
///
/// A pane that asks once more does not withdraw what it asked for before: it does that when a result comes under the id
/// that it no longer knows. For a stream of a quiet market none comes, and it would hold its pane for good; look() finds
/// these. Any thread.
class RequestBook {
public:
    using RequestPtr = std::shared_ptr<FormulaRequest>;

    static constexpr int kMost = 256; ///< requests that stay
    static constexpr size_t kMostBytes = 2'000'000; ///< that finished requests keep
    static constexpr int kLook = 64; ///< requests that come between two looks at what is to go

    /// Enters a request; answers the one whose id it takes over, or null.
    RequestPtr enter(const QString &id, RequestPtr request);
    /// Once in so many requests: lets go of finished ones, and answers the streams that have brought nothing since it did
    /// so before, which are to say again what they said last. Between, nothing.
    QVector<RequestPtr> look();
    /// Takes those of these ids out; unknown ids are passed over.
    QVector<RequestPtr> take(const QVector<QString> &ids);
    QVector<RequestPtr> takeAll();
    /// The request of an id, or null.
    RequestPtr find(const QString &id) const;
    int size() const;

private:
    QVector<RequestPtr> dropFinished();

    mutable std::mutex mLock; ///< guards what follows
    QHash<QString, RequestPtr> mRequests;
    QList<QString>
        mOrder; ///< ids in the order of coming, the last coming of each counts; some requests are gone
    int mUnlooked = 0; ///< requests that came since the last look
};

} // namespace terminal
