#pragma once

#include "host/Export.h"

#include <QList>
#include <QString>
#include <QtGlobal>

#include <string>
#include <vector>

namespace quoter {

/// Base of one quote record.
struct TIMESHARE_EXPORT QuoterBase {
    virtual ~QuoterBase() = default;
    qint64 mTime = 0; ///< milliseconds since the epoch
    double mPrice = 0.0; ///< the price that follows the time
};

/// One transaction, or what was traded between two snapshots: the quotes of the kind 1806.
struct QuoterTransaction : QuoterBase {
    double mVolume = 0.0; ///< in shares or contracts
    double mAmount = 0.0; ///< in money; 0 when unknown
};

/// What CFormulaManager::requestHistoryQuote fetches.
struct TSMetaInfo {
    std::string mMarket;
    std::string mCode;
    qint32 mDataKind = 0; ///< 1806: transactions
    qint64 mPeriod = 0;
};

/// The range of a quote request.
struct TRegionInfo {
    qint64 mStart = 0; ///< milliseconds since the epoch
    qint64 mEnd = 0;
    qint32 mLimit = 2147483647;
};

} // namespace quoter

namespace se {

/// Asks CFormulaManager::fetchCacheData for cached records.
struct RPCFetchCacheDataParam {
    std::string mMarket;
    std::vector<std::string> mCodes;
    qint64 mStart = 0; ///< milliseconds since the epoch
    qint64 mEnd = 0;
    qint64 mPeriod = 86400000; ///< milliseconds
    qint32 mKind = 3000;
    qint32 mCount = 0;
};

} // namespace se

namespace TC {

/// Asks CFormulaManager::suppleDataFromServer for history of one or more instruments.
struct CHistoryDataParam {
    QList<QString> mMarkets; ///< parallel to mCodes
    qint64 mPeriod = 60000; ///< milliseconds
    qint64 mStart = 0; ///< milliseconds since the epoch
    qint64 mEnd = 0;
    qint32 mKind = 3001;
    QList<QString> mCodes;
};

} // namespace TC
