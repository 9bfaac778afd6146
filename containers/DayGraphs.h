#pragma once

#include "host/records/Enumerations.h"

#include <QList>
#include <QMap>
#include <QString>
#include <boost/shared_ptr.hpp>

#include <functional>

class QWidget;

namespace GZ {
class CBaseWidget;
class CWidgetList;
} // namespace GZ

namespace TC {

class CGraphAxisWidget;
class CRealtimeData;
class CRealtimeGraphWidget;
class CRealtimeUiParam;

/// The day graphs of a pane, side by side, one to six: the oldest day at the left, the newest at the right. That of
/// the newest day, the main graph, is always there and shows the data of the pane; each older one has data of its own. A
/// position counts from the left end of the row.
class DayGraphs {
public:
    /// The graphs of `pane`, which hears of their events; all their data take their columns from `strip`.
    DayGraphs(GZ::CBaseWidget *pane, boost::shared_ptr<CRealtimeData> mainData,
              boost::shared_ptr<CRealtimeUiParam> uiParam, EIndexDisplayType displayType,
              EIndexViewType viewType, CGraphAxisWidget *strip);
    /// Deletes the main graph; the older ones go with the pane.
    ~DayGraphs();
    DayGraphs(const DayGraphs &) = delete;
    DayGraphs &operator=(const DayGraphs &) = delete;

    /// The row itself, for the layout of the pane.
    GZ::CWidgetList *list() const { return mList; }
    CRealtimeGraphWidget *main() const { return mMain; }
    int count() const;
    /// Null beyond the ends of the row.
    CRealtimeGraphWidget *at(int position) const;
    /// The newest day first: position i of the answer is i trading days back.
    QList<CRealtimeGraphWidget *> newestFirst() const;
    /// Id of a graph: 0 the main graph's, -1 of one that was never entered.
    int idOf(CRealtimeGraphWidget *graph) const { return mIds.value(graph, -1); }
    /// Position of the graph that the mouse moves over, -1 none.
    int positionUnderMouse() const;

    /// Adds the days that a view of several days has already, for a pane that joins it. They get the id of the pane and
    /// are not entered among the ids.
    void joinDays(int paneId);
    /// Adds one day at the left end, with the formulas of the main graph, and requests it.
    void addOlder();
    /// Takes the day at the left end away, never the newest. Answers it, which lives until the next turn of the event
    /// loop; null when there was none.
    CRealtimeGraphWidget *removeOldest();
    /// Shares out the width.
    void shareWidth();

    /// Selects the graph of an id; all others lose their region lines. An id that no graph has leaves the selection.
    void select(int id);
    /// The graph selected last, else the main graph.
    CRealtimeGraphWidget *selected() const { return mSelected ? mSelected : mMain; }

    /// Word of the instrument's market.
    QString market() const;
    /// A time in seconds on the newest day shown.
    int newestDate() const;
    /// Takes the dates of all days, counted back from `date`, and does something with each graph, the newest first.
    void forEachDay(int date, const std::function<void(CRealtimeGraphWidget &)> &action);

private:
    boost::shared_ptr<CRealtimeData> makeData() const;
    /// Puts a graph at the left end of the row.
    CRealtimeGraphWidget *insert(int id, const boost::shared_ptr<CRealtimeData> &data, QWidget *parent);
    int dateBack(int date, int days) const;

    GZ::CBaseWidget *mPane;
    boost::shared_ptr<CRealtimeData> mMainData;
    boost::shared_ptr<CRealtimeUiParam> mUiParam;
    EIndexDisplayType mDisplayType;
    EIndexViewType mViewType;
    CGraphAxisWidget *mStrip;
    GZ::CWidgetList *mList; ///< a child of the pane
    CRealtimeGraphWidget *mMain = nullptr;
    QMap<CRealtimeGraphWidget *, int> mIds;
    int mLastId = 0; ///< the last one given out
    CRealtimeGraphWidget *mSelected = nullptr; ///< null stands for the main graph
};

} // namespace TC
