#pragma once

#include "host/Export.h"
#include "host/toolkit/CSmallNormalButton.h"

#include <QString>

namespace TC {

/// Cancels a task, when the user says so once more.
class TIMESHARE_EXPORT CTaskTableCancelButton : public GZ::CSmallNormalButton {
    Q_OBJECT
public:
    /// `row` is that of the task's table.
    CTaskTableCancelButton(int row, int border, int radius, QWidget *parent = nullptr);

    /// The task, and the command that started it.
    void setTask(int taskId, int commandId);
    /// What the question tells of the task, so that the user sees which one it is about.
    void setDetails(const QString &details) { mDetails = details; }
    /// On whose behalf a task is cancelled, as the trade service is told it.
    static QString cancelText(int taskId, int commandId);

Q_SIGNALS:
    /// The user is asked; and has answered. While he is, the button must not go, and the question with it.
    void questionOpened();
    void questionClosed();

public Q_SLOTS:
    void slotCancelTask();

protected:
    /// Nobody above hears of a click: the number of a row is the id of no button that anybody knows.
    CEventDeliverer *nextParticipant() const override { return nullptr; }

private:
    int mTaskId = -1;
    int mCommandId = -1;
    QString mDetails;
};

} // namespace TC
