#include "terminal/trade/TradeService.h"

#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketSessions.h"
#include "terminal/threads/BehindWindow.h"
#include "terminal/trade/TradeTexts.h"

#include <boost/make_shared.hpp>

#include <utility>

namespace terminal {
TradeService::TradeService(CMarketStore &store, MarketFeed &feed, const SimulatedClock &clock)
    : mMarket(store), mClock(clock), mLedger(store), mCurves(store, feed, clock, mLedger),
      mDesks(store, feed, mLedger, [this] { return mCurves.isAnyWanted(); }),
      mListening(store.catalogueChanges().add([this] { mAlarm.nudge(); })) {}

TradeService::~TradeService() {
    mMarket.catalogueChanges().remove(mListening);
    stop();
}

// The service's own thread

void TradeService::start() {
    if (mThread.joinable()) {
        return;
    }
    mStopping = false;
    auto reader = std::make_unique<Worker>();
    {
        std::lock_guard<std::mutex> hold(mLock);
        mReader = std::move(reader);
    }
    mThread = std::thread([this] { run(); });
}

void TradeService::stop() {
    if (!mThread.joinable()) {
        return;
    }
    std::unique_ptr<Worker> reader; // ends without the lock
    {
        std::lock_guard<std::mutex> hold(mLock);
        reader = std::move(mReader);
    }
    mStopping = true;
    mAlarm.ring();
    mThread.join();
}

void TradeService::run() {
    leaveProcessor();
    for (bool stopping = false; !stopping; stopping = mStopping) {
        const qint64 due = advance();
        if (!recordPastDay()) {
            mAlarm.waitUntil(due);
        }
    }
    std::lock_guard<std::mutex> trading(mTrading);
    mLedger.write();
}

qint64 TradeService::advance() {
    qint64 due = 0;
    {
        std::lock_guard<std::mutex> trading(mTrading);
        std::vector<TradeCancel> asked;
        {
            std::lock_guard<std::mutex> hold(mLock);
            asked.swap(mCancels);
        }
        due = mDesks.advance(mClock.now(), std::move(asked));
    }
    signalChanges();
    return due;
}

void TradeService::readAhead(int day) {
    std::lock_guard<std::mutex> hold(mLock);
    if (mReader && mReadAhead.insert(day).second) {
        mReader->post([this, day] { readWanted(day); });
    }
}

/// On the reader: only here the ledger is waited for.
void TradeService::readWanted(int day) {
    {
        std::lock_guard<std::mutex> hold(mLock);
        mReadAhead.erase(day);
    }
    mLedger.readAhead(day);
}

bool TradeService::recordPastDay() {
    {
        std::lock_guard<std::mutex> trading(mTrading);
        if (!mDesks.recordPastDay(mClock.now())) {
            return false;
        }
    }
    signalChanges();
    return true;
}

void TradeService::signalChanges() {
    const TradeNotices notices = mLedger.takeNotices();
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

// Records

TC::CLinkageManager::Records<kvservice::COrderDetail>
TradeService::getOrderDetails(int date, const std::string &instrument, const Keys &accounts) {
    Records<kvservice::COrderDetail> records;
    mLedger.withDay(dayOf(dateOf(date)),
                    [&](const TradeBook &book) { records = book.orders(instrument, accounts); });
    return records;
}

TC::CLinkageManager::Records<kvservice::CDealDetail>
TradeService::getDealDetails(int date, const std::string &instrument, const Keys &accounts) {
    Records<kvservice::CDealDetail> records;
    mLedger.withDay(dayOf(dateOf(date)),
                    [&](const TradeBook &book) { records = book.deals(instrument, accounts); });
    return records;
}

TC::CLinkageManager::Records<kvservice::CTaskDetail> TradeService::getTaskDetails(const std::string &instrument,
                                                                                  const Keys &accounts) {
    Records<kvservice::CTaskDetail> records;
    mLedger.withDay(tradingDayAt(*mMarket.catalogue(), instrument, mClock.now()),
                    [&](const TradeBook &book) { records = book.tasks(instrument, accounts); });
    return records;
}

long long TradeService::getTaskItemFinishNumber(const boost::shared_ptr<kvservice::CTaskDetail> &task,
                                                const std::string &instrument) {
    return task ? mLedger.finishedOf(task->mTaskId, instrument) : 0;
}

// Figures

TC::CLinkageManager::TimedAmounts TradeService::getTotalBuySellAmounts(const Keys &instruments,
                                                                       const Keys &accounts,
                                                                       const Keys &strategies, bool filter) {
    return mCurves.amounts({instruments, accounts, strategies, filter});
}

TC::CLinkageManager::TimedValues TradeService::getTotalProfits(const Keys &instruments, const Keys &accounts,
                                                               const Keys &strategies, bool filter) {
    return mCurves.profits({instruments, accounts, strategies, filter});
}

TC::CLinkageManager::TimedValues TradeService::getTotalBalances(const Keys &instruments, const Keys &accounts,
                                                                const Keys &strategies, bool filter) {
    return mCurves.balances({instruments, accounts, strategies, filter});
}

double TradeService::getOrderAmplitude(const Keys &instruments, const Keys &accounts) {
    return mCurves.orderAmplitude(instruments, accounts);
}

double TradeService::getDealAmplitude(const Keys &instruments, const Keys &accounts) {
    return mCurves.dealAmplitude(instruments, accounts);
}

/// With another choice a series comes or goes.
void TradeService::tellChoice(bool isAnother) {
    if (isAnother) {
        mLedger.noteFigures();
        mAlarm.ring();
    }
}

void TradeService::startProfitCalculator() {
    tellChoice(mCurves.wantProfits(true));
}

void TradeService::stopProfitCalculator() {
    tellChoice(mCurves.wantProfits(false));
}

void TradeService::startBalanceCalculator() {
    tellChoice(mCurves.wantBalances(true));
}

void TradeService::stopBalanceCalculator() {
    tellChoice(mCurves.wantBalances(false));
}

// Accounts

std::vector<boost::shared_ptr<kvservice::CAccountInfo>> TradeService::getAccounts() {
    std::vector<boost::shared_ptr<kvservice::CAccountInfo>> accounts;
    for (const TradeAccount &account : mLedger.accounts()) {
        auto info = boost::make_shared<kvservice::CAccountInfo>();
        info->mAccountId = account.id;
        info->mAccountName = account.name;
        accounts.push_back(info);
    }
    return accounts;
}

bool TradeService::getAccounts(const QList<QString> &names, Keys &accounts) {
    accounts.clear();
    for (const TradeAccount &account : mLedger.accounts()) {
        if (names.contains(QString::fromStdString(account.id)) ||
            names.contains(QString::fromStdString(account.name))) {
            accounts.insert(account.id);
        }
    }
    return !accounts.empty();
}

std::vector<std::string> TradeService::getAccountIds(int type) {
    std::vector<std::string> ids;
    for (const TradeAccount &account : mLedger.accounts()) {
        if (account.type == type) {
            ids.push_back(account.id);
        }
    }
    return ids;
}

TC::CLinkageManager::Keys TradeService::getStrategys() {
    return mLedger.strategies();
}

TC::CLinkageManager::Keys TradeService::getStocks() {
    return mLedger.stocks();
}

// What the user brings

template <class Record> void TradeService::import(const ImportedTrade &imported) {
    if (const char *trouble = troubleOf(imported)) {
        mLedger.refuse(trouble);
        mAlarm.nudge();
        mImportNotes.refuse(trouble);
        return;
    }
    mImportNotes.take();
    const std::shared_ptr<const Catalogue> catalogue = mMarket.catalogue();
    const Instrument *known = catalogue->find(QString::fromStdString(imported.instrument));
    const int type = known && isFuturesMarket(known->market) ? kFutureAccounts : kStockAccounts;
    const int day = tradingDayAt(*catalogue, imported.instrument, imported.time * 1000);
    mLedger.import(recordOf<Record>(imported, day, imported.key.empty() ? ++mImportNumber : 0),
                   {imported.account, imported.account, type, TradeSource::Imported});
    mAlarm.ring();
}

void TradeService::importOrder(const std::string &account, const std::string &instrument,
                               const std::string &key, double price, int volume, long long time,
                               int direction) {
    import <TradeOrder>({account, instrument, key, price, volume, time, direction});
}

void TradeService::importDeal(const std::string &account, const std::string &instrument, const std::string &key,
                              double price, int volume, long long time, int direction) {
    import <TradeDeal>({account, instrument, key, price, volume, time, direction});
}

void TradeService::clearImportData() {
    mLedger.forgetImports();
    mAlarm.ring();
}

void TradeService::cancelTask(int taskId, const QString &text) {
    {
        std::lock_guard<std::mutex> hold(mLock);
        mCancels.push_back({taskId, 0, mClock.now(), text.toStdString()});
    }
    mAlarm.ring();
}

// Texts

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
