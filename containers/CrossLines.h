#pragma once

#include "host/records/Enumerations.h"

#include <QDateTime>
#include <QPointer>
#include <boost/shared_ptr.hpp>

#include <functional>

class QWidget;

namespace TC {

class CCrossLineWidget;
class CRealtimeTimeWidget;
class CRealtimeUiParam;
class CRealtimeWidget;
class PaneRow;

/// The one cross line over all panes of a view, moved by mouse or keyboard, with the flag of the time scale and the values
/// in the titles. The vertical line stands at the same axis index in all panes, that of the view parameters; the
/// horizontal one is in the pane under the mouse, or at the value of the main chart when the keyboard moves it.
class CrossLines {
public:
    CrossLines(const PaneRow &panes, boost::shared_ptr<CRealtimeUiParam> uiParam);
    ~CrossLines();
    CrossLines(const CrossLines &) = delete;
    CrossLines &operator=(const CrossLines &) = delete;

    /// Where it stands: the time of its minute, and the value of the main chart there.
    struct Place {
        QDateTime time; ///< invalid when no cross line is shown
        double value = kUnsetValue; ///< unset where the chart has none
        bool operator==(const Place &other) const { return time == other.time && value == other.value; }
    };
    Place place() const;
    /// `moved` is called whenever the place may be another.
    void setMoved(std::function<void()> moved) { mMoved = std::move(moved); }
    /// `moved` is called when the keyboard has moved it, or a call in its place.
    void setMovedByKey(std::function<void()> moved) { mMovedByKey = std::move(moved); }

    /// Null in a view without a time scale.
    void setTimeScale(CRealtimeTimeWidget *timeScale);

    // By mouse

    /// The mouse has moved it to an axis index, -1 none, at a column of its graph.
    void moveByMouse(int index, int x);
    /// The mouse has entered a graph: the titles follow its day. Any widget may be told of, it is looked up only.
    void followGraph(QWidget *graph);
    /// It goes from all panes, as the mouse leaves the view; it stays switched on.
    void drop();

    // By keyboard

    /// Takes a key; false for one that means nothing here.
    bool takeKey(int key);
    /// One position to the left or right; the first call shows it, at the newest or the first point.
    void step(bool left);
    void toHome();
    void toEnd();

    // As the view changes

    bool isShown() const;
    void toggle();
    /// Switches it on, at the newest point when it stands nowhere, or off.
    void show(bool shown);
    /// Columns or days have changed: it goes to where its place in the day lies now. One that the mouse has put on a day
    /// which is no more goes with that day.
    void realign();
    /// A pane has come: the keyboard's cross line runs through it too.
    void joinPane();
    /// A pane has taken it to the newest point; all others follow.
    void followNewest();
    /// Repaints what of it and of the time flag has changed.
    void refresh();

private:
    bool isMoved() const;
    void countPastPoints();
    int newestIndex() const;
    void showAt(int index);
    void tellTitles(int index);
    void showByKey(int x);
    int placeSubLines(int mainX);
    void tellTimeScale(int index, int x);
    void refreshTimeFlag();
    void refreshSelections();
    void setTitleDay(int day);

    const PaneRow &mPanes;
    boost::shared_ptr<CRealtimeUiParam> mUiParam;
    QPointer<CRealtimeTimeWidget> mTimeScale;
    std::function<void()> mMoved = [] {};
    std::function<void()> mMovedByKey = [] {};
    int mTitleDay = -1; ///< days back of the graph that the titles follow, -1 none was entered
};

} // namespace TC
