#pragma once

#include "host/Export.h"
#include "host/records/CInstrumentDetail.h"
#include "host/records/CStockInfo.h"

#include <QList>
#include <QtGlobal>

namespace TC {

/// One user-defined index.
class TIMESHARE_EXPORT CIndexDetail : public CStockInfo {
public:
    CIndexDetail() = default;
    explicit CIndexDetail(const QString &key) : CStockInfo(key, key) {}

    QList<QString> mMembers; ///< keys of the member instruments
    qint64 mStartTime = 0; ///< milliseconds since the epoch, 0 when unset
    double mBaseValue = 0.0; ///< base value, and the last close of the index as an overlay
    qint32 mOption1 = 0; ///< options of the formula service, carried into requests unchanged
    qint32 mOption2 = 0;
    qint32 mOption3 = 0;
};

/// A record that stands for a user-defined index in lists of instruments. Its key is that of the index.
inline CInstrumentDetailPtr indexDetail2Detail(const CIndexDetail &index) {
    auto detail = std::make_shared<CInstrumentDetail>();
    detail->mCode = index.key().toStdString();
    detail->mName = index.mCode.isEmpty() ? detail->mCode : index.mCode.toStdString();
    detail->mLastClose = index.mBaseValue;
    detail->mPriceTick = 0.01;
    return detail;
}

} // namespace TC
