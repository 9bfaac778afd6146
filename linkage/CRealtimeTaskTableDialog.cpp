#include "linkage/CRealtimeTaskTableDialog.h"

#include "host/services/CLinkageManager.h"
#include "host/services/ServiceContext.h"
#include "host/toolkit/CBaseWidget.h"
#include "linkage/TaskFeed.h"
#include "linkage/TaskRow.h"
#include "linkage/TaskScope.h"
#include "linkage/TaskTable.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace TC {
namespace {

constexpr int kNarrowest = 828;
constexpr int kHeight = 300;

} // namespace

CRealtimeTaskTableDialog::CRealtimeTaskTableDialog(QWidget *parent)
    : CCommonDialog(parent), mServices(ServiceContext::of(this)),
      mFeed(std::make_unique<TaskFeed>(mServices.get<CLinkageManager>())) {
    qRegisterMetaType<std::vector<kvservice::IDataPtr>>("std::vector<kvservice::IDataPtr>");
    setWindowTitle(tr("任务详情"));
    setMinimumWidth(kNarrowest);
    resize(kNarrowest, kHeight);
    auto *container = new GZ::CBaseWidget;
    container->setObjectName(QStringLiteral("containner_RealTimeTaskTableDialog"));
    auto *layout = new QVBoxLayout(container);
    layout->setContentsMargins(0, 0, 0, 0);
    mTable = new TaskTable(container);
    layout->addWidget(mTable);
    setInnerWidget(container);
    connect(mTable, &TaskTable::answered, this, &CRealtimeTaskTableDialog::showHeld);
    connect(this, &CRealtimeTaskTableDialog::sigUpdateTask, this, &CRealtimeTaskTableDialog::slotUpdateTask);
    connect(mFeed.get(), &TaskFeed::changed, this, &CRealtimeTaskTableDialog::onUpdateTask);
}

CRealtimeTaskTableDialog::~CRealtimeTaskTableDialog() = default;

void CRealtimeTaskTableDialog::setUiParam(const boost::shared_ptr<CRealtimeUiParam> &uiParam) {
    const std::lock_guard<std::mutex> hold(mUiParamLock);
    mUiParam = uiParam;
}

boost::shared_ptr<CRealtimeUiParam> CRealtimeTaskTableDialog::uiParam() const {
    const std::lock_guard<std::mutex> hold(mUiParamLock);
    return mUiParam;
}

// The rows

void CRealtimeTaskTableDialog::setTaskData(const QList<boost::shared_ptr<kvservice::CTaskDetail>> &tasks,
                                           const CInstrumentDetailPtr &instrument) {
    mHeld.reset(); // older than these
    mTable->fill(instrument
                     ? taskRows({tasks.begin(), tasks.end()}, *instrument, mServices.get<CLinkageManager>())
                     : std::vector<TaskRow>());
}

void CRealtimeTaskTableDialog::slotUpdateTask(std::vector<kvservice::IDataPtr> tasks) {
    if (!mTable) {
        return;
    }
    if (mTable->isAsking()) {
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
    const CInstrumentDetailPtr instrument = view ? view->getStockDetail() : nullptr;
    mTable->follow(instrument ? taskRows(shown, *instrument, mServices.get<CLinkageManager>())
                              : std::vector<TaskRow>());
}

void CRealtimeTaskTableDialog::showHeld() {
    if (const auto held = std::move(mHeld)) {
        slotUpdateTask(*held);
    }
}

// Changes

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
    if (!instrument || std::count(stockKeys.begin(), stockKeys.end(), getDetailKey(instrument)) == 0) {
        return;
    }
    const std::vector<kvservice::IDataPtr> tasks = followedTasks(*view, instrument);
    if (!tasks.empty() && mShown) {
        Q_EMIT sigUpdateTask(tasks);
    }
}

} // namespace TC
