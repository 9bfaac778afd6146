#pragma once

#include "host/records/CInstrumentDetail.h"
#include "host/records/CTaskDetail.h"

#include <QString>

#include <vector>

namespace TC {

class CLinkageManager;

/// What the table of tasks shows of one item of a task.
struct TaskRow {
    int taskId = 0;
    int commandId = 0; ///< of the command that started the task
    int item = 0; ///< place among the rows of the task
    QString account;
    QString instrument; ///< name
    QString start; ///< "hh:mm:ss"; empty when it is not set
    QString end;
    int total = 0; ///< items to be done
    int finished = 0;
    QString priceType;
    QString order; ///< operation, quantity and unit
    bool buys = false;
    QString status;
    bool cancellable = false; ///< there is a button
    bool cancelEnabled = false;

    bool operator==(const TaskRow &other) const;
    bool operator!=(const TaskRow &other) const { return !(*this == other); }

    /// The price type and the order, as one reads them.
    QString details() const;
    /// What tells the task from every other, in two lines.
    QString description() const;
};

/// The rows of tasks, one for each of their items in the instrument. A task that is null or has no command or item has
/// none. User-interface thread.
std::vector<TaskRow> taskRows(const std::vector<boost::shared_ptr<kvservice::CTaskDetail>> &tasks,
                              const CInstrumentDetail &instrument, CLinkageManager &linkage);

/// Rows in the order in which they are shown already; those that are not come after them, in their own order.
std::vector<TaskRow> inPlaceOf(const std::vector<TaskRow> &shown, std::vector<TaskRow> rows);

} // namespace TC
