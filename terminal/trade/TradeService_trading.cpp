// The trade service's own work: trading, writing, signals.

#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketFill.h"
#include "terminal/trade/TradeService.h"

#include <QtDebug>

#include <algorithm>
#include <chrono>

namespace terminal {
namespace {

constexpr auto kLookInterval = std::chrono::milliseconds(100);

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

void TradeService::start() {
    if (mThread.joinable()) {
        return;
    }
    mStopping = false;
    mThread = std::thread([this] { run(); });
}

void TradeService::stop() {
    if (!mThread.joinable()) {
        return;
    }
    {
        std::lock_guard<std::mutex> hold(mLock);
        mStopping = true;
    }
    mSignal.notify_all();
    mThread.join();
}

void TradeService::run() {
    std::unique_lock<std::mutex> hold(mLock);
    while (!mStopping) {
        mAwake = false;
        hold.unlock();
        advance();
        const bool more = recordPastDay();
        hold.lock();
        if (!more) {
            mSignal.wait_for(hold, kLookInterval, [this] { return mStopping || mAwake; });
        }
    }
    hold.unlock();
    std::lock_guard<std::mutex> trading(mTrading);
    write();
}

void TradeService::advance() {
    {
        std::lock_guard<std::mutex> trading(mTrading);
        const qint64 now = mClock.now();
        applyCancels(now);
        for (Desk &desk : mDesks) {
            trade(desk, now);
        }
        write();
    }
    emitNotices();
}

/// Running trading day of an account: the latest of its instruments'.
int TradeService::runningDayOf(const DemoAccount &account, qint64 now) const {
    const std::shared_ptr<const Catalogue> catalogue = mMarket.catalogue();
    int day = 0;
    for (const DemoDesk &desk : account.desks) {
        if (const Instrument *known = catalogue->find(desk.instrument)) {
            const bool night = catalogue->nightMarkets.contains(known->market);
            day = std::max(day, dayOf(catalogue->calendar(known->market).dayAt(now, night)));
        }
    }
    return day;
}

void TradeService::trade(Desk &desk, qint64 now) {
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

/// Starts a day anew: what is recorded of it, and of days to come, was of another run of the market. What the user has
/// cancelled is cancelled again at its time.
void TradeService::beginDay(Desk &desk, int day) {
    write();
    const std::string &account = desk.plan->account.id;
    std::set<int> days = mStore.ownDaysFrom(account, day);
    days.insert(day);
    {
        std::lock_guard<std::mutex> hold(mLock);
        for (auto book = mBooks.lower_bound(day); book != mBooks.end(); ++book) {
            days.insert(book->first);
        }
        if (desk.trader && desk.trader->day() < day) {
            mNotices.newDays.insert(dateOf(day).toString(QStringLiteral("yyyyMMdd")).toStdString());
        }
    }
    for (const int forgotten : days) {
        forgetDay(account, forgotten);
    }
    desk.trader = std::make_unique<DemoTrader>(*desk.plan, *mMarket.catalogue(), day);
    desk.traded = 0;
    const std::vector<TradeCancel> cancels = mStore.cancels(day);
    desk.cancels.assign(cancels.begin(), cancels.end());
    mPastDaysKnown = false;
}

void TradeService::forgetDay(const std::string &account, int day) {
    TradeBatch batch;
    batch.forgottenDays.insert({account, day});
    std::unique_lock<std::mutex> hold(mLock);
    TradeBook &book = loadedBook(day, hold);
    const Keys instruments = book.instruments();
    book.forgetOwn(account);
    mPending.append(batch);
    mNotices.linkage.insert(instruments.begin(), instruments.end());
    mNotices.tasks.insert(instruments.begin(), instruments.end());
}

/// Trades the minutes that have settled by a time, and cancels what is recorded as cancelled by then.
void TradeService::tradeUpTo(Desk &desk, qint64 now) {
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
    enter(trader.day(), changes);
    if (!trades) {
        return;
    }
    std::lock_guard<std::mutex> hold(mLock);
    if (trader.nextMinute() == 0) {
        TradeBatch finished;
        finished.finishedDays.insert({trader.account().id, trader.day()});
        mPending.append(finished);
    }
    mNotices.datas = mNotices.datas || mProfitWanted || mBalanceWanted;
}

void TradeService::enter(int day, const TradeChanges &changes) {
    if (changes.isEmpty()) {
        return;
    }
    TradeBatch batch;
    batch.changes = changes;
    std::unique_lock<std::mutex> hold(mLock);
    loadedBook(day, hold).put(changes);
    mPending.append(batch);
    notice(changes);
}

/// The records of a day, read from the store when they are not known yet. The lock is let go meanwhile.
TradeBook &TradeService::loadedBook(int day, std::unique_lock<std::mutex> &hold) {
    const auto found = mBooks.find(day);
    if (found != mBooks.end()) {
        return found->second;
    }
    hold.unlock();
    TradeBook fresh;
    fresh.put(mStore.read(day));
    hold.lock();
    return mBooks.emplace(day, std::move(fresh)).first->second;
}

/// Under the lock.
void TradeService::notice(const TradeChanges &changes) {
    const auto touched = [this](const std::string &instrument, const std::string &strategy) {
        mNotices.linkage.insert(instrument);
        mNotices.datas = true;
        mNotices.stocks = mStocks.insert(instrument).second || mNotices.stocks;
        if (!strategy.empty()) {
            mNotices.strategies = mStrategies.insert(strategy).second || mNotices.strategies;
        }
    };
    for (const TradeOrder &order : changes.orders) {
        touched(order.instrument, order.strategy);
    }
    for (const TradeDeal &deal : changes.deals) {
        touched(deal.instrument, deal.strategy);
    }
    for (const TradeTask &task : changes.tasks) {
        for (const TradeTaskItem &item : task.items) {
            touched(item.instrument(), task.strategy);
            mNotices.tasks.insert(item.instrument());
        }
    }
}

/// Cancels the tasks that the user has asked for, each at its time.
void TradeService::applyCancels(qint64 now) {
    std::vector<TradeCancel> asked;
    {
        std::lock_guard<std::mutex> hold(mLock);
        asked.swap(mCancels);
    }
    for (TradeCancel &cancel : asked) {
        for (Desk &desk : mDesks) {
            trade(desk, std::min(now, cancel.time));
            const TradeChanges changes =
                desk.trader ? desk.trader->cancelTask(cancel.task, cancel.time) : TradeChanges();
            if (changes.isEmpty()) {
                continue;
            }
            cancel.day = desk.trader->day();
            enter(cancel.day, changes);
            TradeBatch batch;
            batch.cancels.push_back(cancel);
            std::lock_guard<std::mutex> hold(mLock);
            mPending.append(batch);
        }
    }
}

void TradeService::listPastDays() {
    mPastDays.clear();
    mPastDaysKnown = true;
    const std::shared_ptr<const Catalogue> catalogue = mMarket.catalogue();
    for (const Desk &desk : mDesks) {
        if (!desk.trader) {
            continue;
        }
        const MarketCalendar calendar = catalogue->calendar(QStringLiteral("SH"));
        const std::set<int> finished = mStore.finishedDays(desk.plan->account.id);
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

bool TradeService::recordPastDay() {
    {
        std::lock_guard<std::mutex> trading(mTrading);
        if (!mPastDaysKnown) {
            write();
            listPastDays();
        }
        if (mPastDays.empty()) {
            return false;
        }
        Desk past;
        past.plan = mPastDays.front().first;
        const int day = mPastDays.front().second;
        mPastDays.pop_front();
        forgetDay(past.plan->account.id, day);
        past.trader = std::make_unique<DemoTrader>(*past.plan, *mMarket.catalogue(), day);
        const std::vector<TradeCancel> cancels = mStore.cancels(day);
        past.cancels.assign(cancels.begin(), cancels.end());
        tradeUpTo(past, mClock.now());
        write();
    }
    emitNotices();
    return true;
}

/// Writes what is pending; what cannot be written now is kept for the next time.
void TradeService::write() {
    TradeBatch batch;
    {
        std::lock_guard<std::mutex> hold(mLock);
        std::swap(batch, mPending);
        if (mRefused > 0) {
            qWarning("import: %d trade records are left out, the last one because of this: %s", mRefused,
                     mRefusedFor);
            mRefused = 0;
        }
    }
    if (batch.isEmpty()) {
        return;
    }
    const QString trouble = mStore.write(batch);
    if (!trouble.isEmpty() && trouble != mTrouble) {
        qWarning("%s", qPrintable(trouble));
    }
    mTrouble = trouble;
    const bool reread = trouble.isEmpty() && batch.forgetImports;
    const Keys stocks = reread ? mStore.instruments() : Keys();
    std::lock_guard<std::mutex> hold(mLock);
    if (!trouble.isEmpty()) {
        batch.append(mPending);
        std::swap(batch, mPending);
    } else if (reread && mPending.isEmpty()) {
        mStocks = stocks;
        mNotices.stocks = true;
    }
}

void TradeService::emitNotices() {
    Notices notices;
    {
        std::lock_guard<std::mutex> hold(mLock);
        std::swap(notices, mNotices);
    }
    for (const std::string &day : notices.newDays) {
        sigNewTradingDay(day);
    }
    if (notices.accounts) {
        sigAccountsChanged();
    }
    if (notices.strategies) {
        sigStrategysChanged();
    }
    if (notices.stocks) {
        sigStocksChanged();
    }
    if (!notices.linkage.empty()) {
        sigLinkageChanged({notices.linkage.begin(), notices.linkage.end()});
    }
    if (!notices.tasks.empty()) {
        sigTaskChanged({notices.tasks.begin(), notices.tasks.end()});
    }
    if (notices.datas) {
        sigDatasChanged();
    }
}

} // namespace terminal
