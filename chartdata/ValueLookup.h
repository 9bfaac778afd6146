#pragma once

#include "chartdata/PaneSeries.h"
#include "chartdata/ValueRange.h"
#include "host/drawing/IndexBaseData.h"

#include <QRect>

#include <functional>

namespace TC {

class CRealtimeUiParam;
class PaneAxis;

/// Between values, axis indices and rows of a pane, by the ranges that are on its axis. Keeps nothing.
class ValueLookup {
public:
    /// `series` and `wanted` are those of the pane.
    ValueLookup(const CRealtimeUiParam &view, EIndexDisplayType displayType, const PaneSeries::Map &series,
                const PaneAxis &axis, IndexBaseData::MaxMinMap &wanted)
        : mView(view), mDisplayType(displayType), mSeries(series), mAxis(axis), mWanted(wanted) {}

    /// Value of the first series on the axis that has one at an index; on a main pane of those alone whose formula
    /// `isMainGraph`. 0 when there is none.
    double valueAtIndex(int index, const std::function<bool(const QString &)> &isMainGraph) const;
    /// The price at an index, whether it is drawn or not; kUnsetValue when there is none.
    double priceAtIndex(int index) const;
    /// Value at a row of a pane, 0 when there is none. `valid`, which may be null, tells where a value says little.
    double valueAtY(int y, const QRect &pane, bool *valid) const;
    /// Row of the main chart's value at an index, by the range on the left strip of the view, which the pane wants from
    /// then on; -1 when there is none.
    int yAtIndex(int index, const QRect &pane) const;
    /// Row of a value of the main chart; -1 when it is not on the axis.
    int yOfValue(double value, const QRect &pane) const;
    /// Rows of the price chart inside a pane.
    int mainChartHeight(const QRect &pane) const;
    /// The range of prices that is on the axis: maximum and minimum, both 0 when there is none.
    ValueRange priceRange() const;

private:
    bool isForeign(const CFormulaKey &key) const;
    bool isPrice(const CFormulaKey &key) const;

    const CRealtimeUiParam &mView;
    const EIndexDisplayType mDisplayType;
    const PaneSeries::Map &mSeries;
    const PaneAxis &mAxis;
    IndexBaseData::MaxMinMap &mWanted;
};

} // namespace TC
