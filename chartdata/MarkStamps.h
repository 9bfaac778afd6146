#pragma once

#include <QImage>
#include <QPainter>
#include <QRect>
#include <QTime>

#include <array>
#include <functional>
#include <map>
#include <string>

/// \file
/// What makes thousands of marks on one day quick.

namespace TC {

/// Draws the same few marks many times: each is drawn once as a picture and copied from then on. Where the pixels
/// of a mark depend on its place, on a painter whose scale is not whole, it is drawn anew each time.
class MarkStamps {
public:
    using Key = std::array<int, 4>; ///< what tells one mark from another
    using Draw = std::function<void(QPainter &)>; ///< draws a mark around the origin

    /// The painter's font is that of the marks; it has to outlive this object.
    explicit MarkStamps(QPainter &painter);
    /// Draws a mark at a point. `bounds`, around the origin, holds all its pixels.
    void draw(const Key &key, const QPoint &at, const QRect &bounds, const Draw &drawMark);

private:
    QPainter &mPainter;
    int mRatio; ///< device pixels per pixel; 0 when that is not whole
    std::map<Key, QImage> mPictures;
};

/// Local clock times of many moments, seconds since the epoch, near each other: a zone is asked once per quarter
/// of an hour.
class ClockTimes {
public:
    QTime operator()(int seconds);

private:
    std::map<int, QTime> mQuarters; ///< clock time by the quarter's count since the epoch
};

} // namespace TC
