#pragma once

#include "host/drawing/DirectPixels.h"

#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QRegion>
#include <QSize>
#include <QVector>

namespace TC {

/// A pixmap for a pane of that size, not filled, at `ratio` device pixels per pixel; null when it would be empty or
/// unreasonably large.
QPixmap panePixmap(const QSize &size, double ratio);

/// Size in device pixels of such a pixmap; empty when there would be none.
QSize panePixmapSize(const QSize &size, double ratio);

/// The same as an image, whose bits drawings fill by hand; one that is opaque has no alpha.
QImage paneImage(const QSize &size, double ratio, bool isOpaque);

/// Copies the picture of a pane of that size to a rectangle: pixel by pixel where the size is the same.
void blitPane(QPainter &painter, const QRect &rect, const QPixmap &pixmap, const QSize &pane);
void blitPane(QPainter &painter, const QRect &rect, const QImage &image, const QSize &pane);

/// Few rectangles that together are a region; some may lie over others. Columns that rows cross stay whole, of which a
/// region makes a piece above and beneath every row.
QVector<QRect> partsOf(const QRegion &region);

/// Paints opaque parts of a region one by one, each under a clip of its own. Under a clip of several rectangles
/// pictures and lines are drawn span by span, which takes many times as long. `paint` is told the part, and may paint
/// where others have. Clips `WhenAsked` are for those who ask (PixelPart::clip). The painter has no clip afterwards.
template <class Paint>
void paintByParts(QPainter &painter, const QRegion &region, Paint paint,
                  PixelPart::EClip clip = PixelPart::EClip::AtOnce) {
    for (const QRect &part : partsOf(region)) {
        const PixelPart held(painter, part, clip);
        paint(part);
    }
    painter.setClipping(false);
}

/// The same where every pixel is to be painted once: what is translucent, or drawn over something that is.
/// `paint` is told the piece.
template <class Paint>
void paintByPieces(QPainter &painter, const QRegion &region, Paint paint,
                   PixelPart::EClip clip = PixelPart::EClip::AtOnce) {
    for (const QRect &piece : region) {
        const PixelPart held(painter, piece, clip);
        paint(piece);
    }
    painter.setClipping(false);
}

/// Device pixels per pixel that a painter has, 1 to 8; 0 when it does not scale evenly.
double evenRatio(const QPainter &painter);

} // namespace TC
