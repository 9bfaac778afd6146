#pragma once

#include "host/drawing/IndexBaseData.h"
#include "host/records/ValueComparison.h"

namespace TC {

/// A value range: first the maximum, second the minimum.
using ValueRange = QPair<double, double>;

/// \file
/// Arithmetic of value ranges. All comparisons have the tolerance kValueTolerance.

/// Extremes that only ever widen.
struct Extremes {
    double max = kUnsetValue;
    double min = kUnsetValue;
    bool isSet() const { return !isUnset(max) && !isUnset(min); }
};
/// Takes new extremes in. True when the range that follows from them has to be computed anew; not so when only
/// an unset minimum was filled.
bool widen(double &max, double &min, const Extremes &found);

/// Writes both halves of a range under a key when the key is new, or when either half lies outside the range
/// there. So a range can narrow on one side, at the moment the other side widens. True when it was written.
bool storeRange(IndexBaseData::MaxMinMap &ranges, const CFormulaKey &key, const ValueRange &range);
/// Whether a range of `wanted` is missing in `drawn` or lies outside the one there.
bool isOutgrown(const IndexBaseData::MaxMinMap &wanted, const IndexBaseData::MaxMinMap &drawn);
/// Takes ranges in: a new key or, with `overwrite`, any key is written, otherwise each side is widened by
/// itself. True when something was written.
bool adoptRanges(IndexBaseData::MaxMinMap &drawn, const IndexBaseData::MaxMinMap &ranges, bool overwrite);

/// Takes the relative distance of a series from its base into an amplitude. An unset or zero base leaves the
/// amplitude alone; a series that is all zero sets it back to 0, whatever it held.
void gatherAmplitude(double &amplitude, const Extremes &series, double base);
/// The range of a base and a relative distance from it.
ValueRange amplitudeRange(double base, double amplitude);
/// The range around a base that holds both extremes and is at least `minHalf` to each side. Extremes that are
/// both zero ask for no room.
ValueRange centredRange(const Extremes &extremes, double base, double minHalf);

/// Row of a value in `height` rows that stand for a range, top down, truncated; -1 when the range has no height
/// or a number is not usable. Rows outside the pane are answered as they come out.
int rowOfValue(double value, const ValueRange &range, int height);
/// Value at a row; 0.0 when there are no rows.
double valueOfRow(int row, const ValueRange &range, int height);

} // namespace TC
