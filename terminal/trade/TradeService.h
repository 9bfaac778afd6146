#pragma once

#include "host/services/CLinkageManager.h"
#include "terminal/market/MarketAlarm.h"
#include "terminal/market/MarketFeed.h"
#include "terminal/market/SimulatedClock.h"
#include "terminal/threads/Worker.h"
#include "terminal/trade/ImportedTrade.h"
#include "terminal/trade/TradeCurves.h"
#include "terminal/trade/TradeDesks.h"
#include "terminal/trade/TradeImportNotes.h"
#include "terminal/trade/TradeLedger.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <set>
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
    static constexpr qint64 kSettled = TradeDesks::kSettled;

    /// The store has to be open. All three have to outlive the service.
    TradeService(CMarketStore &store, MarketFeed &feed, const SimulatedClock &clock);
    ~TradeService() override;

    /// Runs on a thread of its own until stop().
    void start();
    /// Ends that thread, when everything is written. No signal comes afterwards.
    void stop();
    /// Trades what the clock's time has brought, writes it and signals, on the calling thread. For a caller without
    /// the thread. Answers the market time at which there is more to do.
    qint64 advance();
    /// A chart is about to ask for the records of a day: it is read by a thread of its own meanwhile. Does not wait for
    /// whoever is at the records. Before start() and after stop() nothing is done.
    void readAhead(int day);
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

    /// What is no sound line is left out, with a line in the log; see ImportedTrade. An account that is not known yet is added; an empty key becomes a new one; the key of an earlier
    /// import on the same day and instrument replaces that one.
    void importOrder(const std::string &account, const std::string &instrument, const std::string &key,
                     double price, int volume, long long time, int direction) override;
    void importDeal(const std::string &account, const std::string &instrument, const std::string &key,
                    double price, int volume, long long time, int direction) override;
    void clearImportData() override;
    /// What becomes of the lines that are imported.
    TradeImportNotes &importNotes() { return mImportNotes; }
    /// Does nothing for a task that cannot be cancelled.
    void cancelTask(int taskId, const QString &text) override;

    QString getTaskStatusText(int status) override;
    QString getPriceTypeText(int priceType) override;
    QString getOperationText(int operation) override;
    QString getUnitText(const std::string &market, const std::string &code) override;

private:
    void run();
    void signalChanges();
    void readWanted(int day);
    template <class Record> void import(const ImportedTrade &imported);
    void tellChoice(bool isAnother);

    CMarketStore &mMarket;
    const SimulatedClock &mClock;
    TradeLedger mLedger;
    TradeCurves mCurves;
    std::mutex mTrading; ///< kept while the desks are at work; taken before all others
    TradeDesks mDesks;
    std::atomic<int> mImportNumber{0};
    TradeImportNotes mImportNotes;

    std::mutex mLock; ///< guards what follows
    std::vector<TradeCancel> mCancels; ///< asked for, not done yet

    std::set<int> mReadAhead; ///< days that wait for the reader
    std::unique_ptr<Worker>
        mReader; ///< of days that are about to be asked for; null while the thread is not there
    std::thread mThread;
    std::atomic<bool> mStopping{false};
    MarketAlarm mAlarm{mClock};
    int mListening; ///< to the store
};

} // namespace terminal
