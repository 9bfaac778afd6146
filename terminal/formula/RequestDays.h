#pragma once

#include "host/records/CFormulaParam.h"

namespace terminal {

/// The trading day, seconds since the epoch at its midnight, that a request asks for by its range: the day whose start
/// and end, of the instrument of the request, the range is. A range that is no such day's, as that of an overlay of
/// another market, is of the day it ends on; an after-hours one of the day it starts on.
int requestDayOf(const TC::CFormulaParam &param);

} // namespace terminal
