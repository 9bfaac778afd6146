#include "terminal/trade/DemoWallet.h"

#include "host/services/CLinkageManager.h"

#include <algorithm>
#include <cmath>

namespace terminal {
namespace {

/// A sale trades at its limit or higher: no more than a day's largest rise above it.
constexpr double kDearestSale = 1.1;

bool isBuy(const TradeOrder &order) {
    return order.direction == kBuy;
}

int wholeLots(double volume, int lot) {
    return static_cast<int>(std::floor(std::max(volume, 0.0) / lot)) * lot;
}

} // namespace

DemoWallet::DemoWallet(const DemoAccount &account, const Catalogue &catalogue)
    : mFees(account.fees), mMarginRate(account.marginRate), mCash(account.cash),
      mFutures(account.account.type == TC::CLinkageManager::kFutureAccounts) {
    const auto add = [&](const QString &key) {
        const Instrument *instrument = catalogue.find(key);
        Holding &holding = mHoldings[key.toStdString()];
        holding.multiplier = contractMultiplier(key);
        holding.sameDay = instrument && (instrument->kind == InstrumentKind::Future ||
                                         instrument->kind == InstrumentKind::ConvertibleBond);
    };
    for (const DemoDesk &desk : account.desks) {
        add(desk.instrument);
    }
    for (const DemoTask &task : account.tasks) {
        for (const DemoTask::Item &item : task.items) {
            add(item.instrument);
        }
    }
    for (const DemoHolding &held : account.holdings) {
        add(held.instrument);
        Side &side = mHoldings[held.instrument.toStdString()].sides[0];
        side.held = side.available = held.volume;
    }
}

const DemoWallet::Holding &DemoWallet::holdingOf(const std::string &instrument) const {
    static const Holding nothing;
    const auto found = mHoldings.find(instrument);
    return found == mHoldings.end() ? nothing : found->second;
}

/// The part of a holding that an order adds to or takes from: a purchase of shares and an opening one of a future add
/// to the long one, a closing purchase takes from the short one.
DemoWallet::Side &DemoWallet::sideOf(const TradeOrder &order) {
    const bool isLong = !mFutures || isBuy(order) == (order.offset == kOpening);
    return mHoldings[order.instrument].sides[isLong ? 0 : 1];
}

bool DemoWallet::takesMoney(const TradeOrder &order) const {
    return mFutures ? order.offset == kOpening : isBuy(order);
}

/// The most that a volume of an order can cost, in however many deals of whole lots.
double DemoWallet::moneyFor(const TradeOrder &order, int volume, int lot) const {
    if (!takesMoney(order)) {
        return 0.0;
    }
    const double dearest = order.price * (isBuy(order) ? 1.0 : kDearestSale);
    const double value = dearest * holdingOf(order.instrument).multiplier;
    const double commission = std::max(mFees.rate * value, mFees.minimum / lot);
    return volume * ((mFutures ? mMarginRate * value : value) + commission);
}

int DemoWallet::closable(const std::string &instrument, bool buy) const {
    return mFutures ? holdingOf(instrument).sides[buy ? 1 : 0].available : 0;
}

void DemoWallet::fit(TradeOrder &order, int lot) const {
    const int closing = closable(order.instrument, isBuy(order));
    order.offset = !mFutures ? 0 : closing > 0 ? kClosing : kOpening;
    double covered = 0.0;
    if (takesMoney(order)) {
        const double ofLot = moneyFor(order, lot, lot);
        covered = ofLot > 0.0 ? std::floor(mCash / ofLot) * lot : 0.0;
    } else {
        covered = mFutures ? closing : holdingOf(order.instrument).sides[0].available;
    }
    order.volume = wholeLots(std::min<double>(order.volume, covered), lot);
}

void DemoWallet::setAside(const TradeOrder &order, int lot) {
    mCash -= moneyFor(order, order.volume, lot);
    if (!takesMoney(order)) {
        sideOf(order).available -= order.volume;
    }
}

void DemoWallet::release(const TradeOrder &order, int lot) {
    mCash += moneyFor(order, order.rest(), lot);
    if (!takesMoney(order)) {
        sideOf(order).available += order.rest();
    }
}

void DemoWallet::settle(const TradeOrder &order, const TradeDeal &deal, int lot) {
    const Holding &holding = holdingOf(order.instrument);
    const double amount = deal.price * deal.volume * holding.multiplier;
    mCash += moneyFor(order, deal.volume, lot) - deal.commission;
    Side &side = sideOf(order);
    if (takesMoney(order)) {
        side.available += holding.sameDay ? deal.volume : 0;
        settleOpening(side, deal, amount);
    } else {
        settleClosing(side, deal, amount);
    }
}

void DemoWallet::settleOpening(Side &side, const TradeDeal &deal, double amount) {
    mCash -= mFutures ? mMarginRate * amount : amount;
    side.held += deal.volume;
    side.cost += mFutures ? amount : 0.0;
}

void DemoWallet::settleClosing(Side &side, const TradeDeal &deal, double amount) {
    if (mFutures) {
        const double opened = side.cost * deal.volume / side.held;
        const double gain = deal.direction == kSell ? amount - opened : opened - amount;
        mCash += mMarginRate * opened + gain;
        side.cost -= opened;
    } else {
        mCash += amount;
    }
    side.held -= deal.volume;
}

} // namespace terminal
