#pragma once

#include <QImage>
#include <QPainter>
#include <QRect>
#include <QTime>

#include <array>
#include <map>

/// \file
/// What makes thousands of marks on one day quick.

namespace TC {

/// Draws the same few marks many times: each is drawn once as a picture and copied from then on. Where the pixels
/// of a mark depend on its place, on a painter whose scale is not whole, it is drawn anew each time.
class MarkStamps {
public:
    using Key = std::array<int, 4>; ///< what tells one mark from another

    /// The painter's font is that of the marks; it has to outlive this object.
    explicit MarkStamps(QPainter &painter);
    /// Draws a mark at a point. `bounds`, around the origin, holds all its pixels; `drawMark`, given a painter,
    /// draws it around the origin.
    template <class DrawMark>
    void draw(const Key &key, const QPoint &at, const QRect &bounds, const DrawMark &drawMark);

private:
    struct Stamp {
        QImage picture; ///< no larger than what is drawn; null when nothing is
        QPoint corner; ///< upper left, from the point of the mark
    };
    QImage blank(const QSize &size) const;
    void begin(QPainter &painter, QImage &picture, const QRect &bounds) const;
    Stamp cutOut(const QImage &picture, const QRect &bounds) const;

    QPainter &mPainter;
    int mRatio; ///< device pixels per pixel; 0 when that is not whole
    std::map<Key, Stamp> mStamps;
};

template <class DrawMark>
void MarkStamps::draw(const Key &key, const QPoint &at, const QRect &bounds, const DrawMark &drawMark) {
    if (mRatio == 0) {
        mPainter.save();
        mPainter.translate(at);
        drawMark(mPainter);
        mPainter.restore();
        return;
    }
    auto stamp = mStamps.find(key);
    if (stamp == mStamps.end()) {
        QImage picture = blank(bounds.size());
        QPainter painter;
        begin(painter, picture, bounds);
        drawMark(painter);
        painter.end();
        stamp = mStamps.emplace(key, cutOut(picture, bounds)).first;
    }
    if (!stamp->second.picture.isNull()) {
        mPainter.drawImage(at + stamp->second.corner, stamp->second.picture);
    }
}

/// Local clock times of many moments, seconds since the epoch, near each other: a zone is asked once per quarter
/// of an hour.
class ClockTimes {
public:
    QTime operator()(int seconds);

private:
    std::map<int, QTime> mQuarters; ///< clock time by the quarter's count since the epoch
};

} // namespace TC
