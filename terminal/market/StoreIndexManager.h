#pragma once

#include "host/services/CIndexManager.h"
#include "terminal/market/CMarketStore.h"

#include <map>
#include <memory>
#include <mutex>

namespace terminal {

/// User-defined indexes over the market store.
class StoreIndexManager : public TC::CIndexManager {
public:
    explicit StoreIndexManager(CMarketStore &store) : mStore(store) {}

    /// The record stays where it is, and valid, as long as the manager lives.
    TC::CIndexDetail *getIndex(const QString &key) override;
    double storedValue(const std::string &key) override;
    /// 0: the last close of an index is its stored value.
    double dispatchedLastClose(const std::string &key) override;
    double initialValue(const std::string &key) override;

private:
    CMarketStore &mStore;
    std::mutex mLock; ///< guards the records that were handed out
    std::map<QString, std::unique_ptr<TC::CIndexDetail>> mRecords;
};

} // namespace terminal
