#pragma once

#include "host/services/CLinkageManager.h"
#include "terminal/market/MarketFeed.h"
#include "terminal/market/SimulatedClock.h"
#include "terminal/trade/DemoTrader.h"
#include "terminal/trade/TradeBook.h"
#include "terminal/trade/TradeStore.h"

#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace terminal {

/// The user's trading: accounts of a demonstration that trade the simulated market as its clock goes, and what the
/// user imports. Past days come from the store. Every operation may be called from any thread and answers at once
/// with what is known; the service's own thread trades, writes to the store and signals.
///
/// A minute is traded a little after its end, when its prices are known for good. A day that is started in the
/// middle, or anew, is traded up to the clock's time again, with the same records and the user's cancellations.
class TradeService : public TC::CLinkageManager {
public:
    /// Milliseconds after its end at which a minute is traded.
    static constexpr qint64 kSettled = 35000;

    /// The store has to be open. All three have to outlive the service.
    TradeService(CMarketStore &store, MarketFeed &feed, const SimulatedClock &clock);
    ~TradeService() override;

    /// Runs on a thread of its own until stop().
    void start();
    /// Ends that thread, when everything is written. No signal comes afterwards.
    void stop();
    /// Trades what the clock's time has brought, writes it and signals, on the calling thread. For a caller without
    /// the thread.
    void advance();
    /// Records the newest past day that is not complete yet; false when there is none. The thread does so by itself.
    bool recordPastDay();

    bool isEnabled() override { return true; }
    Records<kvservice::COrderDetail> getOrderDetails(int date, const std::string &instrument,
                                                     const Keys &accounts) override;
    Records<kvservice::CDealDetail> getDealDetails(int date, const std::string &instrument,
                                                   const Keys &accounts) override;
    /// Tasks of the running day.
    Records<kvservice::CTaskDetail> getTaskDetails(const std::string &instrument,
                                                   const Keys &accounts) override;
    /// The sum over all items of that instrument, as of now; 0 for an unknown task.
    long long getTaskItemFinishNumber(const boost::shared_ptr<kvservice::CTaskDetail> &task,
                                      const std::string &instrument) override;
    /// See TradeFigures; of the running day, every minute of it up to now. Nothing when there are no deals.
    TimedAmounts getTotalBuySellAmounts(const Keys &instruments, const Keys &accounts, const Keys &strategies,
                                        bool filter) override;
    TimedValues getTotalProfits(const Keys &instruments, const Keys &accounts, const Keys &strategies,
                                bool filter) override;
    TimedValues getTotalBalances(const Keys &instruments, const Keys &accounts, const Keys &strategies,
                                 bool filter) override;
    /// Of the running day; 0 without records.
    double getOrderAmplitude(const Keys &instruments, const Keys &accounts) override;
    double getDealAmplitude(const Keys &instruments, const Keys &accounts) override;

    std::vector<boost::shared_ptr<kvservice::CAccountInfo>> getAccounts() override;
    bool getAccounts(const QList<QString> &names, Keys &accounts) override;
    std::vector<std::string> getAccountIds(int type) override;
    Keys getStrategys() override;
    Keys getStocks() override;

    // Profits and balances are worked out when they are asked for while they are wanted; then their change is told
    // with every minute.
    void startProfitCalculator() override;
    void stopProfitCalculator() override;
    void startBalanceCalculator() override;
    void stopBalanceCalculator() override;

    /// Left out, with a line in the log: records without account or instrument, with a price that is no positive
    /// number, without volume, with another direction than 48 and 49, and with a time before 1970-01-02 or after
    /// 2038-01-18. An account that is not known yet is added; an empty key becomes a new one; the key of an earlier
    /// import on the same day and instrument replaces that one.
    void importOrder(const std::string &account, const std::string &instrument, const std::string &key,
                     double price, int volume, long long time, int direction) override;
    void importDeal(const std::string &account, const std::string &instrument, const std::string &key,
                    double price, int volume, long long time, int direction) override;
    void clearImportData() override;
    /// Does nothing for a task that cannot be cancelled.
    void cancelTask(int taskId, const QString &text) override;

    QString getTaskStatusText(int status) override;
    QString getPriceTypeText(int priceType) override;
    QString getOperationText(int operation) override;
    QString getUnitText(const std::string &market, const std::string &code) override;

private:
    /// What is to be signalled.
    struct Notices {
        Keys linkage;
        Keys tasks;
        bool accounts = false;
        bool strategies = false;
        bool stocks = false;
        bool datas = false;
        Keys newDays;
    };
    /// A demonstration account at work.
    struct Desk {
        const DemoAccount *plan = nullptr;
        std::unique_ptr<DemoTrader> trader;
        std::deque<TradeCancel> cancels; ///< of the day, still to come
        qint64 traded = 0; ///< end of the last minute traded
    };
    /// One line of an import.
    struct ImportedRecord {
        std::string account;
        std::string instrument;
        std::string key;
        double price = 0.0;
        int volume = 0;
        long long time = 0;
        int direction = 0;
    };

    void run();
    void emitNotices();
    void write();

    void trade(Desk &desk, qint64 now);
    void beginDay(Desk &desk, int day);
    void tradeUpTo(Desk &desk, qint64 now);
    void applyCancels(qint64 now);
    void listPastDays();
    void forgetDay(const std::string &account, int day);
    void enter(int day, const TradeChanges &changes);
    int runningDayOf(const DemoAccount &account, qint64 now) const;

    int runningDay(const std::string &instrument) const;
    /// Calls `use` with the records of a day, under the lock; not at all when the day has none.
    template <class Use> void withBook(int day, Use use);
    TradeBook &loadedBook(int day, std::unique_lock<std::mutex> &hold);
    std::vector<TradeFigures> figures(const Keys &instruments, const Keys &accounts, const Keys &strategies,
                                      bool filter);
    // Of one of the two flags below.
    bool isWanted(const bool &calculator);
    void setWanted(bool &calculator, bool wanted);
    double largestAmplitude(const Keys &instruments, const Keys &accounts,
                            TradeBook::Span (TradeBook::*span)(const std::string &, const Keys &) const);

    const char *troubleOf(const ImportedRecord &record) const;
    template <class Record> void import(const ImportedRecord &imported, Record record);
    void addImportedAccount(const std::string &account, const std::string &instrument);
    void notice(const TradeChanges &changes);

    CMarketStore &mMarket;
    TradeStore mStore;
    MarketFeed &mFeed;
    const SimulatedClock &mClock;

    std::mutex mTrading; ///< guards the following; taken before mLock
    std::vector<Desk> mDesks;
    std::deque<std::pair<const DemoAccount *, int>> mPastDays; ///< still to be recorded
    bool mPastDaysKnown = false;
    QString mTrouble; ///< of the last writing

    std::mutex mLock; ///< guards the following; nothing else is called under it
    std::map<int, TradeBook> mBooks;
    std::map<std::string, TradeAccount> mAccounts;
    Keys mStrategies;
    Keys mStocks;
    TradeBatch mPending; ///< not written yet
    std::vector<TradeCancel> mCancels; ///< asked for, not done yet
    Notices mNotices;
    int mRefused = 0; ///< imported records, since this was told last
    const char *mRefusedFor = "";
    int mImportNumber = 0;
    bool mProfitWanted = false;
    bool mBalanceWanted = false;
    bool mStopping = false;
    bool mAwake = false; ///< there is something to do at once

    std::thread mThread;
    std::condition_variable mSignal;
};

} // namespace terminal
