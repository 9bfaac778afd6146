#pragma once

#include "host/records/BSONObj.h"
#include "host/records/Enumerations.h"
#include "host/services/CFormulaManager.h"
#include "host/toolkit/CBaseWidget.h"

#include <QList>
#include <QMap>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

namespace GZ {
class CPushButton;
class CWidgetList;
} // namespace GZ

namespace TC {

class CCrossLineWidget;
class CGraphAxisWidget;
class CIndexTitleWidget;
class CRealtimeData;
class CRealtimeGraphWidget;
class CRealtimeUiParam;

/// One pane of a view: a title strip, and beneath it a row of one to six day graphs between two axis strips, with
/// a cross line over it all. The oldest day is at the left. It holds no market data: every graph has its own data
/// object, and all graphs of a pane are drawn on one scale per formula. User-interface thread only.
class CRealtimeWidget : public GZ::CBaseWidget {
    Q_OBJECT
public:
    /// `id` is the first argument of the events that this pane delivers.
    CRealtimeWidget(int id, boost::shared_ptr<CRealtimeUiParam> uiParam, EIndexDisplayType displayType,
                    EIndexViewType viewType, QWidget *parent);
    ~CRealtimeWidget() override;

    // Parts

    int getId() const;
    boost::shared_ptr<CRealtimeUiParam> getUiParam() const;
    CCrossLineWidget *getCrossLineWidget() const;
    /// Another cross line takes the place of the one there, which stays with its parent. May be null.
    void setCrossLineWidget(CCrossLineWidget *crossLine);
    /// The graph that the user last selected, else that of the newest day.
    CRealtimeGraphWidget *getCurrentGraphWidget() const;
    int getGrapWidgetCount() const;
    /// Id of a graph: 0 that of the newest day, -1 one that this pane has not entered.
    int getGrapWidgetID(CRealtimeGraphWidget *graph) const;
    /// All graphs, the newest day first: position i is i trading days back.
    QList<CRealtimeGraphWidget *> getGraphWidgets() const;

    // Data and requests

    /// Asks for all days. A sub pane that was told not to start by itself holds the request, and a model among its
    /// formulas then waits for the run button.
    void request(corvane::ERunMode mode);
    /// The same in one blocking call per day. Only in a view of a past day.
    void syncRequest(corvane::ERunMode mode);
    void unrequest();
    /// Empties title and data; the graphs stay.
    void clear();
    bool hasData() const;
    bool hasPythonIndex() const;
    bool hasGroupModelIndex() const;
    /// Takes in a model's result that the host pushes without a request.
    void minitermFormulaDataCallback(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                     const QString &stock, const QString &formula, int dataType);
    /// Shows another instrument, portfolio or user-defined index in the title. `flag` fills the gaps of its series
    /// and goes to the title. The caller requests.
    void setStock(const QString &stockKey, bool flag);
    void clearStock();
    /// Lets the title follow the graph of `day` trading days back.
    void setTitleData(int day);
    void setTitleAddStock();
    /// Overlays: 1 adds an instrument on a scale of its own, 11 one on that of the main instrument, 0 takes all
    /// away, 2 asks for those there anew.
    void updateOverlay(int op, const QString &stockKey);
    void updateLinkageData(const QList<QString> &accounts, bool add);
    void updateLinkageData(const QString &accounts, bool add);
    /// Eleven figures of a stretch of axis indices, as text; empty when there is nothing to tell. `end` is held to
    /// the series.
    QStringList statisticRange(int &start, int &end) const;

    // Formulas

    void addIndex(const QString &name);
    void delIndex(const QString &name);
    void delAllIndex();
    /// Leaves the main formulas and this one; the caller requests.
    void updateIndex(const QString &name);
    /// 1 puts a formula in, 0 takes it away; then requests.
    void updateIndex(int op, const QString &name);
    /// Lets the title show the values at an axis index; -1 is none, and takes the title back to the newest day.
    void updateIndexId(int id);
    bool findIndex(const QString &name) const;
    QList<QString> getIndexes() const;
    QString getMainIndex() const;
    /// The formula last added or updated.
    QString gePretIndex() const;

    // View

    /// Brings all graphs onto one scale; with `overwrite` a drawn range may also narrow.
    void updateAxis(bool overwrite);
    /// Renders all graphs anew and repaints them.
    void updateView();
    /// Shares out the width among the graphs.
    void updateLength();
    /// One day fewer, or one more, up to six.
    void scaleView(bool shrink);
    /// Back to one day.
    void clearScaleView();
    void beHistory(bool history);
    void beReplay(bool replay);
    void setCreateNewWorkShow(bool show);
    void setMouseIn(bool in);
    void setPairParamFunc(boost::function<void(QString)> func);
    void showContrastSector();
    void superposedStock();
    void viewVariable();
    /// The past trading day that the title tells of, a time in seconds.
    void setGetTradeDateFunc(boost::function<int()> func);
    void setBtnToolVisible(bool visible);
    void setConciseStyle(bool concise);
    void setSelected(bool selected);
    void showHolographicButon(bool show);
    /// Whether a model runs without a click on the run button. Sub panes only.
    void setAutoIndex(bool automatic);
    /// Holds the next request back until it is clear whether a model may run. Sub panes only.
    void setIsLoginInit(bool init);

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

    /// Asks for this pane to be closed.
    void destorySubWidget();
    bool handleEvent(int event, int sub, int param, QString text, void *data) override;

signals:
    /// The view has another number of points: the newest points of its other panes lie elsewhere.
    void pointCountChanged();
    /// The cross line has followed the newest point: it lies elsewhere in the other panes too.
    void crossLineMoved();

public slots:
    /// Repaints what of the graphs and the cross line has changed, and nothing else.
    void repaintChanged();
    /// Decides about a request that was held back: runs it, or shows the run button.
    void slotDisplayTimeOut();

protected:
    /// The graph at a position of the row, 0 the oldest; null beyond its ends.
    CRealtimeGraphWidget *getGraphWidget(int index) const;
    void resizeEvent(QResizeEvent *event) override;

private:
    void createUi();
    void createStrips();
    /// The days that a view of several days has already, for a sub pane that joins it.
    void createOlderGraphs();
    void createRunButton();
    void layOutParts();
    void placeCrossLine();
    void refreshCrossLine();
    /// Places the run button.
    void resizeLayout();

    /// A data object of this pane, with its axis strip.
    boost::shared_ptr<CRealtimeData> makeData();
    /// Puts a graph of an older day at the left end of the row.
    CRealtimeGraphWidget *insertGraph(int id, const boost::shared_ptr<CRealtimeData> &data, QWidget *parent);
    void addOlderGraph();
    void removeOldestGraph();
    QString market() const;
    /// A time in seconds on the newest day shown.
    int baseDate() const;
    /// Takes the dates of all days, counted back from `date`, and does something with each graph.
    template <class Action> void forEachDay(int date, Action action);
    /// Whether a request has to wait, on a sub pane that was told not to start by itself.
    bool isHeld() const;
    /// Neither simple title nor run button.
    void showRunning();
    void showRunButton();
    /// Whether the model of the main graph trades by itself, so that it needs no click.
    bool isStrategyRunning() const;
    /// What a group model needs in place of a request of all days; false when there is none.
    template <class Action> bool runGroupModel(Action runMainGraph);
    QString firstFormula() const;
    /// Position in the row of the graph that the mouse moves over, -1 none.
    int graphUnderMouse() const;
    /// Where the cross line meets the graph at a position.
    int columnAtCrossIndex(int position) const;
    int rowAtCrossIndex(CRealtimeData &data) const;
    int titleHeight() const;

    void handleButton(int button, int param);
    void selectGraph(int id);
    void refreshTitle(const void *sender);

    CIndexTitleWidget *mTitleWidget = nullptr;
    CRealtimeGraphWidget *mMainGraphWidget = nullptr; ///< of the newest day
    GZ::CWidgetList *mGraphList = nullptr; ///< the graphs, the oldest day first
    CGraphAxisWidget *mLeftAxisWidget = nullptr;
    CGraphAxisWidget *mRightAxisWidget = nullptr;
    QPointer<CCrossLineWidget> mCrossLineWidget;
    boost::shared_ptr<CRealtimeUiParam> mUiParam;
    boost::shared_ptr<CRealtimeData> mMainData; ///< of the main graph
    EIndexDisplayType mDisplayType;
    EIndexViewType mViewType;
    int mId;
    QMap<CRealtimeGraphWidget *, int> mGraphIds; ///< without the older days that a sub pane was made with
    int mLastGraphId = 0;
    int mShownPoints = 0; ///< number of points of the view at the last repaint of what had changed
    QString mPreIndex;
    CRealtimeGraphWidget *mCurrentGraph = nullptr; ///< null stands for the main graph
    corvane::ERunMode mPendingRunMode = corvane::ERunMode::Ordinary; ///< of a request held back
    bool mIsLoginInit = false;
    bool mAutoIndex = true;
    bool mShowRunButton = false;
    GZ::CPushButton *mRunButton = nullptr; ///< sub panes only
};

} // namespace TC
