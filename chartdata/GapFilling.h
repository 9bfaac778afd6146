#pragma once

#include "host/records/RPCFormulaResult.h"

#include <QtGlobal>

#include <functional>

namespace TC {

/// A copy of a series in which every axis index up to its last point has a point. A point that is put in has
/// the time of its axis index, and flag and values of the point before; a line of sticks (style 2) has 0 there.
/// Nothing is put in before the first point or after the last one, nor beyond `pointCount` positions. Texts and
/// further values of points are left as they are.
///
/// `secondsAt` answers the time of an axis index, in seconds since the epoch.
se::RPCFormulaResultCache fillGaps(const se::RPCFormulaResultCache &entry, int pointCount,
                                   const std::function<qint64(int)> &secondsAt);

} // namespace TC
