#include "containers/RecordWindows.h"

#include "chartdata/CRealtimeData.h"
#include "host/services/CConfigService.h"
#include "host/services/CLinkageManager.h"
#include "linkage/CRealtimeDealDialog.h"
#include "linkage/CRealtimeOrderDialog.h"
#include "linkage/CRealtimeTaskTableDialog.h"
#include "linkage/CTaskTableCancelButton.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <algorithm>
#include <utility>

namespace TC {

namespace {

void open(QWidget *dialog) {
    dialog->show();
    dialog->raise();
}

/// Cancels tasks without asking.
void cancelTasks(const QList<boost::shared_ptr<kvservice::CTaskDetail>> &tasks, CLinkageManager &linkage) {
    for (const auto &task : tasks) {
        if (task && task->mCommand && !task->mItems.empty()) {
            linkage.cancelTask(task->mTaskId,
                               CTaskTableCancelButton::cancelText(task->mTaskId, task->mCommand->mCommandId));
        }
    }
}

} // namespace

RecordWindows::RecordWindows(QWidget *view, boost::shared_ptr<CRealtimeUiParam> uiParam)
    : mView(view), mUiParam(std::move(uiParam)) {}

RecordWindows::~RecordWindows() {
    deleteAll();
}

void RecordWindows::show(const CRealtimeData &data, const QString &kind, int x, int y) {
    if (kind == QLatin1String("linkage_orders")) {
        showOrders(data, x, y);
    } else if (kind == QLatin1String("linkage_deals")) {
        showDeals(data, x, y);
    } else if (kind == QLatin1String("linkage_tasks")) {
        showTasks(data, x, y);
    }
}

void RecordWindows::hide() {
    hideAllBut(nullptr);
}

void RecordWindows::showOrders(const CRealtimeData &data, int x, int y) {
    QList<boost::shared_ptr<kvservice::COrderDetail>> orders;
    if (!data.getOrdersAt(x, y, orders)) {
        return;
    }
    if (!mOrders) {
        mOrders = new CRealtimeOrderDialog(mView);
    }
    mOrders->setData(orders);
    open(mOrders);
    hideAllBut(mOrders);
}

void RecordWindows::showDeals(const CRealtimeData &data, int x, int y) {
    QList<boost::shared_ptr<kvservice::CDealDetail>> deals;
    if (!data.getDealsAt(x, y, deals)) {
        return;
    }
    if (!mDeals) {
        mDeals = new CRealtimeDealDialog(mView);
    }
    mDeals->setData(deals);
    open(mDeals);
    hideAllBut(mDeals);
}

void RecordWindows::showTasks(const CRealtimeData &data, int x, int y) {
    QList<boost::shared_ptr<kvservice::CTaskDetail>> tasks;
    if (!data.getTasksAt(x, y, tasks)) {
        return;
    }
    if (!mTasks) {
        mTasks = new CRealtimeTaskTableDialog(mView);
    }
    std::stable_sort(tasks.begin(), tasks.end(),
                     [](const auto &task, const auto &other) { return kvservice::isOlder(*task, *other); });
    mTasks->setTaskData(tasks, mUiParam->getStockDetail());
    const CUserConfig *config = mUiParam->service<CConfigService>().userConfig();
    if (config && !config->quickCancel()) {
        mTasks->setUiParam(mUiParam);
        open(mTasks);
    } else {
        cancelTasks(tasks, mUiParam->service<CLinkageManager>());
    }
    hideAllBut(mTasks);
}

void RecordWindows::hideAllBut(const QWidget *shown) {
    for (QWidget *dialog :
         {static_cast<QWidget *>(mOrders), static_cast<QWidget *>(mDeals), static_cast<QWidget *>(mTasks)}) {
        if (dialog && dialog != shown) {
            dialog->hide();
        }
    }
}

void RecordWindows::deleteAll() {
    delete std::exchange(mOrders, nullptr);
    delete std::exchange(mDeals, nullptr);
    delete std::exchange(mTasks, nullptr);
}

} // namespace TC
