#pragma once

#include "host/Export.h"
#include "host/services/CSingletonT.h"

#include <QSet>
#include <QString>

namespace TC {

/// Sectors, their indexes, and instruments that belong together.
class TIMESHARE_EXPORT CSectorManager {
public:
    virtual ~CSectorManager() = default;

    /// Key of the sector index of that name, or empty.
    virtual QString getBkzsCodeByName(const QString &name) = 0;
    /// Name of the industry sector of an instrument at a classification level, or empty.
    virtual QString getSWSectorByStock(const QString &key, int level) = 0;
    /// Keys of the instruments convertible to or from this one.
    virtual QSet<QString> getConvertibleCodeByStock(const QString &key) = 0;
    /// The paired key of a share listed in two markets, or empty.
    virtual QString getAStockByHStock(const QString &key) = 0;
    virtual QString getHStockByAStock(const QString &key) = 0;
};

/// The counterpart of a share listed in two markets, whichever of the two it is; empty when there is none.
inline QString getPairedStock(const QString &key, CSectorManager &sectors) {
    const QString inHongKong = sectors.getHStockByAStock(key);
    return inHongKong.isEmpty() ? sectors.getAStockByHStock(key) : inHongKong;
}
inline QString getPairedStock(const QString &key) {
    return getPairedStock(key, CSingletonT<CSectorManager>::instance());
}

} // namespace TC
