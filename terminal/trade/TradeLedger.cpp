#include "terminal/trade/TradeLedger.h"

#include "terminal/market/MarketDate.h"

#include <QtDebug>

#include <utility>

namespace terminal {

int tradingDayAt(const Catalogue &catalogue, const std::string &instrument, qint64 time) {
    const Instrument *known = catalogue.find(QString::fromStdString(instrument));
    const QString market = known ? known->market : QStringLiteral("SH");
    return dayOf(catalogue.calendar(market).dayAt(time, catalogue.nightMarkets.contains(market)));
}

TradeLedger::TradeLedger(CMarketStore &store) : mStore(store), mStrategies(mStore.strategies()) {
    for (const TradeAccount &account : mStore.accounts()) {
        mAccounts[account.id] = account;
    }
}

// What is known

TradeBook *TradeLedger::bookOf(int day, std::unique_lock<std::mutex> &hold) {
    for (;;) {
        if (TradeBook *known = mBooks.find(day)) {
            return known;
        }
        const quint64 version = mBooks.version(day);
        hold.unlock();
        QString trouble;
        std::optional<TradeBook> read = readBook(day, trouble);
        hold.lock();
        if (trouble != mReadTrouble && !trouble.isEmpty()) {
            qWarning("%s", qPrintable(trouble));
        }
        mReadTrouble = trouble;
        if (!read) {
            return mBooks.find(day);
        }
        if (version != mBooks.version(day)) {
            continue; // what was read may be old
        }
        if (mIsForgettingImports) {
            read->forgetImports();
        }
        return &mBooks.add(day, std::move(*read)); // an empty one too: it is not read again
    }
}

std::optional<TradeBook> TradeLedger::readBook(int day, QString &trouble) {
    const std::optional<TradeChanges> records = mStore.read(day, trouble);
    if (!records) {
        return std::nullopt;
    }
    TradeBook book;
    book.put(*records);
    return book;
}

TradeBook &TradeLedger::bookToChange(int day, std::unique_lock<std::mutex> &hold) {
    TradeBook *known = bookOf(day, hold);
    TradeBook &book = known ? *known : mBooks.addPart(day);
    mBooks.noteChange(day);
    return book;
}

long long TradeLedger::finishedOf(int task, const std::string &instrument) const {
    std::lock_guard<std::mutex> hold(mLock);
    long long finished = 0;
    if (const TradeTask *known = mBooks.task(task)) {
        for (const TradeTaskItem &item : known->items) {
            finished += item.instrument() == instrument ? item.finished : 0;
        }
    }
    return finished;
}

size_t TradeLedger::daysInMemory() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mBooks.size();
}

std::vector<TradeAccount> TradeLedger::accounts() const {
    std::lock_guard<std::mutex> hold(mLock);
    std::vector<TradeAccount> all;
    for (const auto &entry : mAccounts) {
        all.push_back(entry.second);
    }
    return all;
}

TradeLedger::Keys TradeLedger::strategies() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mStrategies;
}

TradeLedger::Keys TradeLedger::stocks() {
    readStocks();
    std::lock_guard<std::mutex> hold(mLock);
    return mStocks;
}

/// The store is asked at the first need of them, not at every start: it looks at each of its records.
void TradeLedger::readStocks() {
    const auto areRead = [this] {
        std::lock_guard<std::mutex> hold(mLock);
        return mAreStocksRead;
    };
    if (areRead()) {
        return;
    }
    Keys read = mStore.instruments();
    std::lock_guard<std::mutex> hold(mLock);
    if (!std::exchange(mAreStocksRead, true)) { // by nobody meanwhile
        mStocks.merge(read);
    }
}

std::set<int> TradeLedger::daysFrom(const std::string &account, int day) {
    std::set<int> days = mStore.ownDaysFrom(account, day);
    std::lock_guard<std::mutex> hold(mLock);
    days.merge(mBooks.daysFrom(day));
    return days;
}

// Changes

void TradeLedger::addAccountLocked(const TradeAccount &account) {
    mAccounts[account.id] = account;
    TradeBatch batch;
    batch.accounts.push_back(account);
    mPending.append(std::move(batch));
}

void TradeLedger::addAccount(const TradeAccount &account) {
    std::lock_guard<std::mutex> hold(mLock);
    addAccountLocked(account);
}

void TradeLedger::enter(int day, TradeChanges changes) {
    if (changes.isEmpty()) {
        return;
    }
    const Touched touched(changes);
    TradeBook records;
    records.put(changes);
    TradeBatch batch;
    batch.changes = std::move(changes);
    Hold hold(*this);
    bookToChange(day, hold.lock).take(records);
    mPending.append(std::move(batch));
    noteChanges(touched);
}

void TradeLedger::enterCancel(const TradeCancel &cancel) {
    TradeBatch batch;
    batch.cancels.push_back(cancel);
    std::lock_guard<std::mutex> hold(mLock);
    mPending.append(std::move(batch));
}

template <class Record> void TradeLedger::importRecord(const Record &record, const TradeAccount &account) {
    TradeBatch batch;
    if constexpr (std::is_same_v<Record, TradeOrder>) {
        batch.changes.orders.push_back(record);
    } else {
        batch.changes.deals.push_back(record);
    }
    const Touched touched(batch.changes);
    Hold hold(*this);
    bookToChange(record.day, hold.lock).put(record);
    if (mAccounts.count(account.id) == 0) {
        addAccountLocked(account);
        mNotices.accounts = true;
    }
    mPending.append(std::move(batch));
    noteChanges(touched);
}

void TradeLedger::import(const TradeOrder &order, const TradeAccount &account) {
    importRecord(order, account);
}

void TradeLedger::import(const TradeDeal &deal, const TradeAccount &account) {
    importRecord(deal, account);
}

void TradeLedger::refuse(const char *reason) {
    std::lock_guard<std::mutex> hold(mLock);
    ++mRefused;
    mRefusedFor = reason;
}

void TradeLedger::forgetDay(const std::string &account, int day) {
    TradeBatch batch;
    batch.forgottenDays.insert({account, day});
    TradeBook forgotten; // freed without the lock
    Hold hold(*this);
    TradeBook &book = bookToChange(day, hold.lock);
    const Keys instruments = book.instruments();
    forgotten = book.forgetOwn(account);
    mPending.append(std::move(batch));
    mNotices.linkage.insert(instruments.begin(), instruments.end());
    mNotices.tasks.insert(instruments.begin(), instruments.end());
}

void TradeLedger::forgetImports() {
    TradeBatch batch;
    batch.forgetImports = true;
    readStocks();
    std::lock_guard<std::mutex> hold(mLock);
    mBooks.forgetImports();
    mIsForgettingImports = true;
    mNotices.linkage.insert(mStocks.begin(), mStocks.end()); // of days that are not in memory, too
    for (auto account = mAccounts.begin(); account != mAccounts.end();) {
        account =
            account->second.source == TradeSource::Imported ? mAccounts.erase(account) : std::next(account);
    }
    mPending.append(std::move(batch));
    mNotices.accounts = true;
    mNotices.datas = true;
}

void TradeLedger::finishDay(const std::string &account, int day) {
    TradeBatch batch;
    batch.finishedDays.insert({account, day});
    std::lock_guard<std::mutex> hold(mLock);
    mPending.append(std::move(batch));
}

// What is to be signalled

TradeLedger::Touched::Touched(const TradeChanges &changes) {
    const auto touch = [this](const std::string &instrument, const std::string &strategy) {
        instruments.insert(instrument);
        if (!strategy.empty()) {
            strategies.insert(strategy);
        }
    };
    for (const TradeOrder &order : changes.orders) {
        touch(order.instrument, order.strategy);
    }
    for (const TradeDeal &deal : changes.deals) {
        touch(deal.instrument, deal.strategy);
    }
    for (const TradeTask &task : changes.tasks) {
        for (const TradeTaskItem &item : task.items) {
            touch(item.instrument(), task.strategy);
            tasks.insert(item.instrument());
        }
    }
}

void TradeLedger::noteChanges(const Touched &touched) {
    for (const std::string &instrument : touched.instruments) {
        mNotices.linkage.insert(instrument);
        mNotices.datas = true;
        mNotices.stocks = mStocks.insert(instrument).second || mNotices.stocks;
    }
    for (const std::string &strategy : touched.strategies) {
        mNotices.strategies = mStrategies.insert(strategy).second || mNotices.strategies;
    }
    mNotices.tasks.insert(touched.tasks.begin(), touched.tasks.end());
}

void TradeLedger::noteNewDay(int day) {
    std::lock_guard<std::mutex> hold(mLock);
    mNotices.newDays.insert(dateOf(day).toString(QStringLiteral("yyyyMMdd")).toStdString());
}

void TradeLedger::noteFigures() {
    std::lock_guard<std::mutex> hold(mLock);
    mNotices.datas = true;
}

TradeNotices TradeLedger::takeNotices() {
    std::lock_guard<std::mutex> hold(mLock);
    return std::exchange(mNotices, TradeNotices());
}

// Writing

void TradeLedger::tellRefused() {
    int refused = 0;
    const char *reason = "";
    {
        std::lock_guard<std::mutex> hold(mLock);
        refused = std::exchange(mRefused, 0);
        reason = mRefusedFor;
    }
    if (refused > 0) {
        qWarning("import: %d trade records are left out, the last one because of this: %s", refused, reason);
    }
}

bool TradeLedger::write() {
    tellRefused();
    TradeBatch batch;
    {
        std::lock_guard<std::mutex> hold(mLock);
        if (mPending.isEmpty()) {
            return true;
        }
        std::swap(batch, mPending);
        mBooks.beginWriting();
    }
    const QString trouble = mStore.write(batch);
    if (!trouble.isEmpty() && trouble != mTrouble && trouble != mStore.busyText()) {
        qWarning("%s", qPrintable(trouble));
    }
    mTrouble = trouble;
    const bool reread = trouble.isEmpty() && batch.forgetImports;
    const Keys stocks = reread ? mStore.instruments() : Keys();
    const Hold hold(*this);
    mBooks.endWriting(trouble.isEmpty(), batch.forgetImports);
    mIsForgettingImports = mPending.forgetImports || (batch.forgetImports && !trouble.isEmpty());
    if (!trouble.isEmpty()) {
        batch.append(std::move(mPending));
        mPending = std::move(batch);
    } else if (reread && mPending.isEmpty()) {
        mStocks = stocks;
        mAreStocksRead = true;
        mNotices.stocks = true;
    }
    return mPending.isEmpty();
}

} // namespace terminal
