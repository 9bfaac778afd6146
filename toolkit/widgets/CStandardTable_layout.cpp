// What the user changes of a table: its layout, kept as a text, and its context menu.

#include "host/toolkit/CStandardTable.h"
#include "host/toolkit/CStyleSheetCenter.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>

#include <algorithm>

namespace GZ {
namespace {

constexpr int kLeastWidth = 20;
constexpr int kMostWidth = 2000;
constexpr int kMenuStyle = 15;
const QString kOrder = QStringLiteral("order");
const QString kWidths = QStringLiteral("widths");
const QString kHidden = QStringLiteral("hidden");
const QString kSort = QStringLiteral("sort");
const QString kDescending = QStringLiteral("descending");

} // namespace

QString CStandardTable::saveConfigStr() const {
    const QHeaderView *header = horizontalHeader();
    QJsonObject layout;
    QJsonArray order;
    bool moved = false;
    QJsonArray hidden;
    for (int place = 0; place < columnCount(); ++place) {
        order.append(heading(header->logicalIndex(place)));
        moved = moved || header->logicalIndex(place) != place;
        if (isColumnHidden(place)) {
            hidden.append(heading(place));
        }
    }
    if (moved) {
        layout.insert(kOrder, order);
    }
    if (!hidden.isEmpty()) {
        layout.insert(kHidden, hidden);
    }
    QJsonObject widths;
    for (const int column : mSizedColumns) {
        if (!isColumnHidden(column)) {
            widths.insert(heading(column), columnWidth(column));
        }
    }
    if (!widths.isEmpty()) {
        layout.insert(kWidths, widths);
    }
    if (mSortColumn >= 0) {
        layout.insert(kSort, heading(mSortColumn));
        layout.insert(kDescending, mSortOrder == Qt::DescendingOrder);
    }
    return layout.isEmpty() ? QString()
                            : QString::fromUtf8(QJsonDocument(layout).toJson(QJsonDocument::Compact));
}

bool CStandardTable::loadConfigStr(const QString &text) {
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    if (!document.isObject()) {
        return false;
    }
    restoreDefaultLayout();
    const QJsonObject layout = document.object();
    QHeaderView *header = horizontalHeader();
    int place = 0;
    for (const QJsonValue &name : layout.value(kOrder).toArray()) {
        const int column = columnOf(name.toString());
        if (column >= 0 && header->visualIndex(column) >= place) {
            header->moveSection(header->visualIndex(column), place++);
        }
    }
    for (const QJsonValue &name : layout.value(kHidden).toArray()) {
        const int column = columnOf(name.toString());
        if (column >= 0 && column != lastVisibleColumn()) {
            hideColumn(column);
        }
    }
    const QJsonObject widths = layout.value(kWidths).toObject();
    for (auto width = widths.begin(); width != widths.end(); ++width) {
        const int column = columnOf(width.key());
        if (column >= 0 && width.value().isDouble()) {
            setColumnWidth(column, std::clamp(width.value().toInt(kLeastWidth), kLeastWidth, kMostWidth));
            mSizedColumns.insert(column);
        }
    }
    const bool descending = layout.value(kDescending).toBool();
    sortRows(layout.contains(kSort) ? columnOf(layout.value(kSort).toString()) : -1,
             descending ? Qt::DescendingOrder : Qt::AscendingOrder);
    return true;
}

void CStandardTable::restoreDefaultLayout() {
    QHeaderView *header = horizontalHeader();
    mSizedColumns.clear();
    for (int column = 0; column < columnCount(); ++column) {
        showColumn(column);
        header->moveSection(header->visualIndex(column), column);
        setColumnWidth(column, mDefaultWidths.value(column));
    }
    sortRows(-1, Qt::AscendingOrder);
}

// Context menu

void CStandardTable::contextMenuEvent(QContextMenuEvent *event) {
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setStyleSheet(CStyleSheetCenter::getStyle(kMenuStyle));
    addCopyEntries(*menu, viewport()->mapFromGlobal(event->globalPos())); // it may come from the headings
    addColumnEntries(*menu);
    if (menu->isEmpty()) {
        delete menu;
    } else {
        menu->popup(event->globalPos()); // waits for nothing: the table may go first
    }
}

QList<int> CStandardTable::selectedRows() const {
    QList<int> rows;
    for (const QModelIndex &index : selectionModel()->selectedRows()) {
        rows.append(index.row());
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

/// Rows as lines with tabs between the cells, in the order of the columns as they lie.
QString CStandardTable::copiedText(const QList<int> &rows) const {
    QList<int> columns;
    for (int place = 0; place < columnCount(); ++place) {
        const int column = horizontalHeader()->logicalIndex(place);
        if (!isColumnHidden(column)) {
            columns.append(column);
        }
    }
    QString text;
    const auto addLine = [&](const auto &textOf) {
        QStringList cells;
        for (const int column : columns) {
            cells.append(textOf(column));
        }
        text += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    };
    if (mMenuFlags & eCopyWithHeadings) {
        addLine([this](int column) { return heading(column); });
    }
    for (const int row : rows) {
        addLine([this, row](int column) { return textAt(row, column); });
    }
    return text;
}

void CStandardTable::addCopyEntries(QMenu &menu, const QPoint &at) {
    const auto add = [&](int flag, const QString &text, bool enabled, const auto &copy) {
        if (mMenuFlags & flag) {
            menu.addAction(text, this, copy)->setEnabled(enabled);
        }
    };
    const auto toClipboard = [](const QString &text) { QGuiApplication::clipboard()->setText(text); };
    const QString cell = textAt(rowAt(at.y()), columnAt(at.x()));
    const QList<int> selected = selectedRows();
    add(eCopyCell, tr("复制单元格"), !cell.isEmpty(), [=] { toClipboard(cell); });
    add(eCopyRows, tr("复制选中行"), !selected.isEmpty(), [=] { toClipboard(copiedText(selected)); });
    add(eCopyAll, tr("复制全部"), rowCount() > 0, [=] {
        QList<int> rows;
        for (int row = 0; row < rowCount(); ++row) {
            rows.append(row);
        }
        toClipboard(copiedText(rows));
    });
    add(eSelectAll, tr("全选"), selectionMode() != NoSelection && rowCount() > 0, [=] { selectAll(); });
}

void CStandardTable::addColumnEntries(QMenu &menu) {
    if (horizontalHeader()->isHidden()) {
        return; // nothing tells the columns apart
    }
    menu.addSeparator();
    if (mMenuFlags & eFitColumns) {
        menu.addAction(tr("自动列宽"), this, [this] {
            mSizedColumns.clear();
            adjustVisibleRowsColumnWidth();
        });
    }
    if (mMenuFlags & eShowColumns) {
        QMenu *columns = menu.addMenu(tr("显示列"));
        for (int column = 0; column < columnCount(); ++column) {
            QAction *entry = columns->addAction(heading(column));
            entry->setCheckable(true);
            entry->setChecked(!isColumnHidden(column));
            const bool isLast = columnCount() - horizontalHeader()->hiddenSectionCount() == 1;
            entry->setEnabled(isColumnHidden(column) || !isLast);
            connect(entry, &QAction::toggled, this,
                    [this, column](bool shown) { setColumnHidden(column, !shown); });
        }
    }
    if ((mMenuFlags & eUnsorted) && (mFlags & eSort)) {
        menu.addAction(tr("取消排序"), this, [this] { sortRows(-1, Qt::AscendingOrder); })
            ->setEnabled(mSortColumn >= 0);
    }
    if (mMenuFlags & eDefaultLayout) {
        menu.addAction(tr("恢复缺省布局"), this, [this] {
            restoreDefaultLayout();
            adjustVisibleRowsColumnWidth();
        });
    }
}

} // namespace GZ
