// The dialogs of the orders, deals and tasks behind a mark.

#include "chartdata/CRealtimeData.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "containers/CRealtimeMainWidget.h"
#include "host/services/CConfigService.h"
#include "host/services/CLinkageManager.h"
#include "linkage/CRealtimeDealDialog.h"
#include "linkage/CRealtimeOrderDialog.h"
#include "linkage/CRealtimeTaskTableDialog.h"
#include "linkage/CTaskTableCancelButton.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <utility>

namespace TC {
namespace {

void open(QWidget *dialog) {
    dialog->show();
    dialog->raise();
}

/// Cancels tasks without asking.
void cancelTasks(const QList<boost::shared_ptr<kvservice::CTaskDetail>> &tasks) {
    for (const auto &task : tasks) {
        if (task && task->mCommand && !task->mItems.empty()) {
            CSingletonT<CLinkageManager>::instance().cancelTask(
                task->mTaskId, CTaskTableCancelButton::cancelText(task->mTaskId, task->mCommand->mCommandId));
        }
    }
}

} // namespace

void CRealtimeMainWidget::showLinkageDatas(void *graph, const QString &kind, int x, int y) {
    if (!graph) {
        return;
    }
    const boost::shared_ptr<CRealtimeData> data = static_cast<CRealtimeGraphWidget *>(graph)->getData();
    if (kind == QLatin1String("linkage_orders")) {
        showOrders(*data, x, y);
    } else if (kind == QLatin1String("linkage_deals")) {
        showDeals(*data, x, y);
    } else if (kind == QLatin1String("linkage_tasks")) {
        showTasks(*data, x, y);
    }
}

void CRealtimeMainWidget::showOrders(const CRealtimeData &data, int x, int y) {
    QList<boost::shared_ptr<kvservice::COrderDetail>> orders;
    if (!data.getOrdersAt(x, y, orders)) {
        return;
    }
    if (!mOrderDialog) {
        mOrderDialog = new CRealtimeOrderDialog(this);
    }
    mOrderDialog->setData(orders);
    open(mOrderDialog);
    hideRecordDialogs(mOrderDialog);
}

void CRealtimeMainWidget::showDeals(const CRealtimeData &data, int x, int y) {
    QList<boost::shared_ptr<kvservice::CDealDetail>> deals;
    if (!data.getDealsAt(x, y, deals)) {
        return;
    }
    if (!mDealDialog) {
        mDealDialog = new CRealtimeDealDialog(this);
    }
    mDealDialog->setData(deals);
    open(mDealDialog);
    hideRecordDialogs(mDealDialog);
}

void CRealtimeMainWidget::showTasks(const CRealtimeData &data, int x, int y) {
    QList<boost::shared_ptr<kvservice::CTaskDetail>> tasks;
    if (!data.getTasksAt(x, y, tasks)) {
        return;
    }
    if (!mTaskDialog) {
        mTaskDialog = new CRealtimeTaskTableDialog(this);
    }
    mTaskDialog->setTaskData(tasks, mUiParam->getStockDetail());
    const CUserConfig *config = getUserConfig();
    if (config && !config->quickCancel()) {
        mTaskDialog->setUiParam(mUiParam);
        open(mTaskDialog);
    } else {
        cancelTasks(tasks);
    }
    hideRecordDialogs(mTaskDialog);
}

void CRealtimeMainWidget::hideRecordDialogs(const QWidget *but) {
    for (QWidget *dialog : {static_cast<QWidget *>(mOrderDialog), static_cast<QWidget *>(mDealDialog),
                            static_cast<QWidget *>(mTaskDialog)}) {
        if (dialog && dialog != but) {
            dialog->hide();
        }
    }
}

void CRealtimeMainWidget::deleteRecordDialogs() {
    delete std::exchange(mOrderDialog, nullptr);
    delete std::exchange(mDealDialog, nullptr);
    delete std::exchange(mTaskDialog, nullptr);
}

} // namespace TC
