#pragma once

#include "terminal/trade/TradeRecords.h"

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace terminal {

/// What is to be written in one transaction, in the order of the members.
struct TradeBatch {
    using AccountDay = std::pair<std::string, int>;

    bool forgetImports = false; ///< everything imported before
    std::set<AccountDay> forgottenDays; ///< own records of an account's day, written before
    std::vector<TradeAccount> accounts;
    TradeChanges changes;
    std::vector<TradeCancel> cancels;
    std::set<AccountDay> finishedDays; ///< recorded to their end

    bool isEmpty() const;
    /// Makes this the batch that does what both do, one after the other: what the later one forgets is not written at
    /// all.
    void append(TradeBatch later);
};

} // namespace terminal
