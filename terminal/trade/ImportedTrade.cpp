#include "terminal/trade/ImportedTrade.h"

#include "terminal/market/MarketLimits.h"

#include <cmath>

namespace terminal {
namespace {

constexpr long long kFirstTradeTime = 86400; ///< seconds since the epoch
constexpr long long kLastTradeTime = 2147385600; ///< 2038-01-18; days are 32-bit numbers

} // namespace

const char *troubleOf(const ImportedTrade &imported) {
    if (imported.account.empty()) {
        return "no account";
    }
    if (imported.instrument.empty()) {
        return "no instrument";
    }
    if (!std::isfinite(imported.price) || imported.price <= 0.0 || imported.price > kLargestPrice) {
        return "the price is no positive number";
    }
    if (imported.volume <= 0) {
        return "the volume is no positive whole number";
    }
    if (imported.time < kFirstTradeTime || imported.time > kLastTradeTime) {
        return "the time cannot be read";
    }
    if (imported.direction != kBuy && imported.direction != kSell) {
        return "the direction is neither 48, buy, nor 49, sell";
    }
    return nullptr;
}

} // namespace terminal
