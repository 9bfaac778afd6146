#pragma once

#include "terminal/market/CMarketStore.h"
#include "terminal/trade/TradeBatch.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace terminal {

/// The user's trade records in the tables of the market store. Any thread; one of them writes.
class TradeStore {
public:
    explicit TradeStore(CMarketStore &store) : mStore(store) {}

    /// Writes all of a batch or nothing. Answers an empty text or one line that says why not.
    QString write(const TradeBatch &batch);
    /// What write() says while another task of the program writes; the batch may be written a little later.
    QString busyText() const { return mStore.describeBusy(); }

    /// All records of a trading day; none when the reading failed, with one line that says why.
    std::optional<TradeChanges> read(int day, QString &trouble);
    /// In the order of their ids.
    std::vector<TradeAccount> accounts();
    std::set<std::string> strategies();
    /// Keys of all instruments that have a record.
    std::set<std::string> instruments();
    std::vector<TradeCancel> cancels(int day);
    /// Days that are recorded to their end, of an account.
    std::set<int> finishedDays(const std::string &account);
    /// Days from a day on that have own records of an account.
    std::set<int> ownDaysFrom(const std::string &account, int day);

private:
    CMarketStore &mStore;
};

} // namespace terminal
