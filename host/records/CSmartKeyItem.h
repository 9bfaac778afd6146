#pragma once

#include "host/records/CStockInfo.h"
#include "host/records/Enumerations.h"

#include <QString>

namespace TC {

/// One entry that the smart keyboard offers for a text.
struct CSmartKeyItem {
    CStockInfo mStock; ///< key and code; a shortcut has its number as the code
    QString mName;
    QString mInitials; ///< first letters of the name's pinyin, as "PFYH"
    ESmartKeyType mType = ESmartKeyType::Stock;
};

} // namespace TC
