#include "terminal/trade/DemoTrader.h"

#include "host/services/CLinkageManager.h"

#include "terminal/market/MarketDate.h"
#include "terminal/trade/OrderMatching.h"

#include <algorithm>
#include <cmath>

namespace terminal {
namespace {

constexpr quint64 kTradeSeed = 20260517;
constexpr size_t kQuietStart = 3; ///< minutes without orders at both ends of the day
constexpr size_t kSliceMinutes = 3; ///< a task places an order so often
constexpr size_t kSliceLife = 2;
constexpr size_t kAnnounced = 10; ///< minutes that a task is known before it starts
constexpr double kSliceEdge = 0.0005;
constexpr double kRejectChance = 0.04;
constexpr size_t kClosingMinutes = 12; ///< at the end of a future's day
constexpr double kClosingEdge = 0.003;

/// How far an order is from the last price; some are ready to pay a little, most wait a little.
double edgeOf(SimulatedRandom &random) {
    return 0.0008 - 0.0035 * random.uniform();
}

} // namespace

DemoTrader::DemoTrader(const DemoAccount &account, const Catalogue &catalogue, int day)
    : mAccount(account), mDay(day),
      mSeed(SimulatedRandom::mix(SimulatedRandom::mix(kTradeSeed, static_cast<quint64>(day)),
                                 QString::fromStdString(account.account.id))),
      mMarket(account, catalogue, day), mWallet(account, catalogue) {
    planOrders();
    if (mMarket.minutes().size() > 4 * kQuietStart) {
        planTasks();
    }
}

/// Spreads each desk's orders over the instrument's day, buying and selling in turn.
void DemoTrader::planOrders() {
    const std::vector<qint64> &allMinutes = mMarket.minutes();
    for (size_t i = 0; i < mAccount.desks.size(); ++i) {
        const DemoDesk &desk = mAccount.desks[i];
        const DemoMarketDay::Quote *quote = mMarket.find(desk.instrument);
        if (!quote) {
            continue;
        }
        const std::vector<qint64> &times = quote->minutes;
        const size_t quiet = 2 * kQuietStart + (quote->isFuture ? kClosingMinutes : 0);
        if (times.size() < 2 * quiet) {
            continue;
        }
        SimulatedRandom random(SimulatedRandom::mix(mSeed, i + 1));
        const double minutes = static_cast<double>(times.size() - quiet);
        bool buy = random.uniform() < 0.5;
        for (int n = 0; n < desk.orders; ++n, buy = !buy) {
            Intent intent;
            const size_t at = kQuietStart + static_cast<size_t>(minutes * (n + random.uniform()) / desk.orders);
            intent.minute = static_cast<size_t>(
                std::lower_bound(allMinutes.begin(), allMinutes.end(), times[at]) - allMinutes.begin());
            intent.desk = i;
            intent.buy = buy;
            intent.edge = edgeOf(random);
            intent.volume = desk.lot * (1 + random.below(desk.mostLots));
            intent.life = 3 + static_cast<size_t>(random.below(25));
            intent.rejected = random.uniform() < kRejectChance;
            mIntents.push_back(intent);
        }
    }
    std::stable_sort(mIntents.begin(), mIntents.end(),
                     [](const Intent &a, const Intent &b) { return a.minute < b.minute; });
}

void DemoTrader::planTasks() {
    const QDate date = dateOf(mDay);
    const int base = (date.year() % 100 * 10000 + date.month() * 100 + date.day()) * 100 + mAccount.number * 10;
    const double minutes = static_cast<double>(mMarket.minutes().size() - 1);
    for (size_t i = 0; i < mAccount.tasks.size(); ++i) {
        RunningTask running;
        running.plan = &mAccount.tasks[i];
        running.first = std::max(kQuietStart, static_cast<size_t>(minutes * running.plan->from));
        running.last = static_cast<size_t>(minutes * running.plan->to);
        running.announced = running.first > kAnnounced ? running.first - kAnnounced : 1;
        running.task.id = base + static_cast<int>(i) + 1;
        running.task.account = mAccount.account.id;
        running.task.day = mDay;
        running.task.strategy = running.plan->strategy;
        running.task.command = running.task.id;
        running.task.start = mMarket.minutes()[running.first] - kMinuteLength;
        running.task.end = mMarket.minutes()[running.last];
        mTasks.push_back(running);
    }
}

TradeChanges DemoTrader::step(const Bars &bars) {
    if (mMarket.isOver()) {
        return {};
    }
    placeIntents();
    for (RunningTask &running : mTasks) {
        runTask(running);
    }
    for (const QString &instrument : mMarket.instruments()) {
        closeFuture(instrument);
    }
    match(bars);
    expire();
    mMarket.advance(bars);
    return takeChanges();
}

void DemoTrader::placeIntents() {
    for (; mNextIntent < mIntents.size() && mIntents[mNextIntent].minute <= mMarket.next(); ++mNextIntent) {
        const Intent &intent = mIntents[mNextIntent];
        const DemoDesk &desk = mAccount.desks[intent.desk];
        const DemoMarketDay::Quote *quote = mMarket.quoteOf(desk.instrument);
        if (!quote) {
            continue; // no price yet
        }
        TradeOrder order;
        order.instrument = desk.instrument.toStdString();
        order.direction = intent.buy ? kBuy : kSell;
        order.price = limitPrice(quote->last, intent.buy, intent.edge, quote->priceTick);
        order.volume = intent.volume;
        order.strategy = desk.strategy;
        order.command = desk.strategy.empty() ? 0 : static_cast<int>(intent.desk) + 1;
        place(std::move(order), desk.lot, intent.life, 0, intent.rejected);
    }
}

/// Closes what is open in a future, when its day is about to end: whatever rests is cancelled and new orders, ready to
/// pay, are made every minute, for the first desk that trades it.
void DemoTrader::closeFuture(const QString &key) {
    const DemoMarketDay::Quote *quote = mMarket.quoteOf(key);
    if (!quote || !quote->isFuture) {
        return;
    }
    const auto next = std::upper_bound(quote->minutes.begin(), quote->minutes.end(), mMarket.nextMinute());
    if (static_cast<size_t>(quote->minutes.end() - next) >= kClosingMinutes) {
        return;
    }
    const std::string instrument = key.toStdString();
    cancelOrders([&](const TradeOrder &order) { return order.instrument == instrument; });
    const auto desk = std::find_if(mAccount.desks.begin(), mAccount.desks.end(),
                                   [&](const DemoDesk &candidate) { return candidate.instrument == key; });
    for (const bool buy : {true, false}) {
        TradeOrder order;
        order.instrument = instrument;
        order.direction = buy ? kBuy : kSell;
        order.price = limitPrice(quote->last, buy, kClosingEdge, quote->priceTick);
        order.volume = mWallet.closable(instrument, buy);
        if (desk != mAccount.desks.end() && !desk->strategy.empty()) {
            order.strategy = desk->strategy;
            order.command = static_cast<int>(desk - mAccount.desks.begin()) + 1;
        }
        if (order.volume > 0) {
            place(std::move(order), 1, 0, 0, false);
        }
    }
}

/// Makes an order, as far as it is covered.
void DemoTrader::place(TradeOrder order, int lot, size_t life, size_t item, bool rejected) {
    const int wanted = order.volume;
    mWallet.fit(order, lot);
    if (rejected) {
        order.volume = wanted;
    } else if (order.volume == 0) {
        return;
    }
    OpenOrder open;
    open.random = SimulatedRandom(SimulatedRandom::mix(mSeed, 1000000 + static_cast<quint64>(++mOrderNumber)));
    order.account = mAccount.account.id;
    order.key = QStringLiteral("%1-%2")
                    .arg(dateOf(mDay).toString(QStringLiteral("yyyyMMdd")))
                    .arg(mOrderNumber, 5, 10, QLatin1Char('0'))
                    .toStdString();
    order.day = mDay;
    order.time = mMarket.secondOfMinute(1 + open.random.below(9));
    order.status = rejected ? kvservice::eOrderRejected : kvservice::eOrderReported;
    mChanges.orders.push_back(order);
    if (!rejected) {
        mWallet.setAside(order, lot);
        open.order = std::move(order);
        open.lot = lot;
        open.deadline = mMarket.next() + life;
        open.item = item;
        mOpen.push_back(std::move(open));
    }
}

void DemoTrader::runTask(RunningTask &running) {
    TradeTask &task = running.task;
    if (!running.isListed) {
        if (mMarket.next() >= running.announced) {
            startTask(running);
        }
        return;
    }
    if (!task.canBeCancelled() || mMarket.next() < running.first) {
        return;
    }
    if (task.status == kvservice::eTaskWaiting) {
        task.status = kvservice::eTaskRunning;
        mChanges.tasks.push_back(task);
    }
    if ((mMarket.next() - running.first) % kSliceMinutes == 0 || mMarket.next() == running.last) {
        for (size_t item = 0; item < task.items.size(); ++item) {
            slice(running, item);
        }
    }
}

/// Lists a task once all its instruments have a price.
void DemoTrader::startTask(RunningTask &running) {
    std::vector<TradeTaskItem> items;
    for (const DemoTask::Item &planned : running.plan->items) {
        const DemoMarketDay::Quote *quote = mMarket.quoteOf(planned.instrument);
        if (!quote) {
            return;
        }
        TradeTaskItem item;
        item.market = quote->market;
        item.code = quote->code;
        item.operation = planned.operation;
        item.priceType = kvservice::eLimitPrice;
        item.price = quote->last;
        item.quantity = planned.quantity;
        items.push_back(item);
    }
    running.task.items = std::move(items);
    running.isListed = true;
    mChanges.tasks.push_back(running.task);
}

/// Places an order over what a task's item should have by now and has not.
void DemoTrader::slice(RunningTask &running, size_t number) {
    const TradeTaskItem &item = running.task.items[number];
    const DemoTask::Item &planned = running.plan->items[number];
    const DemoMarketDay::Quote *quote = mMarket.quoteOf(planned.instrument);
    int resting = 0;
    for (const OpenOrder &open : mOpen) {
        const bool ofItem = open.order.task == running.task.id && open.item == number;
        resting += ofItem ? open.order.rest() : 0;
    }
    const auto index = [](size_t minute) { return static_cast<qint64>(minute); };
    const int due = dueQuantity(item.quantity, planned.lot, index(running.first), index(running.last),
                                index(mMarket.next()));
    const int volume = due - item.finished - resting;
    if (!quote || volume <= 0) {
        return;
    }
    const bool buy = kvservice::DataHelper::isBuy(item.operation);
    TradeOrder order;
    order.instrument = planned.instrument.toStdString();
    order.direction = buy ? kBuy : kSell;
    order.price = limitPrice(quote->last, buy, kSliceEdge, quote->priceTick);
    order.volume = volume;
    order.strategy = running.task.strategy;
    order.command = running.task.command;
    order.task = running.task.id;
    place(std::move(order), planned.lot, kSliceLife, number, false);
}

void DemoTrader::match(const Bars &bars) {
    for (OpenOrder &open : mOpen) {
        const TradeOrder &order = open.order;
        const MinuteBar *bar = bars(QString::fromStdString(order.instrument), mMarket.nextMinute());
        if (bar && reaches(*bar, order.direction == kBuy, order.price)) {
            fill(open, *bar);
        }
    }
}

void DemoTrader::fill(OpenOrder &open, const MinuteBar &bar) {
    TradeOrder &order = open.order;
    const bool buy = order.direction == kBuy;
    TradeDeal deal;
    deal.account = order.account;
    deal.key = order.key + "-" + std::to_string(++open.fills);
    deal.order = order.key;
    deal.instrument = order.instrument;
    deal.day = mDay;
    deal.time = mMarket.secondOfMinute(12 + open.random.below(48));
    deal.direction = order.direction;
    deal.offset = order.offset;
    deal.price = fillPrice(bar, buy, order.price);
    deal.volume = fillVolume(order.rest(), open.lot, 0.35 + open.random.uniform());
    deal.strategy = order.strategy;
    deal.command = order.command;
    deal.commission =
        commissionOf(mAccount.fees, buy,
                     deal.price * deal.volume * contractMultiplier(QString::fromStdString(order.instrument)));
    mWallet.settle(order, deal, open.lot);
    order.traded += deal.volume;
    order.status = order.rest() == 0 ? kvservice::eOrderFilled : kvservice::eOrderPartlyFilled;
    mChanges.orders.push_back(order);
    countForTask(open, deal.volume);
    mChanges.deals.push_back(std::move(deal));
}

void DemoTrader::countForTask(const OpenOrder &open, int volume) {
    for (RunningTask &running : mTasks) {
        if (open.order.task != 0 && running.task.id == open.order.task) {
            running.task.items[open.item].finished += volume;
            mChanges.tasks.push_back(running.task);
        }
    }
}

/// Takes filled orders off the list, cancels those that have waited long enough, and ends tasks.
void DemoTrader::expire() {
    const bool dayEnds = mMarket.isLastMinute();
    for (OpenOrder &open : mOpen) {
        if (open.order.isOpen() && (dayEnds || mMarket.next() >= open.deadline)) {
            cancel(open);
        }
    }
    mOpen.erase(
        std::remove_if(mOpen.begin(), mOpen.end(), [](const OpenOrder &open) { return !open.order.isOpen(); }),
        mOpen.end());
    for (RunningTask &running : mTasks) {
        const auto &items = running.task.items;
        const bool done = running.isListed &&
                          std::all_of(items.begin(), items.end(),
                                      [](const TradeTaskItem &item) { return item.finished >= item.quantity; });
        const bool over = running.isListed && (dayEnds || mMarket.next() >= running.last + kSliceLife);
        if (running.task.canBeCancelled() && (done || over)) {
            running.task.status = done ? kvservice::eTaskFinished : kvservice::eTaskExpired;
            cancelOrders([&](const TradeOrder &order) { return order.task == running.task.id; });
            mChanges.tasks.push_back(running.task);
        }
    }
}

void DemoTrader::cancel(OpenOrder &open) {
    mWallet.release(open.order, open.lot);
    open.order.status = kvservice::eOrderCancelled;
    mChanges.orders.push_back(open.order);
}

template <class Condition> void DemoTrader::cancelOrders(Condition isCancelled) {
    for (auto open = mOpen.begin(); open != mOpen.end();) {
        if (isCancelled(open->order)) {
            cancel(*open);
            open = mOpen.erase(open);
        } else {
            ++open;
        }
    }
}

TradeChanges DemoTrader::cancelTask(int id, qint64 time) {
    for (RunningTask &running : mTasks) {
        if (running.task.id == id && running.isListed && running.task.canBeCancelled()) {
            running.task.status = kvservice::eTaskCancelled;
            running.task.cancelled = time;
            cancelOrders([id](const TradeOrder &order) { return order.task == id; });
            mChanges.tasks.push_back(running.task);
        }
    }
    return takeChanges();
}

TradeChanges DemoTrader::takeChanges() {
    TradeChanges changes;
    std::swap(changes, mChanges);
    return changes;
}

} // namespace terminal
