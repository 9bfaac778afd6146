// What the user brings to the trade service: imported records and cancelled tasks.

#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketSessions.h"
#include "terminal/trade/TradeService.h"

#include <cmath>

namespace terminal {
namespace {

constexpr long long kFirstTime = 86400; ///< seconds since the epoch
constexpr long long kLastTime = 2147385600; ///< 2038-01-18; days are 32-bit numbers

} // namespace

/// Why a record is left out; null when it is taken.
const char *TradeService::troubleOf(const ImportedRecord &record) const {
    if (record.account.empty()) {
        return "no account";
    }
    if (record.instrument.empty()) {
        return "no instrument";
    }
    if (!std::isfinite(record.price) || record.price <= 0.0 || record.price >= TC::kUnsetValue) {
        return "the price is no positive number";
    }
    if (record.volume <= 0) {
        return "the volume is no positive whole number";
    }
    if (record.time < kFirstTime || record.time > kLastTime) {
        return "the time cannot be read";
    }
    if (record.direction != kBuy && record.direction != kSell) {
        return "the direction is neither 48, buy, nor 49, sell";
    }
    return nullptr;
}

/// Under the lock.
void TradeService::addImportedAccount(const std::string &account, const std::string &instrument) {
    if (mAccounts.count(account) > 0) {
        return;
    }
    const Instrument *known = mMarket.catalogue()->find(QString::fromStdString(instrument));
    const bool futures = known && isFuturesMarket(known->market);
    const TradeAccount added{account, account, futures ? kFutureAccounts : kStockAccounts,
                             TradeSource::Imported};
    mAccounts[account] = added;
    TradeBatch batch;
    batch.accounts.push_back(added);
    mPending.append(batch);
    mNotices.accounts = true;
}

template <class Record> void TradeService::import(const ImportedRecord &imported, Record record) {
    std::unique_lock<std::mutex> hold(mLock);
    if (const char *trouble = troubleOf(imported)) {
        ++mRefused;
        mRefusedFor = trouble;
        return;
    }
    record.account = imported.account;
    record.instrument = imported.instrument;
    record.key = imported.key.empty()
                     ? "import-" + std::to_string(imported.time) + "-" + std::to_string(++mImportNumber)
                     : imported.key;
    record.price = imported.price;
    record.volume = imported.volume;
    record.time = imported.time * 1000;
    record.direction = imported.direction;
    record.source = TradeSource::Imported;
    hold.unlock();
    const std::shared_ptr<const Catalogue> catalogue = mMarket.catalogue();
    const Instrument *known = catalogue->find(QString::fromStdString(record.instrument));
    const QString market = known ? known->market : QStringLiteral("SH");
    record.day =
        dayOf(catalogue->calendar(market).dayAt(record.time, catalogue->nightMarkets.contains(market)));
    hold.lock();
    loadedBook(record.day, hold).put(record);
    addImportedAccount(record.account, record.instrument);
    TradeBatch batch;
    if constexpr (std::is_same_v<Record, TradeOrder>) {
        batch.changes.orders.push_back(record);
    } else {
        batch.changes.deals.push_back(record);
    }
    mPending.append(batch);
    notice(batch.changes);
    mAwake = true;
    mSignal.notify_all();
}

void TradeService::importOrder(const std::string &account, const std::string &instrument,
                               const std::string &key, double price, int volume, long long time,
                               int direction) {
    import({account, instrument, key, price, volume, time, direction}, TradeOrder());
}

void TradeService::importDeal(const std::string &account, const std::string &instrument, const std::string &key,
                              double price, int volume, long long time, int direction) {
    import({account, instrument, key, price, volume, time, direction}, TradeDeal());
}

void TradeService::clearImportData() {
    std::lock_guard<std::mutex> hold(mLock);
    for (auto &book : mBooks) {
        const Keys instruments = book.second.instruments();
        mNotices.linkage.insert(instruments.begin(), instruments.end());
        book.second.forgetImports();
    }
    for (auto account = mAccounts.begin(); account != mAccounts.end();) {
        account =
            account->second.source == TradeSource::Imported ? mAccounts.erase(account) : std::next(account);
    }
    TradeBatch batch;
    batch.forgetImports = true;
    mPending.append(batch);
    mNotices.accounts = true;
    mNotices.datas = true;
    mAwake = true;
    mSignal.notify_all();
}

void TradeService::cancelTask(int taskId, const QString &text) {
    std::lock_guard<std::mutex> hold(mLock);
    mCancels.push_back({taskId, 0, mClock.now(), text.toStdString()});
    mAwake = true;
    mSignal.notify_all();
}

} // namespace terminal
