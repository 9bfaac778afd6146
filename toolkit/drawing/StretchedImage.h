#pragma once

#include <QMargins>
#include <QPixmap>
#include <QString>

class QPainter;

namespace GZ {

/// Borders of an image of the theme, in its pixels, whose columns between `left` and `right` and rows between `top`
/// and `bottom` are between them.
QMargins imageBorders(const QString &imageKey, int left, int right, int top, int bottom);

/// Draws an image over a rectangle: its borders keep their size, what is between them is stretched.
void drawStretched(QPainter &painter, const QPixmap &image, const QMargins &borders, const QRect &over);

} // namespace GZ
