#pragma once

namespace terminal {

constexpr int kWholeSeries = 1; ///< type of a history result: all of the series at once

} // namespace terminal
