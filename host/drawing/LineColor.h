#pragma once

#include <QColor>

namespace TC {

/// Colours of lines as series carry them: red | green << 8 | blue << 16.
inline qint32 lineColor(const QColor &color) {
    return color.red() | color.green() << 8 | color.blue() << 16;
}

/// The opaque colour that such a number stands for; higher bits are left out.
inline QRgb colorOfLine(qint32 color) {
    return qRgb(color & 0xff, color >> 8 & 0xff, color >> 16 & 0xff);
}

} // namespace TC
