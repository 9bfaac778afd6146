#include "terminal/trade/DemoMarketDay.h"

#include "terminal/market/MarketDate.h"

#include <algorithm>

namespace terminal {
namespace {

constexpr int kAfterHours = 900; ///< minutes past this one are after-hours trading

} // namespace

DemoMarketDay::DemoMarketDay(const DemoAccount &account, const Catalogue &catalogue, int day) {
    for (const DemoDesk &desk : account.desks) {
        add(catalogue, desk.instrument, day);
    }
    for (const DemoTask &task : account.tasks) {
        for (const DemoTask::Item &item : task.items) {
            add(catalogue, item.instrument, day);
        }
    }
    std::sort(mMinutes.begin(), mMinutes.end());
    mMinutes.erase(std::unique(mMinutes.begin(), mMinutes.end()), mMinutes.end());
}

void DemoMarketDay::add(const Catalogue &catalogue, const QString &key, int day) {
    const Instrument *instrument = catalogue.find(key);
    if (!instrument || mInstruments.contains(key)) {
        return;
    }
    const MarketCalendar calendar = catalogue.calendar(instrument->market);
    const QDate date = dateOf(day);
    if (!calendar.isTradingDay(date)) {
        return;
    }
    Quote quote;
    quote.market = instrument->market.toStdString();
    quote.code = instrument->code.toStdString();
    quote.isFuture = instrument->kind == InstrumentKind::Future;
    quote.priceTick = instrument->priceTick;
    quote.minutes = instrument->sessions.times(date, calendar.eveningBefore(date));
    if (instrument->hasAfterHours()) {
        const auto close =
            std::upper_bound(quote.minutes.begin(), quote.minutes.end(), timeOf(date, kAfterHours));
        quote.minutes.erase(close, quote.minutes.end());
    }
    mMinutes.insert(mMinutes.end(), quote.minutes.begin(), quote.minutes.end());
    mQuotes[key] = std::move(quote);
    mInstruments.append(key);
}

qint64 DemoMarketDay::secondOfMinute(int second) const {
    return mMinutes[mNext] - kMinuteLength + second * 1000LL;
}

const DemoMarketDay::Quote *DemoMarketDay::find(const QString &instrument) const {
    const auto found = mQuotes.find(instrument);
    return found == mQuotes.end() ? nullptr : &found->second;
}

const DemoMarketDay::Quote *DemoMarketDay::quoteOf(const QString &instrument) const {
    const Quote *quote = find(instrument);
    const bool trades = quote && quote->last > 0.0 &&
                        std::binary_search(quote->minutes.begin(), quote->minutes.end(), mMinutes[mNext]);
    return trades ? quote : nullptr;
}

void DemoMarketDay::advance(const Bars &bars) {
    for (auto &quote : mQuotes) {
        const MinuteBar *bar = bars(quote.first, mMinutes[mNext]);
        if (bar && bar->price > 0.0) {
            quote.second.last = bar->price;
        }
    }
    ++mNext;
}

} // namespace terminal
