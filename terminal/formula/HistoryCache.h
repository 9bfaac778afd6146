#pragma once

#include "host/services/CMultiRequestDataManager.h"

#include <QMap>
#include <QPair>

#include <list>
#include <mutex>

namespace terminal {

/// Whole history results of the running day, by (instrument, formula), for views that open on what another one shows.
///
/// Holds the `capacity` series that were stored or read last. A series of a day before the newest one stored is not
/// kept, and the first series of a new day drops those of the day before. The day of a series is that of its last
/// point at UTC+8, which for a night session is the calendar day it runs into.
class HistoryCache : public TC::CMultiRequestDataManager {
public:
    explicit HistoryCache(int capacity = 256);

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

    const int mCapacity;
    mutable std::mutex mLock; ///< guards what follows
    QMap<Key, Entry> mEntries;
    std::list<Key> mUse; ///< last used first
};

} // namespace terminal
