#pragma once

/// \file
/// The sizes and places that drawing and measuring share.

#include "host/drawing/DrawStyles.h"
#include "toolkit/drawing/SeriesLine.h"

#include <vector>

namespace TC {

/// Share of a minute's width that sticks, candles and stacked columns take.
constexpr double kStickShare = 0.6;

/// Diameter in pixels of the dot of a point.
inline int dotDiameter(double step) {
    return std::clamp(stickWidth(step, kStickShare), 3, 5);
}

/// The last valid point at or before an index, from where bridged gaps are crossed; the index itself when there
/// is none.
inline int firstBridged(const SeriesLine &points, int index) {
    for (int i = index; i >= 0; --i) {
        if (points.has(i)) {
            return i;
        }
    }
    return index;
}

/// What the columns of a line of stacked columns stand on: the sum of the visible lines of that style before it.
/// Of a line of any other style it is 0.
class StackBase {
public:
    StackBase(const se::RPCFormulaResultCache &series, int line)
        : StackBase(series, line, SeriesLine(series, line).style()) {}
    /// The same of a line whose style is known.
    StackBase(const se::RPCFormulaResultCache &series, int line, int style) {
        if (style != eStackVolStickStyle) {
            return;
        }
        for (int below = 0; below < line; ++below) {
            const SeriesLine points(series, below);
            if (points.style() == eStackVolStickStyle && !points.isHidden()) {
                mBelow.push_back(points);
            }
        }
    }

    double at(int i) const {
        double sum = 0.0;
        for (const SeriesLine &points : mBelow) {
            sum += points.has(i) ? points.value(i) : 0.0;
        }
        return sum;
    }

private:
    std::vector<SeriesLine> mBelow; ///< none for most lines, and then nothing is allocated
};

} // namespace TC
