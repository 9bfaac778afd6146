#pragma once

#include <string>
#include <vector>

namespace TC {

/// The positions of a portfolio.
struct RPCUiPortfolioDetail {
    std::vector<std::string> mMarkets; ///< market words, parallel to mCodes
    std::vector<std::string> mCodes;
};

} // namespace TC
