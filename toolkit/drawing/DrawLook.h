#pragma once

#include <QColor>

namespace TC {

/// The colours that the drawing helpers take from the theme.
struct DrawLook {
    static constexpr int kLineColors = 8;

    QRgb lines[kLineColors] = {}; ///< of the lines of a series in turn
    QRgb rise = 0;
    QRgb fall = 0;
    QRgb flat = 0;
    QRgb stick = 0; ///< volume of which nothing is known but its height
    QRgb gradientTop = 0;
    QRgb gradientBottom = 0;
    bool isOpaque = false; ///< none of them lets through what is beneath, gradients aside

    static DrawLook ofTheme();
    /// The look of the current theme, fetched once per theme and thread.
    static const DrawLook &current();

    QRgb ofLine(int line) const { return lines[(line < 0 ? 0 : line) % kLineColors]; }
    /// Rise above 0, fall beneath.
    QRgb ofSign(double sign) const { return sign > 0.0 ? rise : sign < 0.0 ? fall : flat; }
};

} // namespace TC
