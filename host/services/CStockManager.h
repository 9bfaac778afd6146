#pragma once

#include "host/Export.h"
#include "host/records/CInstrumentDetail.h"
#include "host/services/CSingletonT.h"

#include <QPair>
#include <QString>

namespace TC {

/// The instrument catalogue and its trading days. A date is a 32-bit count of seconds since the epoch at the
/// midnight (UTC+8) of that day.
class TIMESHARE_EXPORT CStockManager {
public:
    virtual ~CStockManager() = default;

    /// The record of a key, or null.
    virtual CInstrumentDetailPtr getInstrumentDetail(const QString &key) = 0;
    /// Whether the catalogue knows the key.
    virtual bool isExist(const QString &key) = 0;
    /// Whether the key names a portfolio; without an answer of the host's none does.
    virtual bool isPortfolio(const QString &) { return false; }
    /// A record to show when no instrument is set.
    virtual CInstrumentDetailPtr getDefaultDetail() = 0;
    /// The close of the trading day before `date`, with 0 before the day that runs; kUnsetValue when unknown.
    virtual double getCurrentDateLastClose(const QString &key, int date) = 0;
    virtual double getCurrentDateLastClose(const CInstrumentDetailPtr &detail, int date) = 0;
    /// The current trading day of a market.
    virtual int getLastTradingDay(const QString &market) = 0;
    /// The trading day `shift` trading days away from `date`; a negative shift goes back.
    virtual int getShiftTradeDate(const QString &market, int date, int shift) = 0;
    /// First and last time of the instrument's trading on `date`, in milliseconds since the epoch.
    virtual QPair<qint64, qint64> getStartEndTime(const CInstrumentDetailPtr &detail, int &date) = 0;
};

} // namespace TC
