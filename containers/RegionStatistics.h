#pragma once

#include "host/toolkit/Events.h"

#include <QString>
#include <boost/shared_ptr.hpp>

class QDateTime;

namespace TC {

class CRealtimeUiParam;
class PaneRow;

/// The stretch of axis indices that statistics are made of, in the graph that is selected on the main pane.
class RegionStatistics {
public:
    RegionStatistics(const PaneRow &panes, boost::shared_ptr<const CRealtimeUiParam> uiParam);

    /// Takes a stretch: its first index, and its text, which is the last index, start and end in seconds since the
    /// epoch, joined by commas. An empty stretch hides the region lines.
    void select(int start, const QString &text);
    /// A stretch of one moment.
    void select(const QDateTime &moment);
    /// Another time of the first or the last index.
    void moveBound(ERegionBound bound, const RegionBoundTime &time);
    void hideLines();

private:
    const PaneRow &mPanes;
    boost::shared_ptr<const CRealtimeUiParam> mUiParam;
    int mStart = 0; ///< first index of the last stretch
    QString mText; ///< the last stretch as text
};

} // namespace TC
