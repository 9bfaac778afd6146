#pragma once

#include "host/records/Enumerations.h"

#include <QPoint>
#include <QString>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

class QWidget;

namespace TC {

constexpr int kNewestDay = 0; ///< place of the newest of the days, which are counted back from it

class CIndexTitleWidget;
class CRealtimeData;
class CRealtimeUiParam;
class DayGraphs;

/// The title of a pane: which instrument it names, and of which of the days it tells the values.
class PaneTitle {
public:
    PaneTitle(QWidget *pane, const boost::shared_ptr<CRealtimeData> &mainData,
              boost::shared_ptr<CRealtimeUiParam> uiParam, EIndexDisplayType displayType,
              EIndexViewType viewType);
    ~PaneTitle();
    PaneTitle(const PaneTitle &) = delete;
    PaneTitle &operator=(const PaneTitle &) = delete;

    /// The strip itself, for what it alone is told.
    CIndexTitleWidget *widget() const { return mWidget; }
    int height() const; ///< pixels

    /// Names an instrument, a portfolio or a user-defined index; an unknown key leaves the title. `flag`: the view has the
    /// axis of the underlying.
    void setStock(const QString &key, bool flag);
    void showOverlays();
    /// Tells the values of `day` trading days back; a day that is not shown changes nothing.
    void showDay(const DayGraphs &days, int day);
    /// Tells the values at an axis index; -1 takes the title back to the newest day.
    void showIndex(const DayGraphs &days, int index);
    /// Tells what has changed in the series: with the cross line on its values, else those of `sender`. A cross line that
    /// stands one before the newest point follows it; answers whether it did.
    bool refresh(const DayGraphs &days, const void *sender);
    /// A graph goes: the title tells of it no longer.
    void leave(const DayGraphs &days, const boost::shared_ptr<CRealtimeData> &data);
    /// The simple form names a model and nothing else.
    void showModel(const QString &name);
    void showValues();

private:
    bool followNewest();

    boost::shared_ptr<CRealtimeUiParam> mUiParam;
    CIndexTitleWidget *mWidget;
};

} // namespace TC
