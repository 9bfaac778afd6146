// What the trade service answers.

#include "terminal/trade/TradeService.h"

#include "host/services/CStockManager.h"
#include "terminal/market/MarketDate.h"
#include "terminal/trade/TradeFigures.h"
#include "terminal/trade/TradeTexts.h"

#include <boost/make_shared.hpp>

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

} // namespace

TradeService::TradeService(CMarketStore &store, MarketFeed &feed, const SimulatedClock &clock)
    : mMarket(store), mStore(store), mFeed(feed), mClock(clock), mStrategies(mStore.strategies()),
      mStocks(mStore.instruments()) {
    for (const TradeAccount &account : mStore.accounts()) {
        mAccounts[account.id] = account;
    }
    for (const DemoAccount &demo : demoAccounts()) {
        mAccounts[demo.account.id] = demo.account;
        mPending.accounts.push_back(demo.account);
        mDesks.emplace_back();
        mDesks.back().plan = &demo;
    }
}

TradeService::~TradeService() {
    stop();
}

int TradeService::runningDay(const std::string &instrument) const {
    const std::shared_ptr<const Catalogue> catalogue = mMarket.catalogue();
    const Instrument *known = catalogue->find(QString::fromStdString(instrument));
    const QString market = known ? known->market : QStringLiteral("SH");
    return dayOf(catalogue->calendar(market).dayAt(mClock.now(), catalogue->nightMarkets.contains(market)));
}

template <class Use> void TradeService::withBook(int day, Use use) {
    std::unique_lock<std::mutex> hold(mLock);
    auto book = mBooks.find(day);
    if (book == mBooks.end()) {
        hold.unlock();
        const TradeChanges records = mStore.read(day);
        if (records.isEmpty()) {
            return;
        }
        TradeBook fresh;
        fresh.put(records);
        hold.lock();
        book = mBooks.emplace(day, std::move(fresh)).first; // or the one that came meanwhile
    }
    use(book->second);
}

TC::CLinkageManager::Records<kvservice::COrderDetail>
TradeService::getOrderDetails(int date, const std::string &instrument, const Keys &accounts) {
    Records<kvservice::COrderDetail> records;
    withBook(dayOf(dateOf(date)), [&](const TradeBook &book) { records = book.orders(instrument, accounts); });
    return records;
}

TC::CLinkageManager::Records<kvservice::CDealDetail>
TradeService::getDealDetails(int date, const std::string &instrument, const Keys &accounts) {
    Records<kvservice::CDealDetail> records;
    withBook(dayOf(dateOf(date)), [&](const TradeBook &book) { records = book.deals(instrument, accounts); });
    return records;
}

TC::CLinkageManager::Records<kvservice::CTaskDetail> TradeService::getTaskDetails(const std::string &instrument,
                                                                                  const Keys &accounts) {
    Records<kvservice::CTaskDetail> records;
    withBook(runningDay(instrument),
             [&](const TradeBook &book) { records = book.tasks(instrument, accounts); });
    return records;
}

long long TradeService::getTaskItemFinishNumber(const boost::shared_ptr<kvservice::CTaskDetail> &task,
                                                const std::string &instrument) {
    if (!task) {
        return 0;
    }
    std::lock_guard<std::mutex> hold(mLock);
    for (auto book = mBooks.rbegin(); book != mBooks.rend(); ++book) {
        if (const TradeTask *known = book->second.task(task->mTaskId)) {
            long long finished = 0;
            for (const TradeTaskItem &item : known->items) {
                finished += item.instrument() == instrument ? item.finished : 0;
            }
            return finished;
        }
    }
    return 0;
}

/// Begins with the day's own sessions when one of the instruments has no night: its axis has no place for it.
std::vector<TradeFigures> TradeService::figures(const Keys &instruments, const Keys &accounts,
                                                const Keys &strategies, bool filter) {
    const qint64 now = mClock.now();
    std::vector<TradedInstrument> traded;
    for (const std::string &instrument : instruments) {
        const int day = runningDay(instrument);
        TradedInstrument one;
        withBook(day, [&](const TradeBook &book) {
            for (const TradeDeal &deal : book.dealsOf(instrument, accounts, strategies, filter)) {
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

TC::CLinkageManager::TimedAmounts TradeService::getTotalBuySellAmounts(const Keys &instruments,
                                                                       const Keys &accounts,
                                                                       const Keys &strategies, bool filter) {
    TimedAmounts amounts;
    for (const TradeFigures &at : figures(instruments, accounts, strategies, filter)) {
        amounts[minuteOf(at.time)] = {at.bought, at.sold};
    }
    return amounts;
}

TC::CLinkageManager::TimedValues TradeService::getTotalProfits(const Keys &instruments, const Keys &accounts,
                                                               const Keys &strategies, bool filter) {
    TimedValues profits;
    if (!isWanted(mProfitWanted)) {
        return profits;
    }
    for (const TradeFigures &at : figures(instruments, accounts, strategies, filter)) {
        profits[minuteOf(at.time)] = at.profit;
    }
    return profits;
}

TC::CLinkageManager::TimedValues TradeService::getTotalBalances(const Keys &instruments, const Keys &accounts,
                                                                const Keys &strategies, bool filter) {
    TimedValues balances;
    if (!isWanted(mBalanceWanted)) {
        return balances;
    }
    for (const TradeFigures &at : figures(instruments, accounts, strategies, filter)) {
        balances[minuteOf(at.time)] = at.balance;
    }
    return balances;
}

bool TradeService::isWanted(const bool &calculator) {
    const std::lock_guard<std::mutex> hold(mLock);
    return calculator;
}

double TradeService::largestAmplitude(const Keys &instruments, const Keys &accounts,
                                      TradeBook::Span (TradeBook::*span)(const std::string &, const Keys &)
                                          const) {
    double largest = 0.0;
    for (const std::string &instrument : instruments) {
        TradeBook::Span prices;
        withBook(runningDay(instrument),
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

double TradeService::getOrderAmplitude(const Keys &instruments, const Keys &accounts) {
    return largestAmplitude(instruments, accounts, &TradeBook::orderSpan);
}

double TradeService::getDealAmplitude(const Keys &instruments, const Keys &accounts) {
    return largestAmplitude(instruments, accounts, &TradeBook::dealSpan);
}

std::vector<boost::shared_ptr<kvservice::CAccountInfo>> TradeService::getAccounts() {
    std::lock_guard<std::mutex> hold(mLock);
    std::vector<boost::shared_ptr<kvservice::CAccountInfo>> accounts;
    for (const auto &entry : mAccounts) {
        auto info = boost::make_shared<kvservice::CAccountInfo>();
        info->mAccountId = entry.second.id;
        info->mAccountName = entry.second.name;
        accounts.push_back(info);
    }
    return accounts;
}

bool TradeService::getAccounts(const QList<QString> &names, Keys &accounts) {
    std::lock_guard<std::mutex> hold(mLock);
    accounts.clear();
    for (const QString &name : names) {
        const std::string wanted = name.toStdString();
        for (const auto &entry : mAccounts) {
            if (entry.second.id == wanted || entry.second.name == wanted) {
                accounts.insert(entry.second.id);
            }
        }
    }
    return !accounts.empty();
}

std::vector<std::string> TradeService::getAccountIds(int type) {
    std::lock_guard<std::mutex> hold(mLock);
    std::vector<std::string> ids;
    for (const auto &entry : mAccounts) {
        if (entry.second.type == type) {
            ids.push_back(entry.second.id);
        }
    }
    return ids;
}

TC::CLinkageManager::Keys TradeService::getStrategys() {
    std::lock_guard<std::mutex> hold(mLock);
    return mStrategies;
}

TC::CLinkageManager::Keys TradeService::getStocks() {
    std::lock_guard<std::mutex> hold(mLock);
    return mStocks;
}

void TradeService::setWanted(bool &calculator, bool wanted) {
    std::lock_guard<std::mutex> hold(mLock);
    if (calculator != wanted) {
        calculator = wanted;
        mNotices.datas = true; // the series comes or goes
        mAwake = true;
        mSignal.notify_all();
    }
}

void TradeService::startProfitCalculator() {
    setWanted(mProfitWanted, true);
}

void TradeService::stopProfitCalculator() {
    setWanted(mProfitWanted, false);
}

void TradeService::startBalanceCalculator() {
    setWanted(mBalanceWanted, true);
}

void TradeService::stopBalanceCalculator() {
    setWanted(mBalanceWanted, false);
}

QString TradeService::getTaskStatusText(int status) {
    return taskStatusText(status);
}

QString TradeService::getPriceTypeText(int priceType) {
    return priceTypeText(priceType);
}

QString TradeService::getOperationText(int operation) {
    return operationText(operation);
}

QString TradeService::getUnitText(const std::string &market, const std::string &code) {
    const QString word = QString::fromStdString(market);
    return unitText(mMarket.catalogue()->find(word + QString::fromStdString(code)), word);
}

} // namespace terminal
