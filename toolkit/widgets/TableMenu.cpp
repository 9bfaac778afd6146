#include "toolkit/widgets/TableMenu.h"

#include "host/toolkit/CStandardTable.h"
#include "host/toolkit/CStyleSheetCenter.h"
#include "toolkit/widgets/ColumnLayout.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMenu>

#include <algorithm>
#include <numeric>

namespace GZ {
namespace {

QList<int> selectedRows(const CStandardTable &table) {
    QList<int> rows;
    for (const QModelIndex &index : table.selectionModel()->selectedRows()) {
        rows.append(index.row());
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

QList<int> allRows(const CStandardTable &table) {
    QVector<int> rows(table.rowCount());
    std::iota(rows.begin(), rows.end(), 0);
    return rows.toList();
}

/// Rows as lines with tabs between the cells, in the order of the columns as they lie.
QString copiedText(const CStandardTable &table, const ColumnLayout &columns, bool withHeadings,
                   const QList<int> &rows) {
    QString text;
    const auto addLine = [&](const auto &textOf) {
        QStringList cells;
        for (const int column : columns.shown()) {
            cells.append(textOf(column));
        }
        text += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    };
    if (withHeadings) {
        addLine([&](int column) { return columns.heading(column); });
    }
    for (const int row : rows) {
        addLine([&](int column) { return table.textAt(row, column); });
    }
    return text;
}

void addCopyEntries(QMenu &menu, CStandardTable &table, const ColumnLayout &columns, int entries,
                    const QPoint &at) {
    const auto add = [&](int flag, const QString &text, bool enabled, const auto &copy) {
        if (entries & flag) {
            menu.addAction(text, &table, copy)->setEnabled(enabled);
        }
    };
    const auto toClipboard = [](const QString &text) { QGuiApplication::clipboard()->setText(text); };
    const auto copied = [&table, &columns, entries](const QList<int> &rows) {
        return copiedText(table, columns, entries & CStandardTable::eCopyWithHeadings, rows);
    };
    const QString cell = table.textAt(table.rowAt(at.y()), table.columnAt(at.x()));
    const bool hasRows = table.rowCount() > 0;
    add(CStandardTable::eCopyCell, CStandardTable::tr("复制单元格"), !cell.isEmpty(),
        [=] { toClipboard(cell); });
    add(CStandardTable::eCopyRows, CStandardTable::tr("复制选中行"), !selectedRows(table).isEmpty(),
        [=, &table] { toClipboard(copied(selectedRows(table))); });
    add(CStandardTable::eCopyAll, CStandardTable::tr("复制全部"), hasRows,
        [=, &table] { toClipboard(copied(allRows(table))); });
    add(CStandardTable::eSelectAll, CStandardTable::tr("全选"),
        hasRows && table.selectionMode() != QAbstractItemView::NoSelection, [&table] { table.selectAll(); });
}

void addShowColumns(QMenu &menu, CStandardTable &table, const ColumnLayout &columns) {
    QMenu *shown = menu.addMenu(CStandardTable::tr("显示列"));
    for (int column = 0; column < table.columnCount(); ++column) {
        QAction *entry = shown->addAction(columns.heading(column));
        entry->setCheckable(true);
        entry->setChecked(!table.isColumnHidden(column));
        entry->setEnabled(table.isColumnHidden(column) || columns.shown().size() > 1);
        QObject::connect(entry, &QAction::toggled, &table,
                         [&table, column](bool show) { table.setColumnHidden(column, !show); });
    }
}

void addColumnEntries(QMenu &menu, CStandardTable &table, ColumnLayout &columns, int entries) {
    if (table.horizontalHeader()->isHidden()) {
        return; // nothing tells the columns apart
    }
    menu.addSeparator();
    if (entries & CStandardTable::eFitColumns) {
        menu.addAction(CStandardTable::tr("自动列宽"), &table, [&table, &columns] {
            columns.forgetSized();
            table.adjustVisibleRowsColumnWidth();
        });
    }
    if (entries & CStandardTable::eShowColumns) {
        addShowColumns(menu, table, columns);
    }
    if ((entries & CStandardTable::eUnsorted) && (table.getFlags() & CStandardTable::eSort)) {
        menu.addAction(CStandardTable::tr("取消排序"), &table,
                       [&table] { table.sortRows(-1, Qt::AscendingOrder); })
            ->setEnabled(table.horizontalHeader()->isSortIndicatorShown());
    }
    if (entries & CStandardTable::eDefaultLayout) {
        menu.addAction(CStandardTable::tr("恢复缺省布局"), &table, [&table] {
            table.restoreDefaultLayout();
            table.adjustVisibleRowsColumnWidth();
        });
    }
}

} // namespace

QMenu *makeTableMenu(CStandardTable &table, ColumnLayout &columns, int entries, const QPoint &at) {
    auto *menu = new QMenu(&table);
    menu->setStyleSheet(CStyleSheetCenter::getStyle(CStyleSheetCenter::eMenu));
    addCopyEntries(*menu, table, columns, entries, at);
    addColumnEntries(*menu, table, columns, entries);
    return menu;
}

} // namespace GZ
