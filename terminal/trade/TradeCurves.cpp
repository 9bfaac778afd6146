#include "terminal/trade/TradeCurves.h"

#include "host/services/CStockManager.h"
#include "terminal/market/MarketDate.h"
#include "terminal/trade/DemoRoster.h"

#include <algorithm>

namespace terminal {
namespace {

constexpr int kMidnight = 1440;

/// Clock minute of the end of a minute; midnight ends the day before.
int minuteOf(qint64 time) {
    const int minute = minuteAt(time);
    return minute == 0 ? kMidnight : minute;
}

/// Whether a clock minute is of a night session, which belongs to the day that follows.
bool isOfNight(int minute) {
    constexpr int kEvening = 18 * 60;
    constexpr int kMorning = 6 * 60;
    return minute > kEvening || minute < kMorning;
}

TradeCurves::TimedValues valuesOf(const std::vector<TradeFigures> &figures, double TradeFigures::*value) {
    TradeCurves::TimedValues values;
    for (const TradeFigures &at : figures) {
        values[minuteOf(at.time)] = at.*value;
    }
    return values;
}

} // namespace

TradeCurves::TradeCurves(CMarketStore &market, MarketFeed &feed, const SimulatedClock &clock,
                         TradeLedger &ledger)
    : mMarket(market), mFeed(feed), mClock(clock), mLedger(ledger) {}

int TradeCurves::runningDay(const std::string &instrument) const {
    return tradingDayAt(*mMarket.catalogue(), instrument, mClock.now());
}

/// Begins with the day's own sessions when one of the instruments has no night: its axis has no place for it.
std::vector<TradeFigures> TradeCurves::figures(const Scope &scope) {
    const qint64 now = mClock.now();
    std::vector<TradedInstrument> traded;
    for (const std::string &instrument : scope.instruments) {
        const int day = runningDay(instrument);
        TradedInstrument one;
        mLedger.withDay(day, [&](const TradeBook &book) {
            for (const TradeDeal &deal :
                 book.dealsOf(instrument, scope.accounts, scope.strategies, scope.filter)) {
                if (deal.time <= now) {
                    one.deals.push_back({deal.time, deal.direction == kBuy, deal.price,
                                         static_cast<double>(deal.volume), deal.commission});
                }
            }
        });
        if (one.deals.empty()) {
            continue;
        }
        const QString key = QString::fromStdString(instrument);
        one.multiplier = contractMultiplier(key);
        one.bars = mFeed.dayBars(key, day);
        traded.push_back(std::move(one));
    }
    std::vector<TradeFigures> minutes = figuresByMinute(traded);
    const auto beginsByDay = [](const TradedInstrument &one) {
        return !one.bars.empty() && !isOfNight(minuteOf(one.bars.front().time));
    };
    if (std::any_of(traded.cbegin(), traded.cend(), beginsByDay)) {
        const auto isNight = [](const TradeFigures &at) { return isOfNight(minuteOf(at.time)); };
        minutes.erase(std::remove_if(minutes.begin(), minutes.end(), isNight), minutes.end());
    }
    return minutes;
}

TradeCurves::TimedAmounts TradeCurves::amounts(const Scope &scope) {
    TimedAmounts amounts;
    for (const TradeFigures &at : figures(scope)) {
        amounts[minuteOf(at.time)] = {at.bought, at.sold};
    }
    return amounts;
}

TradeCurves::TimedValues TradeCurves::profits(const Scope &scope) {
    return mProfitsWanted ? valuesOf(figures(scope), &TradeFigures::profit) : TimedValues();
}

TradeCurves::TimedValues TradeCurves::balances(const Scope &scope) {
    return mBalancesWanted ? valuesOf(figures(scope), &TradeFigures::balance) : TimedValues();
}

double TradeCurves::largestAmplitude(const Keys &instruments, const Keys &accounts, SpanOf span) {
    double largest = 0.0;
    for (const std::string &instrument : instruments) {
        TradeBook::Span prices;
        mLedger.withDay(runningDay(instrument),
                        [&](const TradeBook &book) { prices = (book.*span)(instrument, accounts); });
        if (prices.highest > 0.0) {
            const TC::CInstrumentDetailPtr detail =
                TC::CSingletonT<TC::CStockManager>::instance().getInstrumentDetail(
                    QString::fromStdString(instrument));
            largest =
                std::max(largest, amplitude(prices.lowest, prices.highest, TC::getDetailLastClose(detail)));
        }
    }
    return largest;
}

double TradeCurves::orderAmplitude(const Keys &instruments, const Keys &accounts) {
    return largestAmplitude(instruments, accounts, &TradeBook::orderSpan);
}

double TradeCurves::dealAmplitude(const Keys &instruments, const Keys &accounts) {
    return largestAmplitude(instruments, accounts, &TradeBook::dealSpan);
}

} // namespace terminal
