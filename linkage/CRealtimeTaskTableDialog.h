#pragma once

#include "host/Export.h"
#include "host/records/CInstrumentDetail.h"
#include "host/records/CTaskDetail.h"
#include "host/services/ServiceContext.h"
#include "host/toolkit/CCommonDialog.h"

#include <QList>

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace TC {

class CRealtimeUiParam;
class TaskFeed;
class TaskTable;

/// The tasks behind a mark, a row for each of their items in the shown instrument, with a button that cancels those
/// that still can be. While it is open it follows every change of tasks that the trade service tells.
///
/// User-interface thread, but for onUpdateTask().
class TIMESHARE_EXPORT CRealtimeTaskTableDialog : public GZ::CCommonDialog {
    Q_OBJECT
public:
    explicit CRealtimeTaskTableDialog(QWidget *parent = nullptr);
    ~CRealtimeTaskTableDialog() override;

    /// The view whose instrument and accounts the dialog follows; none until then.
    void setUiParam(const boost::shared_ptr<CRealtimeUiParam> &uiParam);
    /// Replaces what is shown by the items of tasks in an instrument. Tasks without a command or an item are left out;
    /// without an instrument nothing is shown.
    void setTaskData(const QList<boost::shared_ptr<kvservice::CTaskDetail>> &tasks,
                     const CInstrumentDetailPtr &instrument);

    /// Tasks of these instruments have changed: asks for those of the shown instrument, and tells them by
    /// sigUpdateTask() when there are any and the dialog is visible. Any thread, while nobody changes the view
    /// parameters; a signal of the service on a thread of its own comes here on the user-interface thread, where
    /// nobody does.
    void onUpdateTask(const std::vector<std::string> &stockKeys);

Q_SIGNALS:
    /// The tasks of the shown instrument, as they are now.
    void sigUpdateTask(std::vector<kvservice::IDataPtr> tasks);

public Q_SLOTS:
    /// Shows them. Rows stay in their places, and new ones come after them. While the user is asked whether to cancel a task, the rows stay; the last change is shown then.
    void slotUpdateTask(std::vector<kvservice::IDataPtr> tasks);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void showHeld();
    boost::shared_ptr<CRealtimeUiParam> uiParam() const;

    TaskTable *mTable = nullptr;
    boost::shared_ptr<CRealtimeUiParam> mUiParam;
    mutable std::mutex mUiParamLock; ///< guards the pointer alone
    std::atomic<bool> mShown{false}; ///< what isVisible() says, for any thread
    const ServiceContext &mServices;
    std::unique_ptr<TaskFeed> mFeed;
    std::unique_ptr<std::vector<kvservice::IDataPtr>> mHeld; ///< came while the user was asked
};

} // namespace TC
