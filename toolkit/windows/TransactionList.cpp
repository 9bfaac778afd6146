#include "toolkit/windows/TransactionList.h"

#include "host/records/Enumerations.h"
#include "host/toolkit/CUiResource.h"
#include "host/toolkit/Text.h"
#include "host/toolkit/ThemeColor.h"
#include "host/toolkit/Wording.h"
#include "toolkit/windows/DialogLook.h"

#include <QPainter>
#include <QScrollBar>

#include <array>
#include <utility>

namespace TC {
namespace {

constexpr int kHeadingHeight = 22;
constexpr int kHeightOfRow = 20;
constexpr int kCellMargin = 6; ///< pixels beside the text of a cell

struct Column {
    const char *heading;
    double right; ///< its right edge, as a share of the width
    Qt::Alignment alignment;
};

constexpr std::array<Column, 4> kColumns = {{
    {QT_TRANSLATE_NOOP("TC::TransactionList", "时间"), 0.25, Qt::AlignLeft},
    {QT_TRANSLATE_NOOP("TC::TransactionList", "价格"), 0.48, Qt::AlignRight},
    {QT_TRANSLATE_NOOP("TC::TransactionList", "成交量"), 0.72, Qt::AlignRight},
    {QT_TRANSLATE_NOOP("TC::TransactionList", "成交额"), 1.0, Qt::AlignRight},
}};

/// A volume or an amount; what is not known reads as two dashes.
QString quantityText(double quantity) {
    return quantity > 0.0 ? GZ::formatDoubleNumber(quantity, quantity < 1e4 ? 0 : 2, utils::eFormatScaled,
                                                   false, QStringLiteral("--"))
                          : QStringLiteral("--");
}

/// The place of a text in the cell of a column.
QRect cellOf(size_t column, int width, int y, int height) {
    const int left = column == 0 ? 0 : static_cast<int>(kColumns[column - 1].right * width);
    const int right = static_cast<int>(kColumns[column].right * width);
    return {left + kCellMargin, y, right - left - 2 * kCellMargin, height};
}

} // namespace

TransactionList::TransactionList(QWidget *parent) : QAbstractScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::ClickFocus);
    verticalScrollBar()->setSingleStep(1);
    applyTheme();
}

void TransactionList::setPrices(int decimals, double reference) {
    mDecimals = decimals;
    mReference = reference == kUnsetValue ? 0.0 : reference;
    viewport()->update();
}

void TransactionList::setRows(std::vector<Record> rows) {
    const bool atEnd =
        verticalScrollBar()->maximum() > 0 && verticalScrollBar()->value() == verticalScrollBar()->maximum();
    mRows = std::move(rows);
    fitScrollBar();
    if (atEnd) {
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    }
    viewport()->update();
}

QStringList TransactionList::textsOf(const quoter::QuoterBase &record) const {
    const auto *transaction = dynamic_cast<const quoter::QuoterTransaction *>(&record);
    return {QDateTime::fromMSecsSinceEpoch(record.mTime).toString(GZ::kSecondFormat),
            GZ::formatDoubleNumber(record.mPrice, mDecimals, 0, false, QStringLiteral("--")),
            quantityText(transaction ? transaction->mVolume : 0.0),
            quantityText(transaction ? transaction->mAmount : 0.0)};
}

void TransactionList::applyTheme() {
    setPalette(GZ::dialogPalette());
    setFont(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_default_normal")));
    viewport()->update();
}

void TransactionList::paintEvent(QPaintEvent *) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), GZ::themeColor("clr_table_row_even"));
    int y = kHeadingHeight;
    const int count = static_cast<int>(mRows.size());
    for (int row = verticalScrollBar()->value(); row < count && y < viewport()->height(); ++row) {
        drawRow(painter, row, y);
        y += kHeightOfRow;
    }
    drawHeadings(painter);
    if (mRows.empty()) {
        painter.setPen(GZ::themeColor("clr_menu_text_disable"));
        painter.drawText(viewport()->rect().adjusted(0, kHeadingHeight, 0, 0), Qt::AlignCenter,
                         tr("该时段没有成交明细"));
    }
}

void TransactionList::resizeEvent(QResizeEvent *event) {
    QAbstractScrollArea::resizeEvent(event);
    fitScrollBar();
}

void TransactionList::scrollContentsBy(int, int) {
    viewport()->update();
}

QString TransactionList::priceColorKey(double price) const {
    if (!(mReference > 0.0) || price == mReference) {
        return QStringLiteral("ic_clr_index_default_flat");
    }
    return price > mReference ? QStringLiteral("ic_clr_index_default_rise")
                              : QStringLiteral("ic_clr_index_default_fall");
}

void TransactionList::drawHeadings(QPainter &painter) const {
    const int width = viewport()->width();
    painter.fillRect(0, 0, width, kHeadingHeight, GZ::themeColor("clr_table_header_bg"));
    painter.setPen(GZ::themeColor("clr_table_header_text"));
    for (size_t i = 0; i < kColumns.size(); ++i) {
        painter.drawText(cellOf(i, width, 0, kHeadingHeight), kColumns[i].alignment | Qt::AlignVCenter,
                         tr(kColumns[i].heading));
    }
}

void TransactionList::drawRow(QPainter &painter, int row, int y) const {
    const int width = viewport()->width();
    const quoter::QuoterBase &record = *mRows[static_cast<size_t>(row)];
    painter.fillRect(0, y, width, kHeightOfRow,
                     GZ::themeColor(row % 2 ? "clr_table_row_odd" : "clr_table_row_even"));
    const QStringList texts = textsOf(record);
    for (size_t i = 0; i < kColumns.size(); ++i) {
        painter.setPen(i == 1 ? GZ::themeColor(priceColorKey(record.mPrice))
                              : GZ::themeColor("clr_text_light_default"));
        painter.drawText(cellOf(i, width, y, kHeightOfRow), kColumns[i].alignment | Qt::AlignVCenter,
                         texts[static_cast<int>(i)]);
    }
}

void TransactionList::fitScrollBar() {
    const int shown = qMax(1, (viewport()->height() - kHeadingHeight) / kHeightOfRow);
    verticalScrollBar()->setPageStep(shown);
    verticalScrollBar()->setRange(0, qMax(0, static_cast<int>(mRows.size()) - shown));
}

} // namespace TC
