#pragma once

#include <QProxyStyle>

namespace terminal {

/// The look of the window's controls. Fields, boxes and marks to check have an edge in the theme's colour, so that they
/// are seen on any ground before they have the keyboard.
class ThemeStyle : public QProxyStyle {
    Q_OBJECT
public:
    ThemeStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override;
};

} // namespace terminal
