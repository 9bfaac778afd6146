#include "terminal/market/StoreIndexManager.h"

namespace terminal {

TC::CIndexDetail *StoreIndexManager::getIndex(const QString &key) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const auto index = catalogue->indexes.constFind(key);
    if (index == catalogue->indexes.constEnd()) {
        return nullptr;
    }
    std::lock_guard<std::mutex> hold(mLock);
    std::unique_ptr<TC::CIndexDetail> &record = mRecords[key];
    if (!record) {
        record = std::make_unique<TC::CIndexDetail>(index->detail);
    }
    return record.get();
}

double StoreIndexManager::storedValue(const std::string &key) {
    return mStore.catalogue()->indexes.value(QString::fromStdString(key)).lastValue;
}

double StoreIndexManager::dispatchedLastClose(const std::string &) {
    return 0.0;
}

double StoreIndexManager::initialValue(const std::string &key) {
    return mStore.catalogue()->indexes.value(QString::fromStdString(key)).detail.mBaseValue;
}

} // namespace terminal
