#include "toolkit/widgets/CheckIndicator.h"

#include "host/toolkit/ThemeColor.h"

#include <QPainter>
#include <QStyleOptionButton>
#include <QWidget>

namespace GZ {
namespace {

void drawIndicator(QPainter &painter, const QRectF &place, const QStyleOptionButton &option, bool isRadio) {
    const bool enabled = option.state & QStyle::State_Enabled;
    const bool hovered = enabled && (option.state & QStyle::State_MouseOver);
    const double radius = isRadio ? place.width() / 2 : 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(themeColor(hovered ? "clr_selection_bg" : "clr_menu_text_disable"), 1));
    painter.setBrush(themeColor("clr_edit_bg"));
    painter.drawRoundedRect(place, radius, radius);
    if (!(option.state & QStyle::State_On)) {
        return;
    }
    const QColor mark = themeColor(enabled ? "clr_text_default" : "clr_menu_text_disable");
    if (isRadio) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(mark);
        painter.drawEllipse(place.center(), place.width() / 4, place.height() / 4);
        return;
    }
    painter.setPen(QPen(mark, place.width() / 7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    const auto at = [&place](double x, double y) {
        return QPointF(place.x() + x * place.width(), place.y() + y * place.height());
    };
    painter.drawPolyline(QPolygonF({at(0.2, 0.5), at(0.42, 0.72), at(0.8, 0.26)}));
}

} // namespace

void paintCheckable(QWidget &widget, const QStyleOptionButton &option, bool isRadio) {
    const QStyle &style = *widget.style();
    QPainter painter(&widget);
    const QRect indicator = style.subElementRect(
        isRadio ? QStyle::SE_RadioButtonIndicator : QStyle::SE_CheckBoxIndicator, &option, &widget);
    drawIndicator(painter, QRectF(indicator).adjusted(0.5, 0.5, -0.5, -0.5), option, isRadio);
    painter.setRenderHint(QPainter::Antialiasing, false);
    QStyleOptionButton label = option;
    label.rect = style.subElementRect(isRadio ? QStyle::SE_RadioButtonContents : QStyle::SE_CheckBoxContents,
                                      &option, &widget);
    style.drawControl(isRadio ? QStyle::CE_RadioButtonLabel : QStyle::CE_CheckBoxLabel, &label, &painter,
                      &widget);
    if (option.state & QStyle::State_HasFocus) {
        const int height = option.fontMetrics.height();
        painter.setPen(QPen(themeColor("clr_menu_text_disable"), 1, Qt::DotLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawLine(label.rect.left(), label.rect.center().y() + height / 2, label.rect.right(),
                         label.rect.center().y() + height / 2);
    }
}

} // namespace GZ
