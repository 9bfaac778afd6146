#include "host/toolkit/CStandardTable.h"

#include "host/toolkit/ThemeColor.h"
#include "toolkit/widgets/ColumnLayout.h"
#include "toolkit/widgets/ReadyWidgets.h"
#include "toolkit/widgets/RowOrder.h"
#include "toolkit/widgets/TableCell.h"
#include "toolkit/widgets/TableHeader.h"
#include "toolkit/widgets/TableMenu.h"

#include <QAbstractButton>
#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QJsonDocument>
#include <QMenu>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include <algorithm>
#include <utility>

namespace GZ {
namespace {

constexpr int kRowHeight = 22;
constexpr int kHighRowHeight = 32;
constexpr int kHeaderHeight = 24;
constexpr int kNarrowest = 20; ///< column
constexpr int kCellTextMargins = 12; ///< on both sides of a text together
constexpr int kSortArrow = 14;
constexpr int kPlacement = Qt::AlignHorizontal_Mask | Qt::AlignVertical_Mask;
const QString kSort = QStringLiteral("sort");
const QString kDescending = QStringLiteral("descending");

QPalette tablePalette() {
    QPalette colors;
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        colors.setColor(role, themeColor("clr_text_default"));
        colors.setColor(QPalette::Disabled, role, themeColor("clr_menu_text_disable"));
    }
    colors.setColor(QPalette::Base, themeColor("clr_table_row_even"));
    colors.setColor(QPalette::AlternateBase, themeColor("clr_table_row_odd"));
    colors.setColor(QPalette::Window, themeColor("clr_dialog_bg"));
    colors.setColor(QPalette::Button, themeColor("clr_table_header_bg"));
    colors.setColor(QPalette::Highlight, themeColor("clr_selection_bg"));
    colors.setColor(QPalette::HighlightedText, themeColor("clr_selection_text"));
    return colors;
}

/// Rows are chosen whole: no cell of its own shows that it has the keyboard. A text beneath a widget is not shown.
class RowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state &= ~QStyle::State_HasFocus;
        const auto *view = static_cast<const QAbstractItemView *>(option->widget);
        if (view && view->indexWidget(index)) {
            option->text.clear();
        }
    }
};

/// What holds a widget in a cell: it lies in it at its own size, or fills it.
QWidget *holderOf(QWidget *widget, int alignment) {
    auto *holder = new QWidget;
    auto *layout = new QHBoxLayout(holder);
    layout->setContentsMargins(0, 0, 0, 0);
    Qt::Alignment placed(alignment & kPlacement);
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
    : QTableWidget(parent), mId(id), mMenuFlags(menuFlags), mOrder(std::make_unique<RowOrder>(*this)) {
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
    connect(header, &QHeaderView::sectionClicked, this, &CStandardTable::onHeadingClicked);
    mColumns = std::make_unique<ColumnLayout>(*this);
    mReady = std::make_unique<ReadyWidgets>(*this, [this](int row, int column, QWidget *widget, int alignment) {
        setWidget(row, column, widget, alignment);
    });
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &CStandardTable::makeWidgets);
    setHeaderHeight(kHeaderHeight);
    applyFlags();
    CStandardTable::onUiResourceChanged();
}

CStandardTable::~CStandardTable() {
    disconnect(verticalScrollBar(), nullptr, this, nullptr); // it ends after what makes the widgets
}

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
    mColumns->reset();
    mOrder->forget();
    showSorting();
}

void CStandardTable::setDefaultWidth(int column, int width) {
    mColumns->setDefaultWidth(column, width);
}

// Cells

int CStandardTable::addRows(int count) {
    const int first = rowCount();
    setRowCount(first + std::max(count, 0));
    for (int row = first; row < rowCount(); ++row) {
        for (int column = 0; column < columnCount(); ++column) {
            QTableWidgetItem *item = column == 0 ? new RowHead : new QTableWidgetItem;
            item->setTextAlignment(Qt::AlignCenter);
            setItem(row, column, item);
        }
    }
    mOrder->added(first);
    return first;
}

void CStandardTable::truncateRows(int count) {
    setRowCount(std::clamp(count, 0, rowCount()));
}

void CStandardTable::rearrangeRows(const QList<int> &rows) {
    mOrder->rearrange(rows);
}

void CStandardTable::setText(int row, int column, const QString &text, int alignment,
                             const QVariant &sortValue) {
    if (QTableWidgetItem *cell = item(row, column)) {
        cell->setText(text);
        cell->setTextAlignment(Qt::Alignment(alignment & kPlacement));
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

void CStandardTable::setWidgetMaker(int column, std::function<QWidget *(int row)> make, int alignment) {
    mReady->setMaker(column, std::move(make), alignment);
}

void CStandardTable::makeWidgets() {
    mReady->update();
}

void CStandardTable::resizeEvent(QResizeEvent *event) {
    QTableWidget::resizeEvent(event);
    makeWidgets();
}

QWidget *CStandardTable::widgetAt(int row, int column) const {
    mReady->make(row, column);
    return madeWidgetAt(row, column);
}

QWidget *CStandardTable::madeWidgetAt(int row, int column) const {
    const QWidget *holder = cellWidget(row, column);
    const QLayoutItem *placed = holder && holder->layout() ? holder->layout()->itemAt(0) : nullptr;
    return placed ? const_cast<QLayoutItem *>(placed)->widget() : nullptr;
}

QString CStandardTable::textAt(int row, int column) const {
    const QTableWidgetItem *cell = item(row, column);
    QString text = cell ? cell->text() : QString();
    const QWidget *holder = text.isEmpty() ? cellWidget(row, column) : nullptr;
    if (holder) {
        for (const QWidget *part : holder->findChildren<QWidget *>()) {
            text += qobject_cast<const QAbstractButton *>(part) ? QString() : part->property("text").toString();
        }
    }
    return text;
}

// Order of rows

void CStandardTable::onHeadingClicked(int column) {
    if (mFlags & eSort) {
        const bool turned = column == mOrder->column() && mOrder->order() == Qt::AscendingOrder;
        sortRows(column, turned ? Qt::DescendingOrder : Qt::AscendingOrder);
    }
}

void CStandardTable::sortRows(int column, Qt::SortOrder order) {
    mOrder->sortBy(column, order);
    showSorting();
}

void CStandardTable::showSorting() {
    const bool sorted = (mFlags & eSort) && mOrder->column() >= 0;
    horizontalHeader()->setSortIndicatorShown(sorted);
    if (sorted) {
        horizontalHeader()->setSortIndicator(mOrder->column(), mOrder->order());
    }
}

// The user's layout

QString CStandardTable::saveConfigStr() const {
    QJsonObject layout = mColumns->save();
    if (mOrder->column() >= 0) {
        layout.insert(kSort, mColumns->name(mOrder->column()));
        layout.insert(kDescending, mOrder->order() == Qt::DescendingOrder);
    }
    return layout.isEmpty() ? QString()
                            : QString::fromUtf8(QJsonDocument(layout).toJson(QJsonDocument::Compact));
}

bool CStandardTable::loadConfigStr(const QString &text) {
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    if (!document.isObject()) {
        return false;
    }
    const QJsonObject layout = document.object();
    mColumns->load(layout);
    const int column = layout.contains(kSort) ? mColumns->columnOf(layout.value(kSort).toString()) : -1;
    sortRows(column, layout.value(kDescending).toBool() ? Qt::DescendingOrder : Qt::AscendingOrder);
    return true;
}

void CStandardTable::restoreDefaultLayout() {
    mColumns->restore();
    sortRows(-1, Qt::AscendingOrder);
}

void CStandardTable::contextMenuEvent(QContextMenuEvent *event) {
    const QPoint at = viewport()->mapFromGlobal(event->globalPos()); // it may come from the headings
    QMenu *menu = makeTableMenu(*this, *mColumns, mMenuFlags, at);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (menu->isEmpty()) {
        delete menu;
    } else {
        menu->popup(event->globalPos()); // waits for nothing: the table may go first
    }
}

// Widths

int CStandardTable::neededWidth(int column) const {
    int width = fontMetrics().horizontalAdvance(mColumns->heading(column)) + kCellTextMargins + kSortArrow;
    const int first = std::max(rowAt(0), 0);
    const int last = rowAt(viewport()->height() - 1);
    for (int row = first; row <= (last < 0 ? rowCount() - 1 : last); ++row) {
        const QWidget *holder = cellWidget(row, column);
        const int needed = holder ? holder->sizeHint().width()
                                  : fontMetrics().horizontalAdvance(textAt(row, column)) + kCellTextMargins;
        width = std::max(width, needed);
    }
    return width;
}

void CStandardTable::adjustVisibleRowsColumnWidth() {
    mOrder->apply();
    for (int column = 0; column < columnCount(); ++column) {
        if (!mColumns->isSized(column)) {
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
