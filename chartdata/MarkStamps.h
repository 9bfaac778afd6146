#pragma once

#include <QImage>
#include <QPainter>
#include <QRect>
#include <QTransform>

#include <array>
#include <map>
#include <utility>

namespace TC {

/// Draws the same few marks many times: each is drawn once as a picture and copied from then on. Where a pixel of
/// the device is no whole or quarter of a pixel of the painter, each is drawn anew.
///
/// While this lives, its painter counts in pixels of the device and is to be left alone; afterwards it is as before.
class MarkStamps {
public:
    using Key = std::array<int, 4>; ///< what tells one mark from another

    /// The painter's font is that of the marks; it has to outlive this object.
    explicit MarkStamps(QPainter &painter);
    ~MarkStamps();
    MarkStamps(const MarkStamps &) = delete;
    MarkStamps &operator=(const MarkStamps &) = delete;

    /// Draws a mark at a point of the painter as it was. `bounds`, around the origin, holds all its pixels;
    /// `drawMark`, given a painter, draws it around the origin.
    template <class DrawMark>
    void draw(const Key &key, const QPoint &at, const QRect &bounds, const DrawMark &drawMark);

private:
    static constexpr int kPhases =
        4; ///< places within a pixel of the device, by which the pixels of a mark differ
    /// A point of the device in whole pixels and phases.
    struct Spot {
        QPoint pixel;
        int phaseX = 0;
        int phaseY = 0;
    };
    struct Stamp {
        QImage picture; ///< no larger than what is drawn; null when nothing is
        QPoint corner; ///< upper left, from the pixel of the mark
    };
    bool spotOf(const QPoint &at, Spot &spot) const;
    QImage blank(const QRect &bounds) const;
    void begin(QPainter &painter, QImage &picture, const QRect &bounds, const Spot &spot) const;
    QPoint originIn(const QRect &bounds) const;
    Stamp cutOut(const QImage &picture, const QRect &bounds) const;

    QPainter &mPainter;
    QTransform mToDevice; ///< of the painter
    bool mCopies; ///< marks are copied
    std::map<std::pair<Key, int>, Stamp> mStamps; ///< by mark and phases
};

template <class DrawMark>
void MarkStamps::draw(const Key &key, const QPoint &at, const QRect &bounds, const DrawMark &drawMark) {
    if (!mCopies) {
        mPainter.save();
        mPainter.translate(at);
        drawMark(mPainter);
        mPainter.restore();
        return;
    }
    Spot spot;
    if (!spotOf(at, spot)) {
        return;
    }
    const auto [found, isNew] = mStamps.try_emplace({key, spot.phaseX * kPhases + spot.phaseY});
    Stamp &stamp = found->second;
    if (isNew) {
        QImage picture = blank(bounds);
        QPainter painter;
        begin(painter, picture, bounds, spot);
        drawMark(painter);
        painter.end();
        stamp = cutOut(picture, bounds);
    }
    if (!stamp.picture.isNull()) {
        mPainter.drawImage(spot.pixel + stamp.corner, stamp.picture);
    }
}

} // namespace TC
