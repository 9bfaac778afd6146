#include "terminal/app/ThemeStyle.h"

#include "host/toolkit/ThemeColor.h"

#include <QPainter>
#include <QStyleOption>

namespace terminal {
namespace {

/// The edge of what has not the keyboard; the style marks what has it.
void drawEdge(const QStyleOption &option, QPainter &painter) {
    if (option.state & QStyle::State_HasFocus) {
        return;
    }
    painter.save();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(GZ::themeColor("clr_edit_border"));
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter.restore();
}

} // namespace

ThemeStyle::ThemeStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void ThemeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                               const QWidget *widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element == PE_FrameLineEdit || element == PE_IndicatorCheckBox) {
        drawEdge(*option, *painter);
    }
}

void ThemeStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                    QPainter *painter, const QWidget *widget) const {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox || control == CC_SpinBox) {
        drawEdge(*option, *painter);
    }
}

} // namespace terminal
