#pragma once

#include "host/Export.h"

#include <QLine>
#include <QRect>
#include <QRegion>
#include <QSize>
#include <QString>

/// \file
/// Where the cross line and its value labels lie over a pane. Pixels of the overlay.

namespace TC {

/// What the cross line is drawn from.
struct TIMESHARE_EXPORT CrossLineInput {
    QSize size; ///< of the overlay
    double ratio = 1.0; ///< device pixels per pixel
    bool shown = false;
    int index = -1; ///< axis index under the cross line, negative none
    int x = 0; ///< column of the vertical line, relative to the graphs
    int y = -1; ///< row that was set for the horizontal line, negative none
    int row = -1; ///< row where it is drawn: the one set, or that of the newest value under the keyboard
    int top = 0; ///< first row of the vertical line
    double value = 0.0; ///< of the row or the index
    int decimals = 2; ///< of the value
    bool withPercent = false; ///< the value lies in a band that has percentages
    double base = 0.0; ///< of the percentage; zero, or the unset value, makes it invalid
    QString invalid; ///< text of what is no number

    bool operator==(const CrossLineInput &other) const;
    bool operator!=(const CrossLineInput &other) const { return !(*this == other); }
};

/// The cross line as it is drawn; a box that is null is not.
struct TIMESHARE_EXPORT CrossLinePlan {
    double ratio = 1.0; ///< device pixels per pixel
    bool hasHorizontal = false;
    bool hasVertical = false;
    QLine horizontal;
    QLine vertical;
    QRect leftBox;
    QString leftText;
    QRect rightBox;
    QString rightText;

    /// All pixels that change on the screen when this one takes the place of another.
    QRegion changeFrom(const CrossLinePlan &before) const;
    /// All pixels that it touches.
    QRegion region() const { return changeFrom({}); }
    /// What a pen of one pixel draws of a horizontal or a vertical line: where a pixel is several device pixels, its
    /// middle lies on the line.
    static QRectF inkOf(const QLine &line, double ratio);
    /// The pixels of that.
    static QRect roomOf(const QLine &line, double ratio) { return inkOf(line, ratio).toAlignedRect(); }
};

CrossLinePlan planCrossLine(const CrossLineInput &input);

} // namespace TC
