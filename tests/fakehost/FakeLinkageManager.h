#pragma once

#include "host/services/CEnhanceDrawManager.h"
#include "host/services/CLinkageManager.h"
#include "tests/fakehost/CallLog.h"

#include <map>

namespace fakehost {

/// Trade records as the test puts them. Maps are by instrument key.
class FakeLinkageManager : public TC::CLinkageManager {
public:
    explicit FakeLinkageManager(CallLog &log) : mLog(log) {}

    bool isEnabled() override { return mEnabled; }
    Records<kvservice::COrderDetail> getOrderDetails(int date, const std::string &instrument,
                                                     const Keys &accounts) override;
    Records<kvservice::CDealDetail> getDealDetails(int date, const std::string &instrument,
                                                   const Keys &accounts) override;
    Records<kvservice::CTaskDetail> getTaskDetails(const std::string &instrument,
                                                   const Keys &accounts) override;
    long long getTaskItemFinishNumber(const boost::shared_ptr<kvservice::CTaskDetail> &task,
                                      const std::string &instrument) override;
    TimedAmounts getTotalBuySellAmounts(const Keys &instruments, const Keys &accounts, const Keys &strategies,
                                        bool filter) override;
    TimedValues getTotalProfits(const Keys &instruments, const Keys &accounts, const Keys &strategies,
                                bool filter) override;
    TimedValues getTotalBalances(const Keys &instruments, const Keys &accounts, const Keys &strategies,
                                 bool filter) override;
    double getOrderAmplitude(const Keys &, const Keys &) override { return mOrderAmplitude; }
    double getDealAmplitude(const Keys &, const Keys &) override { return mDealAmplitude; }
    std::vector<boost::shared_ptr<kvservice::CAccountInfo>> getAccounts() override { return mAccounts; }
    bool getAccounts(const QList<QString> &names, Keys &accounts) override;
    std::vector<std::string> getAccountIds(int type) override {
        mLog.add(QStringLiteral("CLinkageManager::getAccountIds %1").arg(type));
        return mAccountIds[type];
    }
    Keys getStrategys() override { return mStrategys; }
    Keys getStocks() override { return mStocks; }
    void startProfitCalculator() override {
        mLog.add(QStringLiteral("CLinkageManager::startProfitCalculator"));
    }
    void stopProfitCalculator() override { mLog.add(QStringLiteral("CLinkageManager::stopProfitCalculator")); }
    void startBalanceCalculator() override {
        mLog.add(QStringLiteral("CLinkageManager::startBalanceCalculator"));
    }
    void stopBalanceCalculator() override {
        mLog.add(QStringLiteral("CLinkageManager::stopBalanceCalculator"));
    }
    void importOrder(const std::string &account, const std::string &instrument, const std::string &key,
                     double price, int volume, long long time, int direction) override;
    void importDeal(const std::string &account, const std::string &instrument, const std::string &key,
                    double price, int volume, long long time, int direction) override;
    void clearImportData() override { mLog.add(QStringLiteral("CLinkageManager::clearImportData")); }
    void cancelTask(int taskId, const QString &text) override {
        mLog.add(QStringLiteral("CLinkageManager::cancelTask %1 %2").arg(taskId).arg(text));
    }

    QString getTaskStatusText(int status) override { return QStringLiteral("status %1").arg(status); }
    QString getPriceTypeText(int priceType) override { return QStringLiteral("price %1").arg(priceType); }
    QString getOperationText(int operation) override { return QStringLiteral("operation %1").arg(operation); }
    QString getUnitText(const std::string &market, const std::string &code) override {
        return QString::fromStdString("unit " + market + code);
    }

    bool mEnabled = false;
    std::map<std::string, Records<kvservice::COrderDetail>> mOrders;
    std::map<std::string, Records<kvservice::CDealDetail>> mDeals;
    std::map<std::string, Records<kvservice::CTaskDetail>> mTasks;
    std::map<int, long long> mFinished; ///< by task id
    TimedAmounts mAmounts;
    TimedValues mProfits;
    TimedValues mBalances;
    double mOrderAmplitude = 0.0;
    double mDealAmplitude = 0.0;
    std::vector<boost::shared_ptr<kvservice::CAccountInfo>> mAccounts;
    std::map<int, std::vector<std::string>> mAccountIds; ///< by type
    Keys mStrategys;
    Keys mStocks;

private:
    void addTotal(const char *call, const Keys &instruments, const Keys &accounts, const Keys &strategies,
                  bool filter);

    CallLog &mLog;
};

/// Records where it was asked to draw.
class FakeEnhanceDrawManager : public TC::CEnhanceDrawManager {
public:
    explicit FakeEnhanceDrawManager(CallLog &log) : mLog(log) {}
    void drawGraph(int kind, const std::string &key, QPainter *painter, const QRect &rect,
                   const boost::function<QPointF(const QPointF &)> &toPixel) override;
    QPointF mProbe; ///< converted at every call
    QPointF mProbed; ///< what came out

private:
    CallLog &mLog;
};

} // namespace fakehost
