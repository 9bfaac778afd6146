#include "chartview/ShownAccounts.h"

#include "chartdata/LinkageScope.h"
#include "host/services/CLinkageManager.h"
#include "viewmodel/CRealtimeUiParam.h"

namespace TC {

bool ShownAccounts::isFutures() const {
    return isFuturesMarket(getDetailQsMarket(mUiParam.getStockDetail()));
}

QList<QString> &ShownAccounts::list() const {
    return isFutures() ? mUiParam.mFutureAccounts : mUiParam.mStockAccounts;
}

QList<QString> ShownAccounts::offered() const {
    QList<QString> accounts;
    for (const std::string &id : mUiParam.service<CLinkageManager>().getAccountIds(
             isFutures() ? CLinkageManager::kFutureAccounts : CLinkageManager::kStockAccounts)) {
        accounts.append(QString::fromStdString(id));
    }
    return accounts;
}

bool ShownAccounts::isListed(const QString &account) const {
    return mUiParam.mStockAccounts.contains(account) || mUiParam.mFutureAccounts.contains(account);
}

void ShownAccounts::switchView() const {
    if (mUiParam.mStockAccounts.isEmpty() && mUiParam.mFutureAccounts.isEmpty()) {
        mUiParam.mLinkageFlags &= ~eAccountView;
    } else {
        mUiParam.mLinkageFlags |= eAccountView;
    }
}

} // namespace TC
