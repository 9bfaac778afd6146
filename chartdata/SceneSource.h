#pragma once

#include "chartdata/ChartScene.h"
#include "host/records/CFormulaKey.h"
#include "host/records/Enumerations.h"

#include <QSize>

namespace TC {

class CRealtimeUiParam;
class PaneAxis;
class PaneRanges;
class PaneSeries;
class ShownDay;

/// What a pane's chart is drawn from, read from its parts. Keeps nothing.
///
/// On a live day the two newest points move with every tick: they are the tail, drawn over the picture of all others.
class SceneSource {
public:
    SceneSource(const CRealtimeUiParam &view, EIndexDisplayType displayType, const ShownDay &day,
                const PaneSeries &series, const PaneRanges &ranges, const PaneAxis &axis)
        : mView(view), mDisplayType(displayType), mDay(day), mSeries(series), mRanges(ranges), mAxis(axis) {}

    /// The chart without the segment that moves, in a look that is still to be set.
    ChartScene still(const QSize &pane, double ratio) const;
    /// Finds the series of a scene that was described some time ago; lines without one are left out.
    void findSeries(SceneLines &lines) const;
    /// Last index of that; -1 when it has no point.
    int lastStill() const;
    /// The newest points, of one series alone where its order is told; none on a day that is not live.
    SceneLines tail(const QSize &pane, int only = kEverySeries) const;
    bool hasTail() const { return tailCount() > 0; }
    /// Place of a series of the pane among those that are shown; kEverySeries for any other.
    int orderOf(const se::RPCFormulaResultCache &series) const;
    /// Whether none but a series has the newest point.
    bool isAhead(int order) const;
    /// Whether a changed point is seen beyond its own place: gaps follow it, or a drawing that is always whole.
    bool isSpread(const se::RPCFormulaResultCache &series) const;

private:
    int tailCount() const;
    SceneLines lines(const QSize &pane, int start, int end, int only = kEverySeries) const;
    void fill(SceneSeries &drawn) const;
    bool describe(SceneSeries &drawn, const QSize &pane) const;
    void addLines(SceneSeries &to, const CDrawStyle::Range &range, const QSize &pane) const;
    bool isHiddenNetValue(const CFormulaKey &key, const se::RPCFormulaMetaResult &meta, int line) const;
    bool hasVolume() const;

    const CRealtimeUiParam &mView;
    const EIndexDisplayType mDisplayType;
    const ShownDay &mDay;
    const PaneSeries &mSeries;
    const PaneRanges &mRanges;
    const PaneAxis &mAxis;
};

} // namespace TC
