#include "tests/fakehost/FakeLinkageManager.h"

#include <QRect>

namespace fakehost {
namespace {

/// The records of the accounts asked for.
template <class Record>
TC::CLinkageManager::Records<Record>
chosen(const std::map<std::string, TC::CLinkageManager::Records<Record>> &all, const std::string &instrument,
       const std::set<std::string> &accounts) {
    TC::CLinkageManager::Records<Record> found;
    const auto records = all.find(instrument);
    if (records != all.end()) {
        for (const auto &account : records->second) {
            if (accounts.count(account.first)) {
                found.insert(account);
            }
        }
    }
    return found;
}

QString joined(const std::set<std::string> &keys) {
    QStringList texts;
    for (const std::string &key : keys) {
        texts.append(QString::fromStdString(key));
    }
    return texts.join(QLatin1Char(','));
}

} // namespace

TC::CLinkageManager::Records<kvservice::COrderDetail>
FakeLinkageManager::getOrderDetails(int date, const std::string &instrument, const Keys &accounts) {
    mLog.add(QStringLiteral("CLinkageManager::getOrderDetails %1 %2 %3")
                 .arg(date)
                 .arg(QString::fromStdString(instrument), joined(accounts)));
    return chosen(mOrders, instrument, accounts);
}

TC::CLinkageManager::Records<kvservice::CDealDetail>
FakeLinkageManager::getDealDetails(int date, const std::string &instrument, const Keys &accounts) {
    mLog.add(QStringLiteral("CLinkageManager::getDealDetails %1 %2 %3")
                 .arg(date)
                 .arg(QString::fromStdString(instrument), joined(accounts)));
    return chosen(mDeals, instrument, accounts);
}

TC::CLinkageManager::Records<kvservice::CTaskDetail>
FakeLinkageManager::getTaskDetails(const std::string &instrument, const Keys &accounts) {
    mLog.add(QStringLiteral("CLinkageManager::getTaskDetails %1 %2")
                 .arg(QString::fromStdString(instrument), joined(accounts)));
    return chosen(mTasks, instrument, accounts);
}

void FakeLinkageManager::addTotal(const char *call, const Keys &instruments, const Keys &accounts,
                                  const Keys &strategies, bool filter) {
    mLog.add(QStringLiteral("CLinkageManager::%1 %2 %3 %4 %5")
                 .arg(QLatin1String(call), joined(instruments), joined(accounts), joined(strategies))
                 .arg(filter));
}

TC::CLinkageManager::TimedAmounts FakeLinkageManager::getTotalBuySellAmounts(const Keys &instruments,
                                                                             const Keys &accounts,
                                                                             const Keys &strategies,
                                                                             bool filter) {
    addTotal("getTotalBuySellAmounts", instruments, accounts, strategies, filter);
    return mAmounts;
}

TC::CLinkageManager::TimedValues FakeLinkageManager::getTotalProfits(const Keys &instruments,
                                                                     const Keys &accounts,
                                                                     const Keys &strategies, bool filter) {
    addTotal("getTotalProfits", instruments, accounts, strategies, filter);
    return mProfits;
}

TC::CLinkageManager::TimedValues FakeLinkageManager::getTotalBalances(const Keys &instruments,
                                                                      const Keys &accounts,
                                                                      const Keys &strategies, bool filter) {
    addTotal("getTotalBalances", instruments, accounts, strategies, filter);
    return mBalances;
}

long long FakeLinkageManager::getTaskItemFinishNumber(const boost::shared_ptr<kvservice::CTaskDetail> &task,
                                                      const std::string &) {
    const auto found = task ? mFinished.find(task->mTaskId) : mFinished.end();
    return found == mFinished.end() ? 0 : found->second;
}

bool FakeLinkageManager::getAccounts(const QList<QString> &names, Keys &accounts) {
    for (const QString &name : names) {
        accounts.insert(name.toStdString());
    }
    return !names.isEmpty();
}

void FakeLinkageManager::importOrder(const std::string &account, const std::string &instrument,
                                     const std::string &key, double price, int volume, long long time,
                                     int direction) {
    mLog.add(QStringLiteral("CLinkageManager::importOrder %1 %2 %3 %4 %5 %6 %7")
                 .arg(QString::fromStdString(account), QString::fromStdString(instrument),
                      QString::fromStdString(key))
                 .arg(price)
                 .arg(volume)
                 .arg(time)
                 .arg(direction));
}

void FakeLinkageManager::importDeal(const std::string &account, const std::string &instrument,
                                    const std::string &key, double price, int volume, long long time,
                                    int direction) {
    mLog.add(QStringLiteral("CLinkageManager::importDeal %1 %2 %3 %4 %5 %6 %7")
                 .arg(QString::fromStdString(account), QString::fromStdString(instrument),
                      QString::fromStdString(key))
                 .arg(price)
                 .arg(volume)
                 .arg(time)
                 .arg(direction));
}

void FakeEnhanceDrawManager::drawGraph(int kind, const std::string &key, QPainter *, const QRect &rect,
                                       const boost::function<QPointF(const QPointF &)> &toPixel) {
    mLog.add(QStringLiteral("CEnhanceDrawManager::drawGraph %1 %2 %3x%4")
                 .arg(kind)
                 .arg(QString::fromStdString(key))
                 .arg(rect.width())
                 .arg(rect.height()));
    mProbed = toPixel(mProbe);
}

} // namespace fakehost
