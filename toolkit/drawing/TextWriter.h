#pragma once

#include "toolkit/drawing/ChartCanvas.h"

#include <QFont>
#include <QFontMetrics>
#include <QString>

namespace TC {

/// Writes texts in the font of the theme inside a rectangle, to which the painter is held while it lives.
class TextWriter {
public:
    TextWriter(QPainter *painter, const QRect &rect);

    int height() const { return mMetrics.height(); }
    /// A text whose middle is a column and whose last row is `bottom`, moved aside where it would stick out.
    void write(const QString &text, int column, double bottom, QRgb color);

private:
    QPainter *mPainter;
    QRect mRect;
    ClipScope mClip;
    QFont mFont;
    QFontMetrics mMetrics;
};

} // namespace TC
