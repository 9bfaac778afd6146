#pragma once

/// \file
/// Words that name a market.

#include <string>

namespace TC {

/// The short word of a futures exchange: "SF" for "SHFE", "DF" for "DCE", "ZF" for "CZCE", "IF" for "CFFEX". Any other
/// word stays.
std::string shortMarketWord(const std::string &market);

/// Whether a word, long or short, names one of these exchanges.
bool isFuturesMarket(const std::string &market);

} // namespace TC
