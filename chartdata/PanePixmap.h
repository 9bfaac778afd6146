#pragma once

#include <QPixmap>
#include <QSize>

class QPainter;

namespace TC {

/// A pixmap for a pane of that size, not filled, at `ratio` device pixels per pixel; null when it would be empty or
/// unreasonably large.
QPixmap panePixmap(const QSize &size, double ratio);

/// Size in device pixels of such a pixmap; empty when there would be none.
QSize panePixmapSize(const QSize &size, double ratio);

/// Device pixels per pixel that a painter has, 1 to 8; 0 when it does not scale evenly.
double evenRatio(const QPainter &painter);

} // namespace TC
