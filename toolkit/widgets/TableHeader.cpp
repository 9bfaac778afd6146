#include "toolkit/widgets/TableHeader.h"

#include "host/toolkit/ThemeColor.h"

#include <QFontMetrics>
#include <QPainter>

namespace GZ {
namespace {

constexpr int kHeadingMargin = 4;
constexpr int kArrowHalf = 4; ///< half the width of the arrow, which is as high

/// Points up for ascending rows.
void drawArrow(QPainter &painter, const QRect &rect, bool up) {
    const int middle = rect.right() - kHeadingMargin - kArrowHalf;
    const int base = rect.center().y() + (up ? kArrowHalf / 2 : -kArrowHalf / 2);
    const int tip = base + (up ? -kArrowHalf : kArrowHalf);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(themeColor("clr_text_default"));
    painter.drawPolygon(QPolygon({{middle - kArrowHalf, base}, {middle + kArrowHalf, base}, {middle, tip}}));
}

} // namespace

void TableHeader::paintSection(QPainter *painter, const QRect &rect, int column) const {
    const bool isSorted = isSortIndicatorShown() && sortIndicatorSection() == column;
    painter->fillRect(rect, themeColor("clr_table_header_bg"));
    painter->fillRect(rect.right(), rect.top(), 1, rect.height(), themeColor("clr_dialog_border"));
    painter->fillRect(rect.left(), rect.bottom(), rect.width(), 1, themeColor("clr_dialog_border"));
    const int arrow = isSorted ? 2 * kArrowHalf + kHeadingMargin : 0;
    const QRect place = rect.adjusted(kHeadingMargin, 0, -kHeadingMargin - arrow, -1);
    painter->setPen(themeColor(isSorted ? "clr_text_default" : "clr_table_header_text"));
    const QString text = model()->headerData(column, Qt::Horizontal).toString();
    painter->drawText(place, Qt::AlignCenter,
                      QFontMetrics(font()).elidedText(text, Qt::ElideRight, place.width()));
    if (isSorted) {
        painter->save();
        drawArrow(*painter, rect, sortIndicatorOrder() == Qt::AscendingOrder);
        painter->restore();
    }
}

void TableHeader::paintEvent(QPaintEvent *event) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), themeColor("clr_table_header_bg"));
    painter.end();
    QHeaderView::paintEvent(event);
}

} // namespace GZ
