#pragma once

#include "terminal/market/Catalogue.h"
#include "terminal/trade/DemoRoster.h"

#include <array>
#include <map>
#include <string>

namespace terminal {

/// What a demonstration account can pay and deliver on one day. An order sets aside the most that it can need, so that
/// what trades is always covered: shares that were bought today are not sold, nothing is sold that is not held, and
/// the money never runs out. Bonds may go the day they came; futures are opened, on margin, and closed.
class DemoWallet {
public:
    DemoWallet(const DemoAccount &account, const Catalogue &catalogue);

    /// Decides whether an order opens or closes, as `offset`, and makes its volume what is covered now: whole lots,
    /// not more than it has, 0 for nothing.
    void fit(TradeOrder &order, int lot) const;
    /// Sets aside what an order may need; it has to fit.
    void setAside(const TradeOrder &order, int lot);
    /// Pays and delivers a deal out of what its order has set aside.
    void settle(const TradeOrder &order, const TradeDeal &deal, int lot);
    /// Gives back what the rest of an order has set aside.
    void release(const TradeOrder &order, int lot);

    /// How much of a future's position an order of that side could close now.
    int closable(const std::string &instrument, bool buy) const;
    /// Money that is neither spent nor set aside.
    double cash() const { return mCash; }

private:
    /// Long or short part of what is held in an instrument.
    struct Side {
        int held = 0;
        int available = 0; ///< not set aside by an order, and not of today where that may not be sold
        double cost = 0.0; ///< money that what is held of a future was worth when it was opened
    };
    struct Holding {
        double multiplier = 1.0;
        bool sameDay = false; ///< may be sold on the day it was bought
        std::array<Side, 2> sides; ///< long, short
    };

    const Holding &holdingOf(const std::string &instrument) const;
    double moneyFor(const TradeOrder &order, int volume, int lot) const;
    bool takesMoney(const TradeOrder &order) const;
    Side &sideOf(const TradeOrder &order);
    void settleOpening(Side &side, const TradeDeal &deal, double amount);
    void settleClosing(Side &side, const TradeDeal &deal, double amount);

    FeeSchedule mFees;
    double mMarginRate;
    double mCash;
    bool mFutures;
    std::map<std::string, Holding> mHoldings;
};

} // namespace terminal
