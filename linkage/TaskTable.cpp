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

constexpr int kTableId = 10000;
constexpr int kColumns = 7;
const QString kProgressKey = QStringLiteral("clr_task_progress_background");

QString tr(const char *text) {
    return QCoreApplication::translate("TC::CRealtimeTaskTableDialog", text);
}

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

TaskTable::TaskTable(QWidget *parent) : COddEvenRowTable(kTableId, eWholeMenu, parent) {
    setFlag(eHighRows, true);
    setFlag(eSort, false);
    setHeaders({TC::tr("资金账号"), TC::tr("证券名称"), TC::tr("开始时间"), TC::tr("结束时间"), TC::tr("进度"),
                TC::tr("详情"), TC::tr("状态")});
    constexpr std::pair<EColumn, int> kWidths[kColumns] = {{eAccount, 70}, {eName, 80},      {eStart, 61},
                                                           {eEnd, 61},     {eProgress, 120}, {eStatus, 100},
                                                           {eDetails, 249}};
    for (const auto &[column, width] : kWidths) {
        setDefaultWidth(column, width);
    }
}

void TaskTable::fill(const std::vector<TaskRow> &rows) {
    const std::vector<TaskRow> before = std::move(mRows);
    std::vector<int> continued = continuedRows(before, rows);
    const int top = rowAt(0);
    arrange(continued, static_cast<int>(before.size()));
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const int place = static_cast<int>(row);
        if (continued[row] < 0) {
            makeWidgets(place);
        }
        if (continued[row] != place || before[continued[row]] != rows[row]) {
            showRow(place, rows[row]);
        }
    }
    mRows = rows;
    keepAtTop(top, continued);
}

/// Moves the rows that go on, makes room for new ones, and takes out the others.
void TaskTable::arrange(const std::vector<int> &continued, int before) {
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

void TaskTable::makeWidgets(int row) {
    // No widget gets a parent before it is placed: taking one out of a window costs the more, the fuller that is.
    setWidget(row, eProgress, new CRealtimeProgressWidget, eFill);
    auto *priceType = new CSimpleTextWidget(QString());
    priceType->setColorKey(kProgressKey);
    setWidget(row, eDetails,
              cellOf(QStringLiteral("table_transaction_details"),
                     {new CSimpleTextWidget(TC::tr("以")), priceType, new CSimpleTextWidget(QString())}),
              eCentered);
}

void TaskTable::showRow(int row, const TaskRow &shown) {
    setText(row, eAccount, shown.account);
    setText(row, eName, shown.instrument);
    setText(row, eStart, shown.start);
    setText(row, eEnd, shown.end);
    static_cast<CRealtimeProgressWidget *>(widgetAt(row, eProgress))->setProgress(shown.total, shown.finished);
    showDetails(row, shown);
    showStatus(row, shown);
}

void TaskTable::showDetails(int row, const TaskRow &shown) {
    const QWidget *cell = widgetAt(row, eDetails);
    partAt<CSimpleTextWidget>(cell, 1)->setText(shown.priceType);
    auto *order = partAt<CSimpleTextWidget>(cell, 2);
    order->setText(shown.order);
    order->setColorKey(shown.buys ? QStringLiteral("ic_clr_index_default_rise")
                                  : QStringLiteral("ic_clr_index_default_fall"));
}

void TaskTable::showStatus(int row, const TaskRow &shown) {
    setText(row, eStatus, shown.cancellable ? QString() : shown.status, eCentered);
    if (!shown.cancellable) {
        removeCellWidget(row, eStatus);
        return;
    }
    if (!widgetAt(row, eStatus)) {
        setWidget(row, eStatus,
                  cellOf(QStringLiteral("realtime_task__details"),
                         {new CSimpleTextWidget(QString()), makeCancelButton(row)}),
                  eCentered);
    }
    const QWidget *cell = widgetAt(row, eStatus);
    partAt<CSimpleTextWidget>(cell, 0)->setText(shown.status);
    auto *button = partAt<CTaskTableCancelButton>(cell, 1);
    button->setId(row);
    button->setTask(shown.taskId, shown.commandId);
    button->setEnabled(shown.cancelEnabled);
}

CTaskTableCancelButton *TaskTable::makeCancelButton(int row) {
    auto *button = new CTaskTableCancelButton(row, 0, 3);
    connect(button, &CTaskTableCancelButton::questionOpened, this, [this, button] { mAsking = button; });
    connect(button, &CTaskTableCancelButton::questionClosed, this, [this] {
        mAsking.clear();
        emit answered();
    });
    return button;
}

} // namespace TC
