#include "linkage/CTaskTableCancelButton.h"

#include "host/services/CLinkageManager.h"
#include "host/services/ServiceContext.h"
#include "host/toolkit/CMessageBox.h"

#include <QPointer>

namespace TC {

CTaskTableCancelButton::CTaskTableCancelButton(int row, int border, int radius, QWidget *parent)
    : CSmallNormalButton(row, border, radius, parent) {
    setFocusPolicy(Qt::NoFocus);
    setText(tr("撤销"));
    setFixedSize(40, 16);
    const QString enabled = QStringLiteral("clr_task_op_button_text_enable");
    setTextColorKeys(enabled, enabled, enabled, QStringLiteral("clr_task_op_button_text_disable"));
    connect(this, &QPushButton::clicked, this, &CTaskTableCancelButton::slotCancelTask);
}

void CTaskTableCancelButton::setTask(int taskId, int commandId) {
    mTaskId = taskId;
    mCommandId = commandId;
}

QString CTaskTableCancelButton::cancelText(int taskId, int commandId) {
    return QStringLiteral("%1-%2").arg(commandId).arg(taskId);
}

void CTaskTableCancelButton::slotCancelTask() {
    const QPointer<CTaskTableCancelButton> alive(this); // it takes the question along when it goes
    Q_EMIT questionOpened();
    const GZ::CMessageBox::Buttons yesAndNo(0x14000);
    const auto answer = GZ::CMessageBox::question(this, tr("提示"), tr("您确定要撤销任务?"), yesAndNo,
                                                  QMessageBox::NoButton, mDetails);
    if (!alive) {
        return;
    }
    if (answer == QMessageBox::Yes) {
        ServiceContext::of(this).get<CLinkageManager>().cancelTask(mTaskId, cancelText(mTaskId, mCommandId));
    }
    Q_EMIT questionClosed(); // may end the button
}

} // namespace TC
