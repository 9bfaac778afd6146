#pragma once

#include "toolkit/drawing/ChartCanvas.h"

namespace TC {

/// Fills the area from a polyline down to the lower edge of the canvas. The colour runs over the whole height of
/// the canvas, so that equal rows have equal colours wherever the line is. `points` are device pixels and ascend
/// in x. `withFirst` fills the column of the first point too: a drawing that goes on from an earlier one leaves
/// it out, since colours that let the ground through must not be laid twice. Less than two
/// points have no area. Nothing is filled on a canvas larger than any screen.
void fillBeneath(const ChartCanvas &canvas, const QPoint *points, int count, bool withFirst, QRgb top,
                 QRgb bottom);

} // namespace TC
