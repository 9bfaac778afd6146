#pragma once

#include "terminal/market/MinuteBar.h"

#include <optional>

namespace terminal {

/// Adds to the bars of a day those that are known of it already. Answers the time of the first minute that both have with
/// other values, their averages aside; the bars are then as they were.
std::optional<qint64> mergeBars(const MinuteBars &known, MinuteBars &bars);

/// Takes away averages that are those of these bars themselves, as fillAverages() makes them, so that it makes them anew of a day
/// to which bars are added. Averages that a source has told stay.
void clearFilledAverages(MinuteBars &bars);

} // namespace terminal
