#pragma once

/// \file
/// Arithmetic of the ticks and time lines of an axis strip.

#include "viewmodel/TradingSessions.h"

#include <QPair>
#include <QVector>

namespace TC {

/// One value tick of an axis strip.
struct AxisTick {
    double value = 0.0;
    int y = 0; ///< pixel row of the strip
};

/// A value range, first the maximum, second the minimum.
using AxisRange = QPair<double, double>;

/// How many ticks find room above each other in a strip; 0 for a font without height.
int axisTickCount(int height, int fontHeight);

/// `count` + 1 ticks from the top edge to the bottom edge; none for a count below 1.
QVector<AxisTick> subPaneTicks(int height, int count, const AxisRange &range);

/// Ticks of a main pane, without one at the bottom edge. With a volume band the count is brought to a multiple
/// of 3, and the last third are those of the band; without one it is brought to an even number. None when
/// fewer than 2 remain.
QVector<AxisTick> mainPaneTicks(int height, int count, bool volume, const AxisRange &price,
                                const AxisRange &volumeRange);

/// Axis indices of the time lines: every 30 minutes from the start of each session, and the end of each session
/// but the last. Sessions are pairs of first and last minute; the break before a session takes no room.
QVector<int> timeLineIndexes(const Sessions &sessions);

} // namespace TC
