#pragma once

#include "host/Export.h"

namespace TC {

class CRealtimeUiParam;

/// The axis of a day graph, as far as columns depend on it.
struct DayAxis {
    double width = 0.0; ///< pixels of a day
    int pointCount = 0; ///< positions of a day

    static DayAxis of(const CRealtimeUiParam &uiParam);
    int indexAt(int column) const;
    int columnOf(int index) const;
};

/// Two columns of a day graph that stay on their minutes: on the axis that they were taken on they are the columns as they
/// were, on any other those of their axis indices. One that was never taken lies at column 0.
class TIMESHARE_EXPORT MinuteSpan {
public:
    MinuteSpan() = default;
    static MinuteSpan ofColumns(int left, int right, const DayAxis &axis);
    static MinuteSpan ofIndices(int start, int end, const DayAxis &axis);

    int start() const { return mStart.index; }
    int end() const { return mEnd.index; }
    int left(const DayAxis &axis) const { return columnOn(mStart, axis); }
    int right(const DayAxis &axis) const { return columnOn(mEnd, axis); }

private:
    struct Bound {
        int index = 0;
        int column = 0; ///< on the axis of the span
    };
    int columnOn(const Bound &bound, const DayAxis &axis) const;

    Bound mStart;
    Bound mEnd;
    DayAxis mAxis;
};

} // namespace TC
