#pragma once

/// \file
/// Default services of a program that trades nothing and replays nothing.

#include "host/services/CFileClient.h"
#include "host/services/CLinkageManager.h"
#include "host/services/CReplayManager.h"
#include "host/services/CStrategyTradeManager.h"

#include <QCoreApplication>

namespace TC {

/// A user without accounts, orders, deals and tasks. What words are asked for are the numbers.
class DefaultLinkage : public CLinkageManager {
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
    bool getAccounts(const QList<QString> &, Keys &accounts) override {
        accounts.clear();
        return false;
    }
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
    QString getTaskStatusText(int status) override { return QString::number(status); }
    QString getPriceTypeText(int priceType) override { return QString::number(priceType); }
    QString getOperationText(int operation) override { return QString::number(operation); }
    QString getUnitText(const std::string &, const std::string &) override { return {}; }
};

class DefaultReplay : public CReplayManager {
public:
    void requestFormulas(const QString &, QVector<CFormulaParam> &, FormulaHistoryCallback,
                         FormulaRealtimeCallback) override {}
    void deleteFormulas(QVector<QString> &) override {}
    void setThousandRange(qint64, qint64) override {}
};

class DefaultStrategies : public CStrategyTradeManager {
public:
    bool getStrategyByName(const QString &, CStrategyInfo &) override { return false; }
    bool isFomrulaRun(const QString &) override { return false; }
    void updateBacktestData(const QVector<QString> &) override {}
};

/// Reads no file, and says so.
class DefaultFiles : public CFileClient {
public:
    void readFileByLine(int &seq, EFileType, const QString &, LineHandler) override {
        const int number = ++mLast;
        seq = number;
        const auto tell = [this, number] {
            Q_EMIT sigReadFinished(number, false,
                                   QCoreApplication::translate("TC::DefaultServices", "不能读取文件"));
        };
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
    }

private:
    int mLast = 0;
};

} // namespace TC
