// Life cycle and rows.

#include "linkage/CRealtimeTaskTableDialog.h"

#include "host/services/CLinkageManager.h"
#include "host/toolkit/COddEvenRowTable.h"
#include "host/toolkit/CSimpleTextWidget.h"
#include "host/toolkit/Text.h"
#include "linkage/CRealtimeProgressWidget.h"
#include "linkage/CTaskTableCancelButton.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QScrollBar>
#include <QVBoxLayout>

#include <utility>

namespace TC {
namespace {

constexpr int kTableId = 10000;
constexpr int kMinimumWidth = 828;
constexpr int kHeight = 300;
constexpr int kFill = GZ::CStandardTable::eFill;
constexpr int kCentered = GZ::CStandardTable::eCentered;

enum EColumn : int { eAccount, eName, eStart, eEnd, eProgress, eDetails, eStatus };

/// "hh:mm:ss"; empty when the time is not set.
QString clockText(int time) {
    return time == kUnsetTime
               ? QString()
               : QDateTime::fromTime_t(static_cast<uint>(time)).toString(QStringLiteral("hh:mm:ss"));
}

bool counts(const boost::shared_ptr<kvservice::CTaskDetail> &task) {
    return task && task->mCommand && !task->mItems.empty();
}

/// A cell of parts in a row.
QWidget *rowOf(const QString &objectName, const QList<QWidget *> &parts) {
    auto *row = new QWidget;
    row->setObjectName(objectName);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QWidget *part : parts) {
        layout->addWidget(part);
    }
    return row;
}

} // namespace

CRealtimeTaskTableDialog::CRealtimeTaskTableDialog(QWidget *parent) : CCommonDialog(parent) {
    qRegisterMetaType<std::vector<kvservice::IDataPtr>>("std::vector<kvservice::IDataPtr>");
    setWindowTitle(tr("任务详情"));
    setMinimumWidth(kMinimumWidth);
    resize(kMinimumWidth, kHeight);
    createTable();
    connect(this, &CRealtimeTaskTableDialog::sigUpdateTask, this, &CRealtimeTaskTableDialog::slotUpdateTask);
    listenToService();
}

void CRealtimeTaskTableDialog::createTable() {
    auto *container = new GZ::CBaseWidget;
    container->setObjectName(QStringLiteral("containner_RealTimeTaskTableDialog"));
    auto *layout = new QVBoxLayout(container);
    layout->setContentsMargins(0, 0, 0, 0);
    mTable = new GZ::COddEvenRowTable(kTableId, GZ::CStandardTable::eWholeMenu, container);
    mTable->setFlag(GZ::CStandardTable::eHighRows, true);
    mTable->setFlag(GZ::CStandardTable::eSort, false);
    mTable->setHeaders(
        {tr("资金账号"), tr("证券名称"), tr("开始时间"), tr("结束时间"), tr("进度"), tr("详情"), tr("状态")});
    constexpr std::pair<EColumn, int> kWidths[] = {{eAccount, 70},   {eName, 80},    {eStart, 61},   {eEnd, 61},
                                                   {eProgress, 120}, {eStatus, 100}, {eDetails, 249}};
    for (const auto &[column, width] : kWidths) {
        mTable->setDefaultWidth(column, width);
    }
    layout->addWidget(mTable);
    setInnerWidget(container);
}

void CRealtimeTaskTableDialog::setTaskData(const QList<boost::shared_ptr<kvservice::CTaskDetail>> &tasks,
                                           const CInstrumentDetailPtr &instrument) {
    mHeld.reset(); // older than these
    fillTable({tasks.begin(), tasks.end()}, instrument);
}

void CRealtimeTaskTableDialog::slotUpdateTask(std::vector<kvservice::IDataPtr> tasks) {
    if (!mTable) {
        return;
    }
    if (mAsking) {
        mHeld = std::make_unique<std::vector<kvservice::IDataPtr>>(std::move(tasks));
        return;
    }
    std::vector<boost::shared_ptr<kvservice::CTaskDetail>> shown;
    for (const kvservice::IDataPtr &record : tasks) {
        const auto task = boost::dynamic_pointer_cast<kvservice::CTaskDetail>(record);
        if (task && task->mStartTime != kUnsetTime) {
            shown.push_back(task);
        }
    }
    const auto view = uiParam();
    fillTable(shown, view ? view->getStockDetail() : nullptr);
}

void CRealtimeTaskTableDialog::fillTable(const std::vector<boost::shared_ptr<kvservice::CTaskDetail>> &tasks,
                                         const CInstrumentDetailPtr &instrument) {
    const int scrolled = mTable->verticalScrollBar()->value();
    mTable->clearRows();
    if (!instrument) {
        return;
    }
    for (const auto &task : tasks) {
        if (!counts(task)) {
            continue;
        }
        for (const auto &item : task->mItems) {
            if (item && vmStockKey(item->mMarket, item->mCode) == getDetailKey(instrument)) {
                addItem(task, *item, *instrument);
            }
        }
    }
    mTable->verticalScrollBar()->setValue(scrolled);
}

void CRealtimeTaskTableDialog::addItem(const boost::shared_ptr<kvservice::CTaskDetail> &task,
                                       const kvservice::CTaskItem &item, const CInstrumentDetail &instrument) {
    const int row = mTable->addRow();
    const int end = task->mEndTime != kUnsetTime ? task->mEndTime : task->mCancelTime;
    mTable->setText(row, eAccount, item.mAccount ? GZ::sToQs(item.mAccount->mAccountId) : QString());
    mTable->setText(row, eName, GZ::sToQs(instrument.mName));
    mTable->setText(row, eStart, clockText(task->mStartTime));
    mTable->setText(row, eEnd, clockText(end));
    mTable->setWidget(row, eProgress, progressOf(task, item), kFill);
    mTable->setWidget(row, eDetails, detailsOf(item, instrument), kCentered);
    setStatus(row, *task);
}

QWidget *CRealtimeTaskTableDialog::progressOf(const boost::shared_ptr<kvservice::CTaskDetail> &task,
                                              const kvservice::CTaskItem &item) {
    auto *progress = new CRealtimeProgressWidget(mTable);
    const long long finished = CSingletonT<CLinkageManager>::instance().getTaskItemFinishNumber(
        task, vmStockKey(item.mMarket, item.mCode));
    progress->setProgress(static_cast<int>(item.mQuantity), static_cast<int>(finished)); // the low 32 bits
    return progress;
}

QWidget *CRealtimeTaskTableDialog::detailsOf(const kvservice::CTaskItem &item,
                                             const CInstrumentDetail &instrument) {
    auto *priceType = new GZ::CSimpleTextWidget(getPriceTypeQString(item.mPriceType));
    priceType->setColorKey(QStringLiteral("clr_task_progress_background"));
    const QString unit = item.mOperation == kvservice::EOperationType::BuyByAmount
                             ? tr("元")
                             : GZ::sToQs(kvservice::getStockUnit(instrument.mMarket, instrument.mCode));
    const std::string operation = kvservice::operationValueToString(static_cast<int>(item.mOperation));
    auto *order = new GZ::CSimpleTextWidget(GZ::sToQs(operation) + QString::number(item.mQuantity) + unit);
    order->setColorKey(kvservice::DataHelper::isBuy(item.mOperation)
                           ? QStringLiteral("ic_clr_index_default_rise")
                           : QStringLiteral("ic_clr_index_default_fall"));
    return rowOf(QStringLiteral("table_transaction_details"),
                 {new GZ::CSimpleTextWidget(tr("以")), priceType, order});
}

void CRealtimeTaskTableDialog::setStatus(int row, const kvservice::CTaskDetail &task) {
    const QString text = getTaskStatusQString(task.mStatus);
    if (task.mStatus != kvservice::eTaskWaiting && task.mStatus != kvservice::eTaskRunning) {
        mTable->setText(row, eStatus, text, kCentered);
        return;
    }
    mTable->setWidget(row, eStatus,
                      rowOf(QStringLiteral("realtime_task__details"),
                            {new GZ::CSimpleTextWidget(text), cancelButtonOf(row, task)}),
                      kCentered);
}

CTaskTableCancelButton *CRealtimeTaskTableDialog::cancelButtonOf(int row, const kvservice::CTaskDetail &task) {
    auto *button = new CTaskTableCancelButton(row, 0, 3, this);
    button->setTask(task.mTaskId, task.mCommand->mCommandId);
    button->setEnabled(task.mCommand->mCancelDisabled != 1);
    connect(button, &CTaskTableCancelButton::questionOpened, this, [this, button] { mAsking = button; });
    connect(button, &CTaskTableCancelButton::questionClosed, this, [this] {
        mAsking.clear();
        if (const auto held = std::move(mHeld)) {
            slotUpdateTask(*held);
        }
    });
    return button;
}

} // namespace TC
