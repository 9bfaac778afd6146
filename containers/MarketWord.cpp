#include "containers/MarketWord.h"

#include <algorithm>
#include <array>

namespace TC {

namespace {

struct Exchange {
    const char *longWord;
    const char *shortWord;
};

constexpr std::array<Exchange, 4> kFutures = {{{"SHFE", "SF"}, {"DCE", "DF"}, {"CZCE", "ZF"}, {"CFFEX", "IF"}}};

} // namespace

std::string shortMarketWord(const std::string &market) {
    const auto *found = std::find_if(kFutures.begin(), kFutures.end(),
                                     [&market](const Exchange &one) { return market == one.longWord; });
    return found == kFutures.end() ? market : found->shortWord;
}

bool isFuturesMarket(const std::string &market) {
    return std::any_of(kFutures.begin(), kFutures.end(), [&market](const Exchange &one) {
        return market == one.longWord || market == one.shortWord;
    });
}

} // namespace TC
