#include "chartdata/RegionFigures.h"

#include <algorithm>

namespace TC {

RegionFigures regionFigures(const std::vector<double> &prices, const std::vector<double> &volumes, int start,
                            int end) {
    RegionFigures figures;
    figures.first = prices[static_cast<std::size_t>(start)];
    figures.last = prices[static_cast<std::size_t>(end)];
    figures.low = figures.first;
    double sum = 0.0;
    for (int i = start; i <= end; ++i) {
        const auto at = static_cast<std::size_t>(i);
        figures.low = std::min(figures.low, prices[at]);
        figures.high = std::max(figures.high, prices[at]);
        sum += prices[at];
        if (at < volumes.size()) {
            figures.volume += volumes[at];
            figures.amount += volumes[at] * prices[at];
        }
    }
    figures.change = (figures.last - figures.first) / figures.first;
    figures.average = sum / (end - start + 1);
    figures.amplitude = (figures.high - figures.low) / figures.first;
    return figures;
}

} // namespace TC
