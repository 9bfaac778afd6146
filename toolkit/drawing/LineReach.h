#pragma once

#include "toolkit/drawing/SeriesLine.h"

#include <QRect>

namespace TC {

/// \file
/// What a drawing of points `start` to `end` of a line by the style of its description can touch.

/// The columns, in the full height of the rectangle; null when nothing is drawn, the whole for texts and images.
QRect touchedColumns(const QRect &rect, const SeriesLine &points, int start, int end, int last);

/// The same without the rows that lie above and beneath all that is drawn there, with a pixel to spare, where the style
/// tells them. `toBottom` is told of a line with a gradient beneath it and of a stick that stands on the bottom.
QRect touchedPixels(const QRect &rect, const SeriesLine &points, const ValueScale &scale, int start, int end,
                    int last, bool toBottom);

} // namespace TC
