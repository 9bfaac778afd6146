#pragma once

#include "host/Export.h"

namespace TC {

/// Decimals that prices with the given smallest step need, 0 to 11; 2 for the unset value. Counts how often the
/// step has to be multiplied by ten until it is whole, within a tolerance.
TIMESHARE_EXPORT int decimals(double tick);

/// Decimals of a volume that is written in units of 万, 亿 or 万亿: none below ten thousand, one from a
/// thousand units on, otherwise two.
TIMESHARE_EXPORT int volumeDecimals(double volume);

} // namespace TC
