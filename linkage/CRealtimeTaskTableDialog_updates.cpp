// What of the trade service's changes concerns the dialog.

#include "chartdata/LinkageScope.h"
#include "host/services/CLinkageManager.h"
#include "linkage/CRealtimeTaskTableDialog.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QThread>
#include <QTimer>

#include <algorithm>
#include <set>

namespace TC {
namespace {

/// Whose tasks in an instrument the view shows; false when nobody's.
bool readScope(const CRealtimeUiParam &uiParam, const CInstrumentDetailPtr &instrument, LinkageScope &scope) {
    if (uiParam.mLinkageFlags & eSelectedDataView) {
        scope.accounts = uiParam.mLinkageAccounts;
        scope.strategies = uiParam.mLinkageStrategys;
        scope.filter = uiParam.mLinkageShow[eFilterStrategies];
        return true;
    }
    if (uiParam.mLinkageFlags & eAccountView) {
        const bool futures = isFuturesMarket(getDetailQsMarket(instrument));
        return CSingletonT<CLinkageManager>::instance().getAccounts(
            futures ? uiParam.mFutureAccounts : uiParam.mStockAccounts, scope.accounts);
    }
    return true;
}

bool isFollowed(const boost::shared_ptr<kvservice::CTaskDetail> &task, const LinkageScope &scope) {
    return task && task->mCommand && !task->mItems.empty() && task->mItems.front() &&
           task->mItems.front()->mAccount && scope.admits(task->mCommand->mStrategyName);
}

} // namespace

/// The service's signal may be running on a thread of its own while the dialog goes: disconnecting does not wait for
/// it, so it reaches the dialog through this.
struct CRealtimeTaskTableDialog::Bond {
    std::mutex lock; ///< guards the following
    CRealtimeTaskTableDialog *dialog = nullptr; ///< null when it has gone
    std::set<std::string> untold; ///< instruments that changed since the dialog was told

    /// On a thread of the service. What piles up until the dialog's thread comes to it is told at once, after the
    /// input that waits there: changes may come faster than a table fills.
    void queue(const std::vector<std::string> &stockKeys) {
        const std::lock_guard<std::mutex> hold(lock);
        const bool isFirst = untold.empty();
        untold.insert(stockKeys.begin(), stockKeys.end());
        if (dialog && isFirst && !untold.empty()) {
            // The queued call carries nothing: what it is about stays under our own lock.
            QMetaObject::invokeMethod(dialog, "tellUntoldAfterInput", Qt::QueuedConnection);
        }
    }
};

void CRealtimeTaskTableDialog::tellUntoldAfterInput() {
    QTimer::singleShot(0, this, [this] { tellUntold(); });
}

void CRealtimeTaskTableDialog::listenToService() {
    mBond = std::make_shared<Bond>();
    mBond->dialog = this;
    // The view parameters have no lock, and belong to the dialog's thread.
    mConnection = CSingletonT<CLinkageManager>::instance().sigTaskChanged.connect(
        [bond = mBond, home = thread()](const std::vector<std::string> &stockKeys) {
            if (QThread::currentThread() != home) {
                bond->queue(stockKeys);
            } else if (bond->dialog) {
                bond->dialog->onUpdateTask(stockKeys);
            }
        });
}

CRealtimeTaskTableDialog::~CRealtimeTaskTableDialog() {
    mConnection.disconnect();
    const std::lock_guard<std::mutex> hold(mBond->lock);
    mBond->dialog = nullptr;
}

void CRealtimeTaskTableDialog::tellUntold() {
    std::set<std::string> changed;
    {
        const std::lock_guard<std::mutex> hold(mBond->lock);
        std::swap(changed, mBond->untold);
    }
    onUpdateTask({changed.begin(), changed.end()});
}

void CRealtimeTaskTableDialog::setUiParam(const boost::shared_ptr<CRealtimeUiParam> &uiParam) {
    const std::lock_guard<std::mutex> hold(mUiParamLock);
    mUiParam = uiParam;
}

boost::shared_ptr<CRealtimeUiParam> CRealtimeTaskTableDialog::uiParam() const {
    const std::lock_guard<std::mutex> hold(mUiParamLock);
    return mUiParam;
}

void CRealtimeTaskTableDialog::showEvent(QShowEvent *event) {
    CCommonDialog::showEvent(event);
    mShown = true;
}

void CRealtimeTaskTableDialog::hideEvent(QHideEvent *event) {
    mShown = isVisible(); // a window that is minimised is hidden on the screen alone
    CCommonDialog::hideEvent(event);
}

void CRealtimeTaskTableDialog::onUpdateTask(const std::vector<std::string> &stockKeys) {
    const auto view = uiParam();
    const CInstrumentDetailPtr instrument = view ? view->getStockDetail() : nullptr;
    const std::string key = getDetailKey(instrument);
    LinkageScope scope;
    if (!instrument || std::count(stockKeys.begin(), stockKeys.end(), key) == 0 ||
        !readScope(*view, instrument, scope)) {
        return;
    }
    std::vector<kvservice::IDataPtr> kept;
    for (const auto &account : CSingletonT<CLinkageManager>::instance().getTaskDetails(key, scope.accounts)) {
        for (const auto &task : account.second) {
            if (isFollowed(task.second, scope)) {
                kept.push_back(task.second);
            }
        }
    }
    if (!kept.empty() && mShown) {
        emit sigUpdateTask(kept);
    }
}

} // namespace TC
