#pragma once

#include "host/records/CFormulaParam.h"

#include <functional>

namespace terminal {

/// The trading day, seconds since the epoch at its midnight, that a request asks for by its range: the day whose start
/// and end, of the instrument of the request, the range is. A range that is no such day's, as that of an overlay of
/// another market, is of the day it ends on; an after-hours one, and that of a user-defined index, which has no end,
/// of the day it starts on.
int requestDayOf(const TC::CFormulaParam &param);

/// The trading day that a request names by its range; 0 when it names none.
using RequestDay = std::function<int(const TC::CFormulaParam &)>;

/// The key by which the market knows the instrument of a request: that of a user-defined index stands in its code.
QString feedKeyOf(const TC::CFormulaParam &param);

/// Whether a request asks for the trading at the closing price after the close.
bool isAfterHours(const TC::CFormulaParam &param);

} // namespace terminal
