#pragma once

#include "host/toolkit/COddEvenRowTable.h"
#include "linkage/CTaskTableCancelButton.h"
#include "linkage/TaskRow.h"

#include <QPointer>

#include <utility>
#include <vector>

namespace TC {

/// The table of tasks. What is there already is not made anew by a refill: a row is the same as long as it stands for
/// the same item of a task, and with it its button under the mouse, its selection and its place at the top. Widgets
/// are made for the rows near to what is seen.
class TaskTable : public GZ::COddEvenRowTable {
    Q_OBJECT
public:
    /// Columns, in their order.
    enum EColumn : int { eAccount, eName, eStart, eEnd, eProgress, eDetails, eStatus };

    explicit TaskTable(QWidget *parent = nullptr);

    /// Replaces what is shown.
    void fill(const std::vector<TaskRow> &rows);
    /// Shows the tasks as they are by now: nothing moves under the mouse, for those that are shown stay in their order, and
    /// others come after them.
    void follow(std::vector<TaskRow> rows) { fill(inPlaceOf(mRows, std::move(rows))); }
    /// Whether the user is asked just now whether to cancel a task. Its row must stay, and the question with it.
    bool isAsking() const { return mAsking; }

Q_SIGNALS:
    /// The user has answered.
    void answered();

private:
    void arrange(const std::vector<int> &continued, int before);
    void keepAtTop(int row, const std::vector<int> &continued);
    void showTexts(int row);
    void updateWidgets(int row, const TaskRow &before);
    QWidget *makeProgress(int row);
    QWidget *makeDetails(int row);
    QWidget *makeStatus(int row);

    std::vector<TaskRow> mRows; ///< as they are shown
    bool mFilling = false; ///< the table's rows are not yet those
    QPointer<CTaskTableCancelButton> mAsking; ///< whose question is open
};

} // namespace TC
