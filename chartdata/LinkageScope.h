#pragma once

#include <set>
#include <string>

namespace TC {

/// Whose trading a chart shows, and what its prices are placed against.
struct LinkageScope {
    std::set<std::string> accounts;
    std::set<std::string> instruments; ///< keys
    std::set<std::string> strategies;
    bool filter = false; ///< only records of the strategies
    std::string key; ///< of the main instrument; empty for a user-defined index
    double close = 0.0; ///< reference price of the chart

    /// Whether a record of this strategy is shown.
    bool admits(const std::string &strategy) const {
        return !filter || (!strategy.empty() && strategies.count(strategy) > 0);
    }
};

} // namespace TC
