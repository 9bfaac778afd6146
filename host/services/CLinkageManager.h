#pragma once

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
class CLinkageManager {
public:
    using Keys = std::set<std::string>;
    template <class Record>
    using Records = std::map<std::string, std::map<std::string, boost::shared_ptr<Record>>>; ///< account, key
    using TimedAmounts = std::map<int, std::pair<double, double>>; ///< minute to cumulative (buy, sell)
    using TimedValues = std::map<int, double>; ///< minute to value
    using ChangeSignal = boost::signals2::signal<void(const std::vector<std::string> &)>; ///< instrument keys
    using PlainSignal = boost::signals2::signal<void()>;

    virtual ~CLinkageManager() = default;

    /// Whether trade data are shown on charts at all.
    virtual bool isEnabled() = 0;

    virtual Records<kvservice::COrderDetail> getOrderDetails(int date, const std::string &instrument,
                                                             const Keys &accounts) = 0;
    virtual Records<kvservice::CDealDetail> getDealDetails(int date, const std::string &instrument,
                                                           const Keys &accounts) = 0;
    virtual Records<kvservice::CTaskDetail> getTaskDetails(const std::string &instrument,
                                                           const Keys &accounts) = 0;
    /// Filled number of an instrument's item of a task.
    virtual long long getTaskItemFinishNumber(const boost::shared_ptr<kvservice::CTaskDetail> &task,
                                              const std::string &instrument) = 0;
    /// Cumulative amounts per minute of the day; `filter` restricts them to the strategies.
    virtual TimedAmounts getTotalBuySellAmounts(const Keys &instruments, const Keys &accounts,
                                                const Keys &strategies, bool filter) = 0;
    virtual TimedValues getTotalProfits(const Keys &instruments, const Keys &accounts, const Keys &strategies,
                                        bool filter) = 0;
    virtual TimedValues getTotalBalances(const Keys &instruments, const Keys &accounts, const Keys &strategies,
                                         bool filter) = 0;
    /// Largest relative distance of the user's order or deal prices from the previous close.
    virtual double getOrderAmplitude(const Keys &instruments, const Keys &accounts) = 0;
    virtual double getDealAmplitude(const Keys &instruments, const Keys &accounts) = 0;

    virtual std::vector<boost::shared_ptr<kvservice::CAccountInfo>> getAccounts() = 0;
    /// Those of the named accounts that exist; false when there are none.
    virtual bool getAccounts(const QList<QString> &names, Keys &accounts) = 0;
    virtual std::vector<std::string> getStrategys() = 0;

    virtual void importOrder(const std::string &account, const std::string &instrument, const std::string &key,
                             double price, int volume, long long time, int direction) = 0;
    virtual void importDeal(const std::string &account, const std::string &instrument, const std::string &key,
                            double price, int volume, long long time, int direction) = 0;
    virtual void clearImportData() = 0;
    virtual void cancelTask(int taskId, const QString &text) = 0;

    /// Orders, deals or tasks of these instruments changed.
    ChangeSignal sigLinkageChanged;
    /// Tasks of these instruments changed.
    ChangeSignal sigTaskChanged;
    PlainSignal sigAccountsChanged;
    PlainSignal sigStrategysChanged;
};

} // namespace TC

namespace kvservice {

/// Side of an order or deal: direction 48 buys and 49 sells. The offset flag is the exchange's and does not
/// change the side.
bool isBuyByDirection(int direction, int offset);

struct DataHelper {
    /// Whether a task item's operation buys.
    static bool isBuy(EOperationType operation);
};

} // namespace kvservice
