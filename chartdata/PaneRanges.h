#pragma once

#include "chartdata/PaneSeries.h"
#include "chartdata/ValueRange.h"
#include "host/drawing/IndexBaseData.h"

#include <QRect>

namespace TC {

class CRealtimeUiParam;
class ShownDay;

/// The value ranges of a pane: those that its series want, and those that they are drawn with.
///
/// A series without a drawn range is not drawn. A wanted range follows from the extremes of the series, which only
/// widen until the series is replaced: a volume stands on 0, a sub pane takes its extremes, and what has a price is
/// centred on the close before the day, all by the same distance in per cent where several instruments are shown. Drawn
/// ranges come from outside, when the axis has joined those of all panes.
class PaneRanges {
public:
    /// `series` and `wanted` are those of the pane; extremes are kept in the series.
    PaneRanges(const CRealtimeUiParam &view, EIndexDisplayType displayType, const ShownDay &day,
               PaneSeries::Map &series, IndexBaseData::MaxMinMap &wanted)
        : mView(view), mDisplayType(displayType), mDay(day), mSeries(series), mWanted(wanted) {}

    /// Takes in what a series has from index `first` on, in a pane of that size; true when a wanted range changed.
    bool update(const CFormulaKey &key, int first, const QRect &pane);
    /// Whether a wanted range has left the drawn one.
    bool isOutgrown() const { return TC::isOutgrown(mWanted, mDrawn); }
    /// Takes ranges to draw with; widens what is there unless `overwrite`. True when anything changed.
    bool adopt(const IndexBaseData::MaxMinMap &ranges, bool overwrite);
    const IndexBaseData::MaxMinMap &drawn() const { return mDrawn; }
    void forget(const CFormulaKey &key);
    void clear();

private:
    double amplitudeOfTrades() const;
    double baseOf(const CFormulaKey &key, const se::RPCFormulaResultCache &middleOf) const;
    double priceBase() const;
    bool updateJoint(const CFormulaKey &key);
    bool updateSingle(const CFormulaKey &key);

    const CRealtimeUiParam &mView;
    const EIndexDisplayType mDisplayType;
    const ShownDay &mDay;
    PaneSeries::Map &mSeries;
    IndexBaseData::MaxMinMap &mWanted;
    IndexBaseData::MaxMinMap mDrawn;
};

} // namespace TC
