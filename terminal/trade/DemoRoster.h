#pragma once

#include "terminal/trade/TradeFigures.h"
#include "terminal/trade/TradeRecords.h"

#include <QString>

#include <vector>

namespace terminal {

/// Somebody who trades one instrument for an account all day: by hand or by a strategy.
struct DemoDesk {
    QString instrument;
    std::string strategy; ///< empty by hand
    int orders = 0; ///< of a day
    int lot = 1; ///< smallest volume
    int mostLots = 1; ///< of one order
};

/// A task that is started every day.
struct DemoTask {
    struct Item {
        QString instrument;
        kvservice::EOperationType operation = kvservice::EOperationType::Buy;
        int quantity = 0;
        int lot = 1;
    };
    std::string strategy;
    std::vector<Item> items;
    double from = 0.0; ///< parts of the day's minutes
    double to = 1.0;
};

/// Shares that an account has.
struct DemoHolding {
    QString instrument;
    int volume = 0;
};

/// An account of the demonstration and all that is done for it. Every day begins with the same money and shares: what
/// a day has changed is evened out overnight. Futures are closed before the end of the day.
struct DemoAccount {
    TradeAccount account;
    int number = 0; ///< 0 to 9, part of the ids of its tasks
    FeeSchedule fees;
    double cash = 0.0; ///< money in the morning
    double marginRate = 0.0; ///< part of a future's value that is needed to open it
    std::vector<DemoHolding> holdings; ///< in the morning
    std::vector<DemoDesk> desks;
    std::vector<DemoTask> tasks;
};

/// The accounts that a new store comes with. They trade the simulated market.
const std::vector<DemoAccount> &demoAccounts();

/// Money of one share or contract at a price of 1; 1 for an instrument that is not of the simulated market.
double contractMultiplier(const QString &instrument);

} // namespace terminal
