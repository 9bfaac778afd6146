#include "toolkit/widgets/ColumnLayout.h"

#include <QEvent>
#include <QHeaderView>
#include <QJsonArray>
#include <QTableWidget>

#include <algorithm>

namespace GZ {
namespace {

constexpr int kLeastWidth = 20;
constexpr int kMostWidth = 2000;
const QString kOrder = QStringLiteral("order");
const QString kWidths = QStringLiteral("widths");
const QString kHidden = QStringLiteral("hidden");

void insertUnlessEmpty(QJsonObject &layout, const QString &key, const QJsonArray &names) {
    if (!names.isEmpty()) {
        layout.insert(key, names);
    }
}

} // namespace

ColumnLayout::ColumnLayout(QTableWidget &table) : mTable(table) {
    const QHeaderView *header = table.horizontalHeader();
    header->viewport()->installEventFilter(this);
    connect(header, &QHeaderView::sectionResized, this, &ColumnLayout::onResized);
}

QString ColumnLayout::heading(int column) const {
    const QTableWidgetItem *item = mTable.horizontalHeaderItem(column);
    return item ? item->text() : QString();
}

QString ColumnLayout::name(int column) const {
    const QTableWidgetItem *item = mTable.horizontalHeaderItem(column);
    const QString kept = item ? item->data(kNameRole).toString() : QString();
    return kept.isEmpty() ? heading(column) : kept;
}

int ColumnLayout::columnOf(const QString &text) const {
    for (int column = 0; column < mTable.columnCount(); ++column) {
        if (name(column) == text) {
            return column;
        }
    }
    return -1;
}

QList<int> ColumnLayout::shown() const {
    QList<int> columns;
    for (int place = 0; place < mTable.columnCount(); ++place) {
        const int column = mTable.horizontalHeader()->logicalIndex(place);
        if (!mTable.isColumnHidden(column)) {
            columns.append(column);
        }
    }
    return columns;
}

// Widths

void ColumnLayout::reset() {
    mDefaultWidths.clear();
    for (int column = 0; column < mTable.columnCount(); ++column) {
        mDefaultWidths.append(mTable.columnWidth(column));
    }
    mSized.clear();
}

void ColumnLayout::setDefaultWidth(int column, int width) {
    if (column >= 0 && column < mDefaultWidths.size()) {
        mDefaultWidths[column] = width;
        mTable.setColumnWidth(column, width);
    }
}

bool ColumnLayout::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick) {
        mPressed = true;
    } else if (event->type() == QEvent::MouseButtonRelease) {
        mPressed = false;
    }
    return QObject::eventFilter(watched, event);
}

void ColumnLayout::onResized(int column) {
    const QList<int> columns = shown();
    const bool takesTheRest =
        mTable.horizontalHeader()->stretchLastSection() && !columns.isEmpty() && column == columns.last();
    if (mPressed && !takesTheRest) {
        mSized.insert(column);
    }
}

// What is kept

QJsonObject ColumnLayout::save() const {
    const QHeaderView *header = mTable.horizontalHeader();
    QJsonArray order;
    QJsonArray hidden;
    bool moved = false;
    for (int place = 0; place < mTable.columnCount(); ++place) {
        order.append(name(header->logicalIndex(place)));
        moved = moved || header->logicalIndex(place) != place;
        if (mTable.isColumnHidden(place)) {
            hidden.append(name(place));
        }
    }
    QJsonObject widths;
    for (const int column : mSized) {
        if (!mTable.isColumnHidden(column)) {
            widths.insert(name(column), mTable.columnWidth(column));
        }
    }
    QJsonObject layout;
    insertUnlessEmpty(layout, kOrder, moved ? order : QJsonArray());
    insertUnlessEmpty(layout, kHidden, hidden);
    if (!widths.isEmpty()) {
        layout.insert(kWidths, widths);
    }
    return layout;
}

void ColumnLayout::load(const QJsonObject &layout) {
    restore();
    QHeaderView *header = mTable.horizontalHeader();
    int place = 0;
    for (const QJsonValue &name : layout.value(kOrder).toArray()) {
        const int column = columnOf(name.toString());
        if (column >= 0 && header->visualIndex(column) >= place) {
            header->moveSection(header->visualIndex(column), place++);
        }
    }
    for (const QJsonValue &name : layout.value(kHidden).toArray()) {
        const int column = columnOf(name.toString());
        if (column >= 0 && shown().size() > 1) {
            mTable.hideColumn(column);
        }
    }
    const QJsonObject widths = layout.value(kWidths).toObject();
    for (auto width = widths.begin(); width != widths.end(); ++width) {
        const int column = columnOf(width.key());
        if (column >= 0 && width.value().isDouble()) {
            mTable.setColumnWidth(column,
                                  std::clamp(width.value().toInt(kLeastWidth), kLeastWidth, kMostWidth));
            mSized.insert(column);
        }
    }
}

void ColumnLayout::restore() {
    QHeaderView *header = mTable.horizontalHeader();
    mSized.clear();
    for (int column = 0; column < mTable.columnCount(); ++column) {
        mTable.showColumn(column);
        header->moveSection(header->visualIndex(column), column);
        mTable.setColumnWidth(column, mDefaultWidths.value(column));
    }
}

} // namespace GZ
