// Cells, columns and order of rows.

#include "host/toolkit/CStandardTable.h"

#include "toolkit/widgets/TableCell.h"
#include "toolkit/widgets/TableHeader.h"

#include <QAbstractButton>
#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QStyledItemDelegate>

#include <algorithm>
#include <numeric>

namespace GZ {
namespace {

constexpr int kRowHeight = 22;
constexpr int kHighRowHeight = 32;
constexpr int kHeaderHeight = 24;
constexpr int kNarrowest = 20; ///< column
constexpr int kTextMargin = 12; ///< on both sides of a text together
constexpr int kSortArrow = 14;

QColor color(const char *key) {
    return CUiResource::instance().getColor(QLatin1String(key));
}

QPalette tablePalette() {
    QPalette colors;
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        colors.setColor(role, color("clr_text_default"));
        colors.setColor(QPalette::Disabled, role, color("clr_menu_text_disable"));
    }
    colors.setColor(QPalette::Base, color("clr_table_row_even"));
    colors.setColor(QPalette::AlternateBase, color("clr_table_row_odd"));
    colors.setColor(QPalette::Window, color("clr_dialog_bg"));
    colors.setColor(QPalette::Button, color("clr_table_header_bg"));
    colors.setColor(QPalette::Highlight, color("clr_selection_bg"));
    colors.setColor(QPalette::HighlightedText, color("clr_selection_text"));
    return colors;
}

/// Rows are chosen whole: no cell of its own shows that it has the keyboard.
class RowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state &= ~QStyle::State_HasFocus;
    }
};

/// What holds a widget in a cell: it lies in it at its own size, or fills it.
QWidget *holderOf(QWidget *widget, int alignment) {
    auto *holder = new QWidget;
    auto *layout = new QHBoxLayout(holder);
    layout->setContentsMargins(0, 0, 0, 0);
    Qt::Alignment placed(alignment & (Qt::AlignHorizontal_Mask | Qt::AlignVertical_Mask));
    if (alignment & CStandardTable::eFillWidth) {
        placed &= ~Qt::AlignHorizontal_Mask;
    }
    if (alignment & CStandardTable::eFillHeight) {
        placed &= ~Qt::AlignVertical_Mask;
    }
    layout->addWidget(widget, 0, placed);
    return holder;
}

} // namespace

CStandardTable::CStandardTable(int id, int menuFlags, QWidget *parent)
    : QTableWidget(parent), mId(id), mMenuFlags(menuFlags) {
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setHorizontalScrollMode(ScrollPerPixel);
    setShowGrid(false);
    setFrameShape(NoFrame);
    setCornerButtonEnabled(false);
    setWordWrap(false);
    setItemDelegate(new RowDelegate(this));
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(kRowHeight);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    QHeaderView *header = new TableHeader(this);
    setHorizontalHeader(header);
    header->setHighlightSections(false);
    header->setMinimumSectionSize(kNarrowest);
    header->setStretchLastSection(true);
    header->viewport()->installEventFilter(this);
    connect(header, &QHeaderView::sectionClicked, this, &CStandardTable::onHeadingClicked);
    connect(header, &QHeaderView::sectionResized, this, &CStandardTable::onSectionResized);
    setHeaderHeight(kHeaderHeight);
    applyFlags();
    CStandardTable::onUiResourceChanged();
}

CStandardTable::~CStandardTable() = default;

void CStandardTable::setFlags(int flags) {
    mFlags = flags;
    applyFlags();
}

void CStandardTable::applyFlags() {
    const bool focus = mFlags & eFocus;
    setFocusPolicy(focus ? Qt::StrongFocus : Qt::NoFocus);
    setSelectionMode(focus ? ExtendedSelection : NoSelection);
    QHeaderView *header = horizontalHeader();
    header->setSectionsMovable(mFlags & eMoveColumns);
    header->setSectionResizeMode(mFlags & eResizeColumns ? QHeaderView::Interactive : QHeaderView::Fixed);
    header->setSectionsClickable(mFlags & eSort);
    verticalHeader()->setDefaultSectionSize(mFlags & eHighRows ? kHighRowHeight : kRowHeight);
    showSorting();
}

void CStandardTable::setAutoAdjust(bool adjust) {
    horizontalHeader()->setStretchLastSection(adjust);
}

void CStandardTable::setHeaderHeight(int height) {
    horizontalHeader()->setVisible(height > 0);
    if (height > 0) {
        horizontalHeader()->setFixedHeight(height);
    }
}

void CStandardTable::setHeaders(const QStringList &headers) {
    clearRows();
    setColumnCount(0);
    setColumnCount(headers.size());
    setHorizontalHeaderLabels(headers);
    mDefaultWidths.clear();
    for (int column = 0; column < headers.size(); ++column) {
        mDefaultWidths.append(columnWidth(column));
    }
    mSizedColumns.clear();
    mSortColumn = -1;
    showSorting();
}

void CStandardTable::setDefaultWidth(int column, int width) {
    if (column >= 0 && column < mDefaultWidths.size()) {
        mDefaultWidths[column] = width;
        setColumnWidth(column, width);
    }
}

QString CStandardTable::heading(int column) const {
    const QTableWidgetItem *item = horizontalHeaderItem(column);
    return item ? item->text() : QString();
}

int CStandardTable::columnOf(const QString &text) const {
    for (int column = 0; column < columnCount(); ++column) {
        if (heading(column) == text) {
            return column;
        }
    }
    return -1;
}

int CStandardTable::lastVisibleColumn() const {
    for (int place = columnCount() - 1; place >= 0; --place) {
        const int column = horizontalHeader()->logicalIndex(place);
        if (!isColumnHidden(column)) {
            return column;
        }
    }
    return -1;
}

// Cells

int CStandardTable::addRow() {
    const int row = rowCount();
    insertRow(row);
    for (int column = 0; column < columnCount(); ++column) {
        auto *item = new QTableWidgetItem;
        item->setTextAlignment(eCentered);
        setItem(row, column, item);
    }
    if (QTableWidgetItem *first = item(row, 0)) {
        first->setData(eRowNumber, mNextRow);
    }
    ++mNextRow;
    return row;
}

void CStandardTable::clearRows() {
    setRowCount(0);
    mNextRow = 0;
}

void CStandardTable::setText(int row, int column, const QString &text, int alignment,
                             const QVariant &sortValue) {
    if (QTableWidgetItem *cell = item(row, column)) {
        cell->setText(text);
        cell->setTextAlignment(alignment & (Qt::AlignHorizontal_Mask | Qt::AlignVertical_Mask));
        cell->setData(eSortValue, sortValue);
    }
}

void CStandardTable::setTextColor(int row, int column, const QString &colorKey) {
    if (QTableWidgetItem *cell = item(row, column)) {
        cell->setData(eColorKey, colorKey);
        cell->setForeground(CUiResource::instance().getColor(colorKey));
    }
}

void CStandardTable::setWidget(int row, int column, QWidget *widget, int alignment) {
    if (!item(row, column)) {
        delete widget; // it is the table's, and there is no such cell
        return;
    }
    setCellWidget(row, column, holderOf(widget, alignment));
}

QWidget *CStandardTable::widgetAt(int row, int column) const {
    const QWidget *holder = cellWidget(row, column);
    const QLayoutItem *placed = holder && holder->layout() ? holder->layout()->itemAt(0) : nullptr;
    return placed ? const_cast<QLayoutItem *>(placed)->widget() : nullptr;
}

QString CStandardTable::textAt(int row, int column) const {
    const QTableWidgetItem *cell = item(row, column);
    QString text = cell ? cell->text() : QString();
    if (const QWidget *holder = cellWidget(row, column)) {
        for (const QWidget *part : holder->findChildren<QWidget *>()) {
            text += qobject_cast<const QAbstractButton *>(part) ? QString() : part->property("text").toString();
        }
    }
    return text;
}

// Order of rows

void CStandardTable::onHeadingClicked(int column) {
    if (mFlags & eSort) {
        const bool turned = column == mSortColumn && mSortOrder == Qt::AscendingOrder;
        sortRows(column, turned ? Qt::DescendingOrder : Qt::AscendingOrder);
    }
}

void CStandardTable::sortRows(int column, Qt::SortOrder order) {
    mSortColumn = column < columnCount() ? std::max(column, -1) : -1;
    mSortOrder = order;
    showSorting();
    reorderRows(orderedRows(mSortColumn, order));
}

QList<int> CStandardTable::orderedRows(int column, Qt::SortOrder order) const {
    QList<int> rows;
    for (int row = 0; row < rowCount(); ++row) {
        rows.append(row);
    }
    const auto number = [this](int row) { return item(row, 0) ? item(row, 0)->data(eRowNumber).toInt() : row; };
    std::sort(rows.begin(), rows.end(), [&](int a, int b) {
        if (column >= 0) {
            const QTableWidgetItem *left = item(order == Qt::AscendingOrder ? a : b, column);
            const QTableWidgetItem *right = item(order == Qt::AscendingOrder ? b : a, column);
            if (sortsBefore(left, right) || sortsBefore(right, left)) {
                return sortsBefore(left, right);
            }
        }
        return number(a) < number(b);
    });
    return rows;
}

/// Puts the rows into another order: place 0 gets the row `rows[0]`.
void CStandardTable::reorderRows(const QList<int> &rows) {
    if (std::is_sorted(rows.begin(), rows.end())) {
        return;
    }
    QList<QTableWidgetItem *> cells;
    for (const int row : rows) {
        for (int column = 0; column < columnCount(); ++column) {
            cells.append(takeItem(row, column));
        }
    }
    for (int row = 0; row < rowCount(); ++row) {
        for (int column = 0; column < columnCount(); ++column) {
            setItem(row, column, cells[row * columnCount() + column]);
        }
    }
}

void CStandardTable::showSorting() {
    const bool sorted = (mFlags & eSort) && mSortColumn >= 0;
    horizontalHeader()->setSortIndicatorShown(sorted);
    if (sorted) {
        horizontalHeader()->setSortIndicator(mSortColumn, mSortOrder);
    }
}

// Widths

bool CStandardTable::eventFilter(QObject *watched, QEvent *event) {
    if (watched == horizontalHeader()->viewport()) {
        if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick) {
            mPressed = true;
        } else if (event->type() == QEvent::MouseButtonRelease) {
            mPressed = false;
        }
    }
    return QTableWidget::eventFilter(watched, event);
}

void CStandardTable::onSectionResized(int column) {
    const bool takesTheRest = horizontalHeader()->stretchLastSection() && column == lastVisibleColumn();
    if (mPressed && !takesTheRest) {
        mSizedColumns.insert(column);
    }
}

int CStandardTable::neededWidth(int column) const {
    int width = fontMetrics().horizontalAdvance(heading(column)) + kTextMargin + kSortArrow;
    const int first = std::max(rowAt(0), 0);
    const int last = rowAt(viewport()->height() - 1);
    for (int row = first; row <= (last < 0 ? rowCount() - 1 : last); ++row) {
        const QWidget *holder = cellWidget(row, column);
        const int needed = holder ? holder->sizeHint().width()
                                  : fontMetrics().horizontalAdvance(textAt(row, column)) + kTextMargin;
        width = std::max(width, needed);
    }
    return width;
}

void CStandardTable::adjustVisibleRowsColumnWidth() {
    reorderRows(orderedRows(mSortColumn, mSortOrder));
    for (int column = 0; column < columnCount(); ++column) {
        if (!mSizedColumns.contains(column)) {
            setColumnWidth(column, neededWidth(column));
        }
    }
}

void CStandardTable::onUiResourceChanged() {
    setPalette(tablePalette());
    setFont(CUiResource::instance().getFont(QStringLiteral("fnt_default_normal")));
    horizontalHeader()->setFont(font());
    horizontalHeader()->viewport()->update();
    for (int row = 0; row < rowCount(); ++row) {
        for (int column = 0; column < columnCount(); ++column) {
            const QTableWidgetItem *cell = item(row, column);
            const QString key = cell ? cell->data(eColorKey).toString() : QString();
            if (!key.isEmpty()) {
                setTextColor(row, column, key);
            }
        }
    }
}

} // namespace GZ
