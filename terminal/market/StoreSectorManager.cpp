#include "terminal/market/StoreSectorManager.h"

namespace terminal {

QString StoreSectorManager::getBkzsCodeByName(const QString &name) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    for (const Sector &sector : catalogue->sectors) {
        if (sector.name == name && !sector.indexKey.isEmpty()) {
            return sector.indexKey;
        }
    }
    return {};
}

QString StoreSectorManager::getSWSectorByStock(const QString &key, int level) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    for (const Sector &sector : catalogue->sectors) {
        if (sector.level == level && sector.members.contains(key)) {
            return sector.name;
        }
    }
    return {};
}

QSet<QString> StoreSectorManager::getConvertibleCodeByStock(const QString &key) {
    return mStore.catalogue()->convertibles.value(key);
}

QString StoreSectorManager::getAStockByHStock(const QString &key) {
    return mStore.catalogue()->aShareOf.value(key);
}

QString StoreSectorManager::getHStockByAStock(const QString &key) {
    return mStore.catalogue()->hShareOf.value(key);
}

} // namespace terminal
