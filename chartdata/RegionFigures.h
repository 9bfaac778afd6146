#pragma once

#include <vector>

namespace TC {

/// What the prices and volumes of a stretch of minutes come to.
struct RegionFigures {
    double first = 0.0;
    double high = 0.0;
    double low = 0.0;
    double last = 0.0;
    double volume = 0.0; ///< total
    double amount = 0.0; ///< total of volume times price
    double change = 0.0; ///< of the last price against the first, as a ratio
    double average = 0.0; ///< mean of the prices
    double amplitude = 0.0; ///< highest less lowest against the first, as a ratio
};

/// The figures from `start` to `end`, both included and both inside `prices`; `volumes` may be shorter. A stretch
/// that ends before it starts has totals of 0. A ratio to a first price of 0 is not finite.
RegionFigures regionFigures(const std::vector<double> &prices, const std::vector<double> &volumes, int start,
                            int end);

} // namespace TC
