#pragma once

#include "host/toolkit/COddEvenRowTable.h"
#include "linkage/CTaskTableCancelButton.h"
#include "linkage/TaskRow.h"

#include <QPointer>

#include <vector>

namespace TC {

/// The table of tasks. What is there already is not made anew by a refill: a row is the same as long as it stands for
/// the same item of a task, and with it its button under the mouse, its selection and its place at the top.
class TaskTable : public GZ::COddEvenRowTable {
    Q_OBJECT
public:
    /// Columns, in their order.
    enum EColumn : int { eAccount, eName, eStart, eEnd, eProgress, eDetails, eStatus };

    explicit TaskTable(QWidget *parent = nullptr);

    /// Replaces what is shown.
    void fill(const std::vector<TaskRow> &rows);
    /// Whether the user is asked just now whether to cancel a task. Its row must stay, and the question with it.
    bool isAsking() const { return mAsking; }

signals:
    /// The user has answered.
    void answered();

private:
    void arrange(const std::vector<int> &continued, int before);
    void keepAtTop(int row, const std::vector<int> &continued);
    void makeWidgets(int row);
    void showRow(int row, const TaskRow &shown);
    void showDetails(int row, const TaskRow &shown);
    void showStatus(int row, const TaskRow &shown);
    CTaskTableCancelButton *makeCancelButton(int row);

    std::vector<TaskRow> mRows; ///< as they are shown
    QPointer<CTaskTableCancelButton> mAsking; ///< whose question is open
};

} // namespace TC
