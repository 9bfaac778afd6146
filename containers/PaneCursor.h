#pragma once

#include <boost/shared_ptr.hpp>

namespace TC {

class CRealtimeData;
class CRealtimeUiParam;
class DayGraphs;
class PaneTitle;

/// Where the cross line meets a pane, in pixels: columns from the left end of the row of graphs, rows of the pane. -1 is
/// nowhere. Moved by mouse it is in the graph under the mouse; moved by keyboard it stands at a value of that graph, or of
/// the newest day when the mouse is elsewhere.
class PaneCursor {
public:
    PaneCursor(const DayGraphs &days, const PaneTitle &title,
               boost::shared_ptr<const CRealtimeUiParam> uiParam);

    int column() const;
    int row() const;
    /// The same of a formula pane, which has no cross line of its own unless the mouse is in it.
    int subColumn() const;
    int subRow() const;
    /// Row of the value of some data at the cross line.
    int rowIn(CRealtimeData &data) const;
    /// The data of the leftmost graph under the mouse while the cross line is moved by keyboard, else null.
    boost::shared_ptr<CRealtimeData> dataUnderMouse() const;

private:
    int columnIn(int position) const;

    const DayGraphs &mDays;
    const PaneTitle &mTitle;
    boost::shared_ptr<const CRealtimeUiParam> mUiParam;
};

} // namespace TC
