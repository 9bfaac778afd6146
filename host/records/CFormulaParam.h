#pragma once

#include "host/records/RPCFormulaResult.h"

#include <QList>
#include <QMap>
#include <QPair>
#include <QString>
#include <boost/shared_ptr.hpp>

#include <string>

namespace TC {

/// Request of one formula series.
struct CFormulaParam {
    qint32 mStockKind = eInstrument; ///< EStockKind
    qint32 mDataMode = 0; ///< 1, or 3 for a fixed-price request
    QString mMarket;
    QString mCode;
    qint64 mPeriod = 0; ///< milliseconds
    QString mFormulaName; ///< file name of the formula, or path of a script model
    se::TimePosition mStart; ///< range of the request
    se::TimePosition mEnd;
    qint32 mLimit = 0;
    qint32 mLimitFlag = 0;
    QString mIndexName; ///< the two name fields of a user-defined index
    QString mIndexKey;
    qint32 mIndexOption1 = 0;
    QList<QPair<QString, QString>> mMembers; ///< (market, code) of the members of a user-defined index
    qint64 mIndexStartTime = 0; ///< milliseconds since the epoch
    double mIndexBaseValue = 0.0;
    qint32 mIndexOption2 = 0;
    qint32 mIndexOption3 = 0;
    qint32 mDataDemand = 0; ///< 1 history only, 3 history and stream
    std::string mRequestId;
    qint64 mInterval = 0; ///< refresh interval in milliseconds, 0 for none
    qint32 mLanguage = 0; ///< 0 native formula, 1 script model
    QMap<QString, QString> mArguments; ///< formula arguments
    boost::shared_ptr<void> mRunData; ///< of the formula's detail, for ERunMode::HandOver
    qint32 mLevel = 0; ///< level of a fixed-price request
};

} // namespace TC
