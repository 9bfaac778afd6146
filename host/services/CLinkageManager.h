#pragma once

#include "host/Export.h"
#include "host/records/CAccountInfo.h"
#include "host/records/CDealDetail.h"
#include "host/records/COrderDetail.h"
#include "host/records/CTaskDetail.h"
#include "host/services/CSingletonT.h"

#include <QList>
#include <QString>
#include <boost/signals2/signal.hpp>

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace TC {

/// The user's trading: accounts, strategies, orders, deals and tasks. Its signals may come on any thread.
///
/// As it is, it stands for a user who has none of them. A host answers what its user has.
class TIMESHARE_EXPORT CLinkageManager {
public:
    using Keys = std::set<std::string>;
    template <class Record>
    using Records = std::map<std::string, std::map<std::string, boost::shared_ptr<Record>>>; ///< account, key
    using TimedAmounts = std::map<int, std::pair<double, double>>; ///< minute to cumulative (buy, sell)
    using TimedValues = std::map<int, double>; ///< minute to value
    using ChangeSignal = boost::signals2::signal<void(const std::vector<std::string> &)>; ///< instrument keys
    using PlainSignal = boost::signals2::signal<void()>;
    using DaySignal = boost::signals2::signal<void(const std::string &)>;

    static constexpr int kFutureAccounts = 1; ///< type of getAccountIds()
    static constexpr int kStockAccounts = 2;

    virtual ~CLinkageManager() = default;

    /// Whether trade data are shown on charts at all.
    virtual bool isEnabled() { return false; }

    /// Orders of a trading day, seconds since the epoch at its midnight, of an instrument's key and accounts.
    virtual Records<kvservice::COrderDetail> getOrderDetails(int, const std::string &, const Keys &) {
        return {};
    }
    virtual Records<kvservice::CDealDetail> getDealDetails(int, const std::string &, const Keys &) {
        return {};
    }
    /// Tasks of the running day, of an instrument's key and accounts.
    virtual Records<kvservice::CTaskDetail> getTaskDetails(const std::string &, const Keys &) { return {}; }
    /// Filled number of an instrument's item of a task.
    virtual long long getTaskItemFinishNumber(const boost::shared_ptr<kvservice::CTaskDetail> &,
                                              const std::string &) {
        return 0;
    }
    /// Cumulative amounts per minute of the day, of instruments, accounts and strategies; the last argument restricts
    /// them to the strategies. The same holds for the two that follow.
    virtual TimedAmounts getTotalBuySellAmounts(const Keys &, const Keys &, const Keys &, bool) { return {}; }
    virtual TimedValues getTotalProfits(const Keys &, const Keys &, const Keys &, bool) { return {}; }
    virtual TimedValues getTotalBalances(const Keys &, const Keys &, const Keys &, bool) { return {}; }
    /// Largest relative distance of the user's order or deal prices from the previous close, of instruments and accounts.
    virtual double getOrderAmplitude(const Keys &, const Keys &) { return 0.0; }
    virtual double getDealAmplitude(const Keys &, const Keys &) { return 0.0; }

    virtual std::vector<boost::shared_ptr<kvservice::CAccountInfo>> getAccounts() { return {}; }
    /// Those of the named accounts that exist; false when there are none.
    virtual bool getAccounts(const QList<QString> &, Keys &accounts) {
        accounts.clear();
        return false;
    }
    /// Ids of the accounts of a type, in the order in which they are listed: 1 futures, 2 stock.
    virtual std::vector<std::string> getAccountIds(int) { return {}; }
    /// Names of the strategies that the user's records come from.
    virtual Keys getStrategys() { return {}; }
    /// Keys of the instruments that have records of the user.
    virtual Keys getStocks() { return {}; }

    /// Profits are wanted from now on, or no longer. Only while they are, getTotalProfits() works them out, and every
    /// change of them is told; otherwise it answers nothing. Neither call is counted: the last one holds.
    virtual void startProfitCalculator() {}
    virtual void stopProfitCalculator() {}
    /// The same for balances.
    virtual void startBalanceCalculator() {}
    virtual void stopBalanceCalculator() {}

    /// Takes a record that came about elsewhere, of an account, an instrument and a key of its own: price, volume, time in
    /// seconds since the epoch, direction as isBuyByDirection() reads it. What the service cannot read it leaves out.
    virtual void importOrder(const std::string &, const std::string &, const std::string &, double, int,
                             long long, int) {}
    virtual void importDeal(const std::string &, const std::string &, const std::string &, double, int,
                            long long, int) {}
    /// Forgets everything imported.
    virtual void clearImportData() {}
    /// Cancels a task that can be cancelled; the text tells on whose behalf.
    virtual void cancelTask(int, const QString &) {}

    // Words of the user interface; a number without a word of its own is shown as a number.
    virtual QString getTaskStatusText(int status) { return QString::number(status); }
    virtual QString getPriceTypeText(int priceType) { return QString::number(priceType); }
    virtual QString getOperationText(int operation) { return QString::number(operation); }
    /// What quantities of an instrument, of a market and a code, are counted in, such as "股" or "手".
    virtual QString getUnitText(const std::string &, const std::string &) { return {}; }

    /// Orders, deals or tasks of these instruments changed.
    ChangeSignal sigLinkageChanged;
    /// Tasks of these instruments changed.
    ChangeSignal sigTaskChanged;
    PlainSignal sigAccountsChanged;
    PlainSignal sigStrategysChanged;
    /// Instruments with records came or went.
    PlainSignal sigStocksChanged;
    /// Records, amounts, profits or balances changed.
    PlainSignal sigDatasChanged;
    /// A market has gone on to its next trading day, told as "yyyyMMdd".
    DaySignal sigNewTradingDay;
};

/// What the user reads for CTaskDetail::mStatus and CTaskItem::mPriceType.
inline QString getTaskStatusQString(int status) {
    return CSingletonT<CLinkageManager>::instance().getTaskStatusText(status);
}
inline QString getPriceTypeQString(int priceType) {
    return CSingletonT<CLinkageManager>::instance().getPriceTypeText(priceType);
}

} // namespace TC

namespace kvservice {

/// Side of an order or deal: direction 48 buys and 49 sells. The offset flag is the exchange's and does not
/// change the side.
TIMESHARE_EXPORT bool isBuyByDirection(int direction, int offset);

struct TIMESHARE_EXPORT DataHelper {
    /// Whether a task item's operation buys.
    static bool isBuy(EOperationType operation);
};

/// What the user reads for an EOperationType, UTF-8.
inline std::string operationValueToString(int operation) {
    return TC::CSingletonT<TC::CLinkageManager>::instance().getOperationText(operation).toStdString();
}
/// What quantities of an instrument are counted in, UTF-8.
inline std::string getStockUnit(const std::string &market, const std::string &code) {
    return TC::CSingletonT<TC::CLinkageManager>::instance().getUnitText(market, code).toStdString();
}

} // namespace kvservice
