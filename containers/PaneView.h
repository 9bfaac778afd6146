#pragma once

#include "host/Export.h"
#include "host/records/BSONObj.h"
#include "host/records/Enumerations.h"
#include "host/toolkit/CBaseWidget.h"

#include <QList>
#include <QPointer>
#include <QString>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <memory>

namespace TC {

class CCrossLineWidget;
class CGraphAxisWidget;
class CRealtimeData;
class CRealtimeGraphWidget;
class CRealtimeUiParam;
class DayGraphs;
class PaneCursor;
class PaneTitle;

/// What of a pane is seen: title, axis strips, day graphs and cross line, how they are laid out, on which scale the days
/// are drawn, how many there are. User-interface thread only.
class TIMESHARE_EXPORT PaneView : public GZ::CBaseWidget {
    Q_OBJECT
public:
    ~PaneView() override;

    /// What a pane likes to have, in pixels: twice the height of a formula pane for the price chart.
    QSize sizeHint() const override;
    /// The title, and beneath that of the price chart as much again.
    QSize minimumSizeHint() const override;

    // Parts

    boost::shared_ptr<CRealtimeUiParam> getUiParam() const;
    CCrossLineWidget *getCrossLineWidget() const;
    /// Another cross line takes the place of the one there, which stays with its parent. May be null.
    void setCrossLineWidget(CCrossLineWidget *crossLine);
    /// The graph that the user last selected, else that of the newest day.
    CRealtimeGraphWidget *getCurrentGraphWidget() const;
    int getGrapWidgetCount() const;
    int getGraphWidgetCount() const { return getGrapWidgetCount(); }
    /// Id of a graph: 0 that of the newest day, -1 one that this pane has not entered.
    int getGrapWidgetID(CRealtimeGraphWidget *graph) const;
    /// All graphs, the newest day first: position i is i trading days back.
    QList<CRealtimeGraphWidget *> getGraphWidgets() const;

    // Days and scales

    /// One day fewer, or one more, up to six.
    void scaleView(bool shrink);
    /// Back to one day.
    void clearScaleView();
    /// Brings all graphs onto one scale; with `overwrite` a drawn range may also narrow.
    void updateAxis(bool overwrite);
    /// Renders all graphs anew and repaints them.
    void updateView();
    /// Shares out the width among the graphs.
    void updateLength();

    // Title

    /// Lets the title follow the graph of `day` trading days back.
    void setTitleData(int day);
    void setTitleAddStock();
    /// Pixels above the graphs.
    int titleHeight() const;
    /// Lets the title show the values at an axis index; -1 is none, and takes the title back to the newest day.
    void updateIndexId(int id);
    /// The past trading day that the title tells of, a time in seconds.
    void setGetTradeDateFunc(boost::function<int()> func);
    void setBtnToolVisible(bool visible);
    void setConciseStyle(bool concise);
    void setSelected(bool selected);
    void showHolographicButon(bool show);
    void showHolographicButton(bool show) { showHolographicButon(show); }

    // The user's drawings on the newest day

    void setGraphType(EVmGraphType type);
    /// Colour of the selected drawing and of the next ones, as "#rrggbb".
    void setCurrGraphColor(QString color);
    /// Deletes the selected drawing; false when there is none.
    bool deleteCurrGraph();
    void setParam(const bson::BSONObj &param);
    bson::BSONObj getParam() const;

    // Where the cross line stands, in pixels: columns from the left end of the row of graphs, rows of this
    // pane. -1 is nowhere.

    int getGraphWidgetMouseX() const;
    int getGraphWidgetMouseY() const;
    /// The same of a sub pane, which has no cross line of its own unless the mouse is in it.
    int getSubGraphWidgetMouseX() const;
    int getSubGraphWidgetMouseY() const;
    /// The data of the graph under the mouse while the cross line is moved by keyboard, else null.
    boost::shared_ptr<CRealtimeData> getMouseInWidgetData() const;
    /// What the cross line shows values of while it is moved by keyboard: the data under the mouse, else the newest day's.
    boost::shared_ptr<CRealtimeData> dataOfKeyboard() const;

    bool handleEvent(int event, int first, int second, QString text, void *data) override;

Q_SIGNALS:
    /// The view has another number of points: the newest points of its other panes lie elsewhere.
    void pointCountChanged();
    /// The cross line has followed the newest point: it lies elsewhere in the other panes too.
    void crossLineMoved();
    /// The series of a day have changed.
    void dataChanged();

public Q_SLOTS:
    /// Repaints what of the graphs and the cross line has changed, and nothing else.
    void repaintChanged();

protected:
    /// A pane of a formula, with the days that the view has already, or the main pane.
    PaneView(int id, boost::shared_ptr<CRealtimeUiParam> uiParam, EIndexDisplayType displayType,
             EIndexViewType viewType, QWidget *parent);

    /// The graph at a position of the row, 0 the oldest; null beyond its ends.
    CRealtimeGraphWidget *getGraphWidget(int index) const;
    void placeCrossLine();
    void resizeEvent(QResizeEvent *event) override;

    const boost::shared_ptr<CRealtimeUiParam> mUiParam;
    boost::shared_ptr<CRealtimeData> mMainData; ///< of the newest day
    const EIndexDisplayType mDisplayType;
    std::unique_ptr<PaneTitle> mTitle; ///< null while the pane goes
    std::unique_ptr<DayGraphs> mDays;

private:
    void createStrips();
    void layOutParts();
    void refreshCrossLine();
    void removeOldestGraph();

    CGraphAxisWidget *mLeftAxisWidget = nullptr;
    CGraphAxisWidget *mRightAxisWidget = nullptr;
    std::unique_ptr<PaneCursor> mCursor;
    QPointer<CCrossLineWidget> mCrossLineWidget;
    int mShownPoints = 0; ///< number of points of the view at the last repaint of what had changed
};

} // namespace TC
