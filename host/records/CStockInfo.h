#pragma once

#include "host/Export.h"

#include <QString>

namespace TC {

/// One entry of an instrument list.
class TIMESHARE_EXPORT CStockInfo {
public:
    CStockInfo() = default;
    CStockInfo(QString key, QString code) : mCode(std::move(code)), mKey(std::move(key)) {}
    virtual ~CStockInfo() = default;

    QString key() const { return mKey; }

    QString mCode; ///< code without the market

protected:
    QString mKey; ///< key of the instrument
};

} // namespace TC
