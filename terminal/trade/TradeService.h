#pragma once

#include "host/services/CLinkageManager.h"

namespace terminal {

/// The user's trading. There is no account yet: trade data are off, and every question has an empty answer.
class TradeService : public TC::CLinkageManager {
public:
    bool isEnabled() override { return false; }

    Records<kvservice::COrderDetail> getOrderDetails(int, const std::string &, const Keys &) override {
        return {};
    }
    Records<kvservice::CDealDetail> getDealDetails(int, const std::string &, const Keys &) override {
        return {};
    }
    Records<kvservice::CTaskDetail> getTaskDetails(const std::string &, const Keys &) override { return {}; }
    long long getTaskItemFinishNumber(const boost::shared_ptr<kvservice::CTaskDetail> &,
                                      const std::string &) override {
        return 0;
    }
    TimedAmounts getTotalBuySellAmounts(const Keys &, const Keys &, const Keys &, bool) override { return {}; }
    TimedValues getTotalProfits(const Keys &, const Keys &, const Keys &, bool) override { return {}; }
    TimedValues getTotalBalances(const Keys &, const Keys &, const Keys &, bool) override { return {}; }
    double getOrderAmplitude(const Keys &, const Keys &) override { return 0.0; }
    double getDealAmplitude(const Keys &, const Keys &) override { return 0.0; }

    std::vector<boost::shared_ptr<kvservice::CAccountInfo>> getAccounts() override { return {}; }
    bool getAccounts(const QList<QString> &, Keys &) override { return false; }
    std::vector<std::string> getAccountIds(int) override { return {}; }
    Keys getStrategys() override { return {}; }
    Keys getStocks() override { return {}; }
    void startProfitCalculator() override {}
    void stopProfitCalculator() override {}
    void startBalanceCalculator() override {}
    void stopBalanceCalculator() override {}

    void importOrder(const std::string &, const std::string &, const std::string &, double, int, long long,
                     int) override {}
    void importDeal(const std::string &, const std::string &, const std::string &, double, int, long long,
                    int) override {}
    void clearImportData() override {}
    void cancelTask(int, const QString &) override {}
};

} // namespace terminal
