#pragma once

#include "host/services/CMultiRequestDataManager.h"

#include <QHash>
#include <QMap>
#include <QPair>

#include <list>
#include <mutex>
#include <optional>

namespace terminal {

/// Whole history results of one trading day, by (instrument, formula), for views that open on what another one shows.
///
/// Holds the `capacity` series that were stored or read last. A series of a day before the newest one stored is not
/// kept, and the first series of a new day drops those of the day before. The day of a series is told by the delivery
/// that brings it, or else is that of its last point at UTC+8.
///
/// A view asks for an instrument right before it requests it. So that it never gets the series of another day, whoever
/// lets it request announces the day, and the request that follows ends that: an instrument that has been requested
/// since is not answered, be it for another day of the same view. Any thread.
class HistoryCache : public TC::CMultiRequestDataManager {
public:
    /// Of a request or a result that is of no whole day, such as one of a replay.
    static constexpr int kNoDay = 0;

    /// While one lives, what is stored is of this trading day. On the thread of the deliveries, nested as they are. A
    /// null cache is passed over.
    class Delivery {
    public:
        Delivery(HistoryCache *cache, int day);
        ~Delivery();
        Delivery(const Delivery &) = delete;
        Delivery &operator=(const Delivery &) = delete;

    private:
        HistoryCache *mCache;
        std::optional<int> mBefore;
    };

    explicit HistoryCache(int capacity = 256);

    /// What is asked for of an instrument next is of this trading day; kNoDay for one that is not to be answered, as
    /// once it has been requested.
    void expect(const QString &stock, int day);

    bool getFormulaHistoryData(const QString &stock, const QString &formula,
                               std::shared_ptr<se::RPCFormulaMetaResult> &meta,
                               std::shared_ptr<se::RPCFormulaResult> &result) override;
    void addFormulaHistoryData(const QString &stock, const QString &formula,
                               const std::shared_ptr<se::RPCFormulaMetaResult> &meta,
                               const std::shared_ptr<se::RPCFormulaResult> &result) override;
    /// Forgets everything, as at the start of a new trading day.
    void clear();
    int size() const;

private:
    using Key = QPair<QString, QString>;
    struct Entry {
        std::shared_ptr<se::RPCFormulaMetaResult> meta;
        std::shared_ptr<se::RPCFormulaResult> result;
        std::list<Key>::iterator use; ///< place in mUse
    };

    std::optional<int> exchangeDelivered(std::optional<int> day);

    const int mCapacity;
    mutable std::mutex mLock; ///< guards what follows
    int mDay = kNoDay; ///< of all entries
    QMap<Key, Entry> mEntries;
    std::list<Key> mUse; ///< last used first
    QHash<QString, int> mExpected; ///< days by instrument
    std::optional<int> mDelivered; ///< day of the delivery under way
};

} // namespace terminal
