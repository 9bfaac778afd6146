#pragma once

#include "host/toolkit/COddEvenRowTable.h"
#include "host/toolkit/CSimpleTextWidget.h"
#include "linkage/CRealtimeProgressWidget.h"
#include "linkage/CRealtimeTaskTableDialog.h"
#include "linkage/CTaskTableCancelButton.h"
#include "tests/chartview/ChartFixture.h"
#include "tests/linkage/TradeRecords.h"

#include <QtTest>

namespace tests {

/// The task dialog of a view of SH600000, whose instrument is called 浦发银行.
class TaskDialogFixture : public ChartFixture {
protected:
    TaskDialogFixture() {
        mDetail->mName = "浦发银行";
        makeDialog();
    }
    void makeDialog() { mDialog = std::make_unique<TC::CRealtimeTaskTableDialog>(mKeeper.get()); }
    GZ::COddEvenRowTable *table() const { return mDialog->findChild<GZ::COddEvenRowTable *>(); }
    int rows() const { return table()->rowCount(); }
    QString text(int row, int column) const { return table()->textAt(row, column); }
    QStringList column(int number) const {
        QStringList texts;
        for (int row = 0; row < rows(); ++row) {
            texts.append(text(row, number));
        }
        return texts;
    }
    TC::CTaskTableCancelButton *button(int row) const {
        const QWidget *cell = table()->widgetAt(row, 6);
        return cell ? cell->findChild<TC::CTaskTableCancelButton *>() : nullptr;
    }
    void show() {
        mKeeper->show();
        mDialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mDialog.get()));
    }
    /// Tasks of an account that the service has, and of SH600000.
    void serve(const std::string &account, const boost::shared_ptr<kvservice::CTaskDetail> &task) {
        mHost.mLinkage.mTasks["SH600000"][account][task->getKey()] = task;
    }
    void tell(const std::vector<std::string> &keys = {"SH600000"}) { mHost.mLinkage.sigTaskChanged(keys); }

    std::unique_ptr<TC::CRealtimeTaskTableDialog> mDialog;
};

} // namespace tests
