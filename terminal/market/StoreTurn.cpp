#include "terminal/market/StoreTurn.h"

#include "terminal/market/CMarketStore.h"

namespace terminal {

StoreTurn::StoreTurn(CMarketStore &store) : mHold(store.mWriting) {}

StoreTurn::StoreTurn(CMarketStore &store, std::chrono::milliseconds patience)
    : mHold(store.mWriting, patience) {}

} // namespace terminal
