#include "terminal/trade/TradeDesks.h"

#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketFill.h"

#include <algorithm>

namespace terminal {
namespace {

const MinuteBar *barAt(const MinuteBars &bars, qint64 time) {
    const auto found = std::lower_bound(bars.begin(), bars.end(), time,
                                        [](const MinuteBar &bar, qint64 at) { return bar.time < at; });
    return found != bars.end() && found->time == time ? &*found : nullptr;
}

void append(TradeChanges &all, const TradeChanges &more) {
    all.orders.insert(all.orders.end(), more.orders.begin(), more.orders.end());
    all.deals.insert(all.deals.end(), more.deals.begin(), more.deals.end());
    all.tasks.insert(all.tasks.end(), more.tasks.begin(), more.tasks.end());
}

} // namespace

TradeDesks::TradeDesks(CMarketStore &market, MarketFeed &feed, TradeLedger &ledger,
                       std::function<bool()> figuresWanted)
    : mMarket(market), mFeed(feed), mLedger(ledger), mFiguresWanted(std::move(figuresWanted)) {
    for (const DemoAccount &demo : demoAccounts()) {
        mLedger.addAccount(demo.account);
        mDesks.emplace_back();
        mDesks.back().plan = &demo;
    }
}

qint64 TradeDesks::advance(qint64 now, std::vector<TradeCancel> asked) {
    for (TradeCancel &one : asked) {
        cancel(one, now);
    }
    for (Desk &desk : mDesks) {
        trade(desk, now);
    }
    if (!mLedger.write()) {
        return now;
    }
    qint64 due = MarketCalendar::nextChangeAfter(now);
    for (const Desk &desk : mDesks) {
        due = std::min(due, desk.dueAfter(now));
    }
    return due;
}

/// The next minute to be traded or task to be cancelled, or the end of the day.
qint64 TradeDesks::Desk::dueAfter(qint64 now) const {
    qint64 due = MarketCalendar::nextChangeAfter(now);
    if (trader && trader->nextMinute() != 0) {
        due = std::min(due, trader->nextMinute() + kSettled);
    }
    return cancels.empty() ? due : std::min(due, cancels.front().time);
}

/// Running trading day of an account: the latest of its instruments'.
int TradeDesks::runningDayOf(const DemoAccount &account, qint64 now) const {
    const std::shared_ptr<const Catalogue> catalogue = mMarket.catalogue();
    int day = 0;
    for (const DemoDesk &desk : account.desks) {
        if (catalogue->find(desk.instrument)) {
            day = std::max(day, tradingDayAt(*catalogue, desk.instrument.toStdString(), now));
        }
    }
    return day;
}

void TradeDesks::trade(Desk &desk, qint64 now) {
    const int day = runningDayOf(*desk.plan, now);
    if (day == 0) {
        return; // a store without these instruments
    }
    const bool sameDay = desk.trader && desk.trader->day() == day;
    const bool jumpedBack = desk.trader && desk.traded + kSettled > now;
    if (!sameDay || jumpedBack) {
        if (desk.trader && !jumpedBack) {
            tradeUpTo(desk, now); // the rest of the day before
        }
        beginDay(desk, day);
    }
    tradeUpTo(desk, now);
}

/// Cancels a task at the time that the user asked for.
void TradeDesks::cancel(TradeCancel &cancel, qint64 now) {
    for (Desk &desk : mDesks) {
        trade(desk, std::min(now, cancel.time));
        const TradeChanges changes =
            desk.trader ? desk.trader->cancelTask(cancel.task, cancel.time) : TradeChanges();
        if (!changes.isEmpty()) {
            cancel.day = desk.trader->day();
            mLedger.enter(cancel.day, changes);
            mLedger.enterCancel(cancel);
        }
    }
}

/// Starts a day anew: what is recorded of it, and of days to come, was of another run of the market. What the user has
/// cancelled is cancelled again at its time.
void TradeDesks::beginDay(Desk &desk, int day) {
    mLedger.write();
    if (desk.trader && desk.trader->day() < day) {
        mLedger.noteNewDay(day);
    }
    const std::string &account = desk.plan->account.id;
    std::set<int> days = mLedger.daysFrom(account, day);
    days.insert(day);
    for (const int forgotten : days) {
        mLedger.forgetDay(account, forgotten);
    }
    open(desk, day);
    mPastDaysKnown = false;
}

void TradeDesks::open(Desk &desk, int day) {
    desk.trader = std::make_unique<DemoTrader>(*desk.plan, *mMarket.catalogue(), day);
    desk.traded = 0;
    const std::vector<TradeCancel> cancels = mLedger.cancels(day);
    desk.cancels.assign(cancels.begin(), cancels.end());
}

/// Trades the minutes that have settled by a time, and cancels what is recorded as cancelled by then.
void TradeDesks::tradeUpTo(Desk &desk, qint64 now) {
    DemoTrader &trader = *desk.trader;
    const auto isDue = [&] { return trader.nextMinute() != 0 && trader.nextMinute() + kSettled <= now; };
    const bool trades = isDue();
    std::map<QString, MinuteBars> bars;
    for (const QString &instrument : trades ? trader.instruments() : QStringList()) {
        bars[instrument] = mFeed.dayBars(instrument, trader.day());
    }
    const auto look = [&bars](const QString &instrument, qint64 time) { return barAt(bars[instrument], time); };
    TradeChanges changes;
    const auto cancelBefore = [&](qint64 time) {
        for (; !desk.cancels.empty() && desk.cancels.front().time < time; desk.cancels.pop_front()) {
            append(changes, trader.cancelTask(desk.cancels.front().task, desk.cancels.front().time));
        }
    };
    while (isDue()) {
        cancelBefore(trader.nextMinute() + kSettled);
        desk.traded = trader.nextMinute();
        append(changes, trader.step(look));
    }
    cancelBefore(now + 1);
    mLedger.enter(trader.day(), std::move(changes));
    if (trades && trader.nextMinute() == 0) {
        mLedger.finishDay(trader.account().id, trader.day());
    }
    if (trades && mFiguresWanted()) {
        mLedger.noteFigures();
    }
}

void TradeDesks::listPastDays() {
    mPastDays.clear();
    mPastDaysKnown = true;
    const std::shared_ptr<const Catalogue> catalogue = mMarket.catalogue();
    for (const Desk &desk : mDesks) {
        if (!desk.trader) {
            continue;
        }
        const MarketCalendar calendar = catalogue->calendar(QStringLiteral("SH"));
        const std::set<int> finished = mLedger.finishedDays(desk.plan->account.id);
        QDate day = dateOf(desk.trader->day());
        for (int i = 1; i < kFilledDays; ++i) {
            day = calendar.previous(day);
            if (finished.count(dayOf(day)) == 0) {
                mPastDays.push_back({desk.plan, dayOf(day)});
            }
        }
    }
    std::stable_sort(mPastDays.begin(), mPastDays.end(),
                     [](const auto &a, const auto &b) { return a.second > b.second; });
}

bool TradeDesks::recordPastDay(qint64 now) {
    if (!mPastDaysKnown) {
        mLedger.write();
        listPastDays();
    }
    if (mPastDays.empty()) {
        return false;
    }
    Desk past;
    past.plan = mPastDays.front().first;
    const int day = mPastDays.front().second;
    mPastDays.pop_front();
    mLedger.forgetDay(past.plan->account.id, day);
    open(past, day);
    tradeUpTo(past, now);
    mLedger.write();
    return true;
}

} // namespace terminal
