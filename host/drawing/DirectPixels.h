#pragma once

#include "host/Export.h"

#include <QColor>
#include <QLineF>
#include <QRect>

class QImage;
class QPainter;

namespace TC {

/// Fills rectangles, draws lines and copies pictures as the painter would, but by hand where that gives the same pixels: on
/// an image of 32 bits or a window that is kept in one, on whole device pixels, under no clip but a rectangle. Most of what
/// a chart draws are lines and columns of a few pixels, which take the painter longer to come to than to draw.
///
/// The clip, the transformation and the image of the painter are those of the beginning for as long as it is used.
class TIMESHARE_EXPORT DirectPixels {
public:
    /// None: nothing can be drawn by hand.
    DirectPixels() = default;
    /// Those of a painter that is active; none where it has to draw by itself. In a PixelPart of that painter they are
    /// known already.
    explicit DirectPixels(const QPainter &painter);

    /// Whether there are none.
    bool isNull() const { return !mBits; }

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

    /// A column of one pixel of the painter from its row 0 down, of which every other row is filled, the first one too.
    /// False, and nothing is filled, where the painter has to do it.
    bool fillDots(int column, int height, const QColor &color) const;

    /// Lines of one device pixel between whole device pixels, drawn with a square brush of `width` pixels to the right of
    /// them and beneath, inside the clip. False, and nothing is drawn, where the painter has to do it: also when one leaves
    /// the image.
    bool strokes(const QLineF *lines, int count, int width, QRgb color) const;

    /// The same of the lines from each point to the next.
    bool polyline(const QPoint *points, int count, int width, QRgb color) const;

    /// Copies a picture without alpha, whose upper left corner comes to a point in the coordinates of the painter, inside
    /// the clip: a pixel for every device pixel. False, and nothing is copied, where the painter has to do it.
    bool copy(const QImage &picture, const QPoint &topLeft) const;

private:
    friend class PixelPart;
    static constexpr int kOpaque = 255;

    /// Those of a painter that is held to a part alone, in its coordinates.
    DirectPixels(const QPainter &painter, const QRect &part);
    bool open(const QPainter &painter);
    void holdTo(const QRect &device, const QPainter &painter);
    QRect toDevice(const QRect &rect) const;
    void fillInside(int left, int top, int right, int bottom, QRgb color) const;
    void fillRows(int left, int top, int width, int bottom, int every, QRgb color) const;
    bool canStroke(QRgb color) const;
    void stroke(const QPoint &from, const QPoint &to, int width, QRgb color) const;
    void drawLine(const QPoint &from, const QPoint &to, QRgb color) const;

    QRgb *mBits = nullptr;
    int mStride = 0; ///< pixels from row to row
    int mScaleX = 1; ///< device = scale * coordinate + shift
    int mScaleY = 1;
    int mShiftX = 0;
    int mShiftY = 0;
    QRect mImage; ///< all device pixels
    QRect mClip; ///< in device pixels, inside the image
};

/// Holds a painter to a part of what it draws, in place of the clip that it had, and works its pixels out once for all who
/// draw there. While it lives nothing changes the transformation, the mode or the opacity of the painter, nor its clip but
/// to put it back. Its clip means nothing afterwards.
class TIMESHARE_EXPORT PixelPart {
public:
    /// When the painter itself is held to the part: it takes longer to be told than to draw a few lines by hand.
    enum class EClip {
        AtOnce,
        WhenAsked, ///< by clip(), if anybody asks
    };

    PixelPart(QPainter &painter, const QRect &part, EClip clip = EClip::AtOnce);
    ~PixelPart();
    PixelPart(const PixelPart &) = delete;
    PixelPart &operator=(const PixelPart &) = delete;

    /// The innermost part of this thread that is one of that painter; null without one.
    static const PixelPart *of(const QPainter &painter);
    /// To be called before the painter draws something itself: holds it to its innermost part, if there is one.
    static void clip(QPainter &painter);
    const DirectPixels &pixels() const { return mPixels; }

private:
    void clipPainter() const;

    QPainter &mPainter;
    const QRect mPart;
    DirectPixels mPixels;
    mutable bool mIsClipped = false; ///< the painter
    const PixelPart *mOuter;
};

} // namespace TC
