#pragma once

#include "host/Export.h"

#include <QColor>
#include <QRect>
#include <QTransform>

class QPainter;

namespace TC {

/// Fills rectangles as the painter would, but by hand where that gives the same pixels: on an image of 32 bits, on whole
/// device pixels, under no clip but a rectangle. Most of what a chart fills are lines and columns of a few pixels, which
/// take the painter longer to come to than to fill.
///
/// The clip, the transformation and the image of the painter are those of the beginning for as long as it is used.
class TIMESHARE_EXPORT DirectPixels {
public:
    /// None: nothing can be filled by hand.
    DirectPixels() = default;
    /// Those of a painter that is active; none where it has to draw by itself.
    explicit DirectPixels(const QPainter &painter);

    /// Fills device pixels inside the clip, the right and lower edges not included. False, and nothing is filled, where
    /// the painter has to do it, and for a colour that lets through what is beneath it.
    bool fill(int left, int top, int right, int bottom, QRgb color) const {
        if (!mBits || qAlpha(color) != kOpaque) {
            return false;
        }
        fillInside(left, top, right, bottom, color);
        return true;
    }
    /// The same for a rectangle in the coordinates of the painter, which fills it where that cannot be done by hand.
    void fill(QPainter &painter, const QRect &rect, const QColor &color) const;

private:
    static constexpr int kOpaque = 255;

    void fillInside(int left, int top, int right, int bottom, QRgb color) const;

    QRgb *mBits = nullptr;
    int mStride = 0; ///< pixels from row to row
    QTransform mToDevice;
    QRect mClip; ///< in device pixels, inside the image
};

} // namespace TC
