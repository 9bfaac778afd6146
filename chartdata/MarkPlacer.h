#pragma once

#include "chartdata/ValueRange.h"

#include <QPoint>
#include <QTime>

#include <unordered_map>

namespace TC {

class CRealtimeUiParam;

/// Where the user's trade records lie in the graph of one day. What the records of a drawing share is looked up
/// once: the range of the rows when this is made, the column of a minute when it is first asked for.
class MarkPlacer {
public:
    /// `range` is what the rows of a graph of `height` pixels stand for, `close` the reference price of the chart.
    /// The axis has to outlive this object, and to stay as it is.
    MarkPlacer(const CRealtimeUiParam &axis, const ValueRange &range, int height, double close);

    /// Index of a clock time.
    int indexOf(const QTime &time);
    /// Column of an index.
    int columnOf(int index) const;
    /// Row of a value; -1 when the range is none.
    int rowOf(double value) const;
    /// The point of a record, from its price and the close of its instrument; false when the price can be placed
    /// nowhere: it or the close is no number, or the close is zero or unset.
    bool place(const QTime &time, double price, double recordClose, QPoint &at);
    /// Whether a point does not lie among the volume, which is shown below the rows of the prices.
    bool isAmongPrices(const QPoint &at) const;

private:
    struct Place {
        int index = 0;
        int column = 0;
    };
    const Place &placeOf(const QTime &time);

    const CRealtimeUiParam &mAxis;
    ValueRange mRange;
    int mHeight;
    double mClose;
    std::unordered_map<int, Place> mPlaces; ///< by minute
};

} // namespace TC
