#pragma once

#include "host/records/RPCFormulaResult.h"
#include "toolkit/drawing/SeriesLine.h"

#include <algorithm>

namespace TC {

/// The extremes of values of a series.
class SeriesExtremes {
public:
    void take(double value) {
        mMax = std::max(mMax, value);
        mMin = std::min(mMin, value);
        mFound = true;
    }
    /// Takes in `count` points of a line from `first` on, times `scale`: all that each takes up, as its style draws it.
    void takeLine(const se::RPCFormulaResultCache &series, int line, int first, int count, bool validOnly,
                  float scale);
    /// The same of a line that has been looked up already.
    void takeLine(const SeriesLine &points, const se::RPCFormulaResultCache &series, int line, int first,
                  int count, bool validOnly, float scale);

    bool isFound() const { return mFound; }
    /// True, and only then `max` and `min` change, when there was a value and both can be placed on an axis.
    bool tell(double &max, double &min) const;

private:
    double mMax = -kUnsetValue;
    double mMin = kUnsetValue;
    bool mFound = false;
};

} // namespace TC
