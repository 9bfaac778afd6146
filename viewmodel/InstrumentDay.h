#pragma once

#include "host/records/CInstrumentDetail.h"
#include "host/services/ServiceContext.h"
#include "viewmodel/TradingSessions.h"

#include <string>

namespace TC {

/// The built-in kind of trading day of a market and a code. `shown` is the instrument that the view shows, null for none:
/// its product and its types count, also where market and code are those of another one. `afterHours` shows the
/// after-hours session of a growth-board stock. Asks the services for night sessions, types and the user's board rules.
ETradingDay tradingDayOf(const std::string &market, const std::string &code, const CInstrumentDetailPtr &shown,
                         bool afterHours, const ServiceContext &services);

/// Whether the host knows a night session of an instrument.
bool hasNightSession(const CInstrumentDetailPtr &detail, const ServiceContext &services);

/// Whether the axis of an instrument may be that of what it derives from: a stock of Shanghai or Shenzhen whose record
/// names its underlying.
bool hasUnderlyingDay(const CInstrumentDetailPtr &detail);

} // namespace TC
