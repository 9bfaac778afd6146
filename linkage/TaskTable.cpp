#include "linkage/TaskTable.h"

#include "host/toolkit/CSimpleTextWidget.h"
#include "linkage/CRealtimeProgressWidget.h"
#include "linkage/CTaskTableCancelButton.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QScrollBar>

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

namespace TC {
namespace {

using GZ::CSimpleTextWidget;

constexpr int kTaskTableId = 10000;
constexpr int kColumns = 7;
const QString kProgressKey = QStringLiteral("clr_task_progress_background");

struct TaskTableWords {
    Q_DECLARE_TR_FUNCTIONS(TC::CRealtimeTaskTableDialog)
};

/// What tells rows apart.
std::tuple<int, int, int> identityOf(const TaskRow &row) {
    return {row.taskId, row.commandId, row.item};
}

/// A cell of parts in a row.
QWidget *cellOf(const QString &objectName, const QList<QWidget *> &parts) {
    auto *cell = new QWidget;
    cell->setObjectName(objectName);
    auto *layout = new QHBoxLayout(cell);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QWidget *part : parts) {
        layout->addWidget(part);
    }
    return cell;
}

/// A part of such a cell.
template <class Part> Part *partAt(const QWidget *cell, int number) {
    return cell ? static_cast<Part *>(cell->layout()->itemAt(number)->widget()) : nullptr;
}

QString progressText(const TaskRow &row) {
    return row.total == 0 ? QString() : QStringLiteral("%1/%2").arg(row.finished).arg(row.total);
}

QString sideKey(const TaskRow &row) {
    return row.buys ? QStringLiteral("ic_clr_index_default_rise") : QStringLiteral("ic_clr_index_default_fall");
}

/// For each new row the old one that it continues, -1 for none. Rows that are alike continue each other in their order.
std::vector<int> continuedRows(const std::vector<TaskRow> &before, const std::vector<TaskRow> &now) {
    std::multimap<std::tuple<int, int, int>, int> left;
    for (std::size_t row = 0; row < before.size(); ++row) {
        left.emplace(identityOf(before[row]), static_cast<int>(row));
    }
    std::vector<int> continued;
    for (const TaskRow &row : now) {
        const auto found = left.find(identityOf(row)); // the first of equal ones
        continued.push_back(found == left.end() ? -1 : found->second);
        if (found != left.end()) {
            left.erase(found);
        }
    }
    return continued;
}

} // namespace

TaskTable::TaskTable(QWidget *parent) : COddEvenRowTable(kTaskTableId, eWholeMenu, parent) {
    setFlag(eHighRows, true);
    setFlag(eSort, false);
    setHeaders({TaskTableWords::tr("资金账号"), TaskTableWords::tr("证券名称"), TaskTableWords::tr("开始时间"),
                TaskTableWords::tr("结束时间"), TaskTableWords::tr("进度"), TaskTableWords::tr("详情"),
                TaskTableWords::tr("状态")});
    constexpr std::pair<EColumn, int> kWidths[kColumns] = {{eAccount, 70}, {eName, 80},      {eStart, 61},
                                                           {eEnd, 61},     {eProgress, 120}, {eStatus, 100},
                                                           {eDetails, 249}};
    for (const auto &[column, width] : kWidths) {
        setDefaultWidth(column, width);
    }
    setWidgetMaker(
        eProgress, [this](int row) { return makeProgress(row); }, eFill);
    setWidgetMaker(eDetails, [this](int row) { return makeDetails(row); });
    setWidgetMaker(eStatus, [this](int row) { return makeStatus(row); });
}

void TaskTable::fill(const std::vector<TaskRow> &rows) {
    const std::vector<TaskRow> before = std::exchange(mRows, rows);
    const std::vector<int> continued = continuedRows(before, rows);
    const int top = rowAt(0);
    mFilling = true;
    arrange(continued, static_cast<int>(before.size()));
    mFilling = false;
    for (int row = 0; row < static_cast<int>(rows.size()); ++row) {
        const int previous = continued[row];
        if (previous < 0) {
            showTexts(row);
        } else if (previous != row || before[previous] != rows[row]) {
            showTexts(row);
            updateWidgets(row, before[previous]);
        }
    }
    keepAtTop(top, continued);
    makeWidgets();
}

/// Moves the rows that go on, makes room for new ones, and takes out the others.
void TaskTable::arrange(const std::vector<int> &continued, int before) {
    const bool isAsItWas = static_cast<int>(continued.size()) == before &&
                           std::find(continued.begin(), continued.end(), -1) == continued.end() &&
                           std::is_sorted(continued.begin(), continued.end());
    if (isAsItWas) {
        return;
    }
    int added = addRows(static_cast<int>(std::count(continued.begin(), continued.end(), -1)));
    QList<int> order;
    std::vector<bool> goesOn(before);
    for (const int row : continued) {
        order.append(row < 0 ? added++ : row);
        if (row >= 0) {
            goesOn[row] = true;
        }
    }
    for (int row = 0; row < before; ++row) {
        if (!goesOn[row]) {
            order.append(row);
        }
    }
    rearrangeRows(order);
    truncateRows(static_cast<int>(continued.size()));
}

/// Scrolls to the row that was at the top when rows above it have come or gone.
void TaskTable::keepAtTop(int row, const std::vector<int> &continued) {
    const auto found = std::find(continued.begin(), continued.end(), row);
    if (row > 0 && found != continued.end()) {
        updateGeometries(); // how far it can be scrolled
        verticalScrollBar()->setValue(static_cast<int>(found - continued.begin()));
    }
}

void TaskTable::showTexts(int row) {
    const TaskRow &shown = mRows[row];
    setText(row, eAccount, shown.account);
    setText(row, eName, shown.instrument);
    setText(row, eStart, shown.start);
    setText(row, eEnd, shown.end);
    setText(row, eProgress, progressText(shown));
    setText(row, eDetails, shown.details());
    setText(row, eStatus, shown.status);
}

/// What was made for the row shows what has changed.
void TaskTable::updateWidgets(int row, const TaskRow &before) {
    const TaskRow &shown = mRows[row];
    if (auto *progress = static_cast<CRealtimeProgressWidget *>(madeWidgetAt(row, eProgress))) {
        progress->setProgress(shown.total, shown.finished);
    }
    const QWidget *details = madeWidgetAt(row, eDetails);
    if (details && shown.priceType != before.priceType) {
        partAt<CSimpleTextWidget>(details, 1)->setText(shown.priceType);
    }
    if (details && (shown.order != before.order || shown.buys != before.buys)) {
        partAt<CSimpleTextWidget>(details, 2)->setText(shown.order);
        partAt<CSimpleTextWidget>(details, 2)->setColorKey(sideKey(shown));
    }
    const QWidget *status = madeWidgetAt(row, eStatus);
    if (status && !shown.cancellable) {
        removeCellWidget(row, eStatus);
    } else if (status) {
        if (shown.status != before.status) {
            partAt<CSimpleTextWidget>(status, 0)->setText(shown.status);
        }
        auto *button = partAt<CTaskTableCancelButton>(status, 1);
        button->setId(row);
        button->setEnabled(shown.cancelEnabled);
        button->setDetails(shown.description());
    }
}

// Widgets get no parent before they are placed: taking one out of a window costs the more, the fuller that is.

QWidget *TaskTable::makeProgress(int row) {
    if (mFilling) {
        return nullptr;
    }
    auto *progress = new CRealtimeProgressWidget;
    progress->setProgress(mRows[row].total, mRows[row].finished);
    return progress;
}

QWidget *TaskTable::makeDetails(int row) {
    if (mFilling) {
        return nullptr;
    }
    auto *priceType = new CSimpleTextWidget(mRows[row].priceType);
    priceType->setColorKey(kProgressKey);
    auto *order = new CSimpleTextWidget(mRows[row].order);
    order->setColorKey(sideKey(mRows[row]));
    return cellOf(QStringLiteral("table_transaction_details"),
                  {new CSimpleTextWidget(TaskTableWords::tr("以")), priceType, order});
}

QWidget *TaskTable::makeStatus(int row) {
    if (mFilling || !mRows[row].cancellable) {
        return nullptr;
    }
    auto *button = new CTaskTableCancelButton(row, 0, 3);
    button->setTask(mRows[row].taskId, mRows[row].commandId);
    button->setEnabled(mRows[row].cancelEnabled);
    button->setDetails(mRows[row].description());
    connect(button, &CTaskTableCancelButton::questionOpened, this, [this, button] { mAsking = button; });
    connect(button, &CTaskTableCancelButton::questionClosed, this, [this] {
        mAsking.clear();
        Q_EMIT answered();
    });
    return cellOf(QStringLiteral("realtime_task__details"), {new CSimpleTextWidget(mRows[row].status), button});
}

} // namespace TC
