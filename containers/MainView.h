#pragma once

#include "chartview/IDayRows.h"
#include "containers/CRealtimeWidget.h"
#include "host/Export.h"
#include "host/records/BSONObj.h"
#include "host/records/CInstrumentDetail.h"
#include "host/records/Enumerations.h"
#include "host/services/ServiceContext.h"
#include "host/toolkit/CBaseWidget.h"
#include "host/toolkit/QtCompat.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QVector>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <memory>
#include <vector>

namespace TC {

class CRealtimeTimeWidget;
class CRealtimeUiParam;
class CrossLines;
class PaneRow;
class SelectedPane;
class TemplateBar;
class ViewKeys;

/// How a request is made: its results come later, or are waited for.
enum class ERequest { Start, Wait };

/// One position of the cross line.
enum class ECursorStep { Left, Right };

/// The panes of a view beneath one another, with the time scale, the frame over the selected pane, the cross line over
/// them all and the bar of formula templates; and whatever is told to the panes alike. User-interface thread only.
class TIMESHARE_EXPORT MainView : public GZ::CBaseWidget, public IDayRows {
    Q_OBJECT
public:
    ~MainView() override;

    /// What its panes like to have beneath one another, with the time scale and the template bar.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // Instrument and overlays

    /// Key and market word of the instrument's record; those of an empty record for an index or a portfolio.
    QString getStock() const;
    QString getMarket() const;
    void setSector(const QString &sector, const QString &name);
    void setFormulaAccount(const QString &account);
    void setCanOverlaySector(bool can);
    /// Shows a past trading day: the function answers its midnight, in seconds since the epoch.
    void setGetTradeDateFunc(boost::function<int()> func);
    void setPairParamFunc(boost::function<void(QString)> func) { getRealTimeWidget()->setPairParamFunc(func); }
    /// Keys of the overlays, those with an axis first.
    QList<QString> getAddStockList() const;
    /// Overlays an instrument on an axis of its own; does not check the limit.
    void addSuperposedStock(const CInstrumentDetailPtr &detail);
    void delAllAddStock() { getRealTimeWidget()->updateOverlay(0, QString()); }
    void showContrastSector() { getRealTimeWidget()->showContrastSector(); }
    void superposedStock() { getRealTimeWidget()->superposedStock(); }

    // Requests

    /// Requests all panes, main pane first. `sync` blocks until the results are in, which only a view of a past day
    /// does, and repaints.
    void request(bool sync);
    void request(ERequest how) { request(how == ERequest::Wait); }
    /// Withdraws; a group model on an instrument that is no index goes on.
    void unrequest();
    void beReplay(bool replay);
    /// Whether a past day is shown; the main pane alone.
    void beHistory(bool history) { getRealTimeWidget()->beHistory(history); }

    // Panes

    CRealtimeWidget *getRealTimeWidget() const;
    /// In order of creation, which is that from top to bottom.
    QVector<CRealtimeWidget *> getSubIndexWidgets() const;
    QVector<QList<CRealtimeGraphWidget *>> dayRows() const override;
    boost::shared_ptr<CRealtimeUiParam> getUiParam() const { return mUiParam; }
    /// The formula pane that is selected; null when it is none.
    CRealtimeWidget *selectedFormulaPane() const;
    int getNewIndexStretchFactor() const;
    /// Stretch factor of each pane, main pane first; while a pane is maximised those of before.
    std::vector<int> getStretchFactorList() const;
    /// Selects a pane: the frame moves onto it.
    void highlightWidget(int id);
    void setCreateNewWorkShow(bool show);
    void setAutoIndex(bool automatic);
    void setIsLoginInit(bool init);
    void setSelected(bool selected) { getRealTimeWidget()->setSelected(selected); }
    void setBtnToolVisible(bool visible) { getRealTimeWidget()->setBtnToolVisible(visible); }
    void setHolographicButtonShow(bool show) { getRealTimeWidget()->showHolographicButon(show); }
    void setTitleData(int day);
    void updateView();
    /// The same with the time scale.
    void updateWidgetsView();
    void themeChanged();
    void onUiResourceChanged() override;
    /// Shows the hidden variables of the selected formula pane at the cross line.
    void viewVariable();
    void setWidgetFocus() { setFocus(); }

    // The user's drawings, on the main pane

    void setGraphType(EVmGraphType type) { getRealTimeWidget()->setGraphType(type); }
    void setCurrGraphColor(const QString &color) { getRealTimeWidget()->setCurrGraphColor(color); }
    bool deleteCurrGraph() { return getRealTimeWidget()->deleteCurrGraph(); }
    void setParam(const bson::BSONObj &param) { getRealTimeWidget()->setParam(param); }
    bson::BSONObj getParam() const { return getRealTimeWidget()->getParam(); }

    // Template bar. Without one nothing happens, and the lists are empty.

    void setIndexModelVisible(bool visible);
    void showIndexModelWidget();
    void changeBtnStatus(bool status);
    void updateIndexTemplate();
    /// Tells the bar that a pane gives up its formula for another.
    void updateIndexTemplate(CRealtimeWidget *pane, const QString &name);
    QVector<QString> getSelectIndex() const;
    QVector<QString> getSelectTempalte() const;
    QVector<QString> getSelectTemplate() const { return getSelectTempalte(); }
    void updateSelectIndex(const QVector<QString> &names);
    void updateSelectTemplate(const QVector<QString> &names);

    // Cross line

    /// Puts the cross line of the view parameters back: off, at no index.
    void resetUiParam();
    bool isShowCrossline() const;
    /// Switches the cross line on or off; one that stands nowhere yet is seen once mouse or keys move it.
    void switchCrossline();
    /// Shows the cross line at once, at the newest point when it stands nowhere, or takes it away.
    void showCrossline(bool shown);
    /// One position to the left or right; the first call shows the cross line, at the newest or the first point.
    void moveCursor(bool left);
    void moveCursor(ECursorStep step) { moveCursor(step == ECursorStep::Left); }
    void moveToHome();
    void moveToEnd();

    bool handleEvent(int event, int first, int second, QString text, void *data) override;

    /// Whether there is a series for every open request of every pane.
    bool isComplete() const;
    /// Draws the view as it is seen into a rectangle of a painter, stretched to it: lines, shapes and texts in place of the
    /// pictures that the screen is given, so that print, PDF and SVG are sharp at any size. What the theme has as an image, the
    /// tools of the titles above all, stays one. A null or inactive painter and an empty rectangle do nothing.
    void renderTo(QPainter *painter, const QRect &rect);

Q_SIGNALS:
    /// Another instrument is shown: its key, as setStock has taken it; empty without one.
    void instrumentChanged(const QString &key);
    /// The cross line stands at another minute, or the price there is another. An invalid time: none is shown. The value is
    /// the price, also where it is not drawn, and kUnsetValue where there is none.
    void crossLineChanged(const QDateTime &time, double value);
    /// Another stretch is looked at; both invalid: none is any more.
    void regionChanged(const QDateTime &start, const QDateTime &end);
    /// A formula pane has come, or is about to go.
    void paneAdded(int id);
    void paneRemoved(int id);
    void dayCountChanged(int days);
    /// isComplete() answers something else. A request() tells false first, so that its end is always heard of; a view that is
    /// hidden tells it when it is shown.
    void completenessChanged(bool complete);

protected:
    MainView(QWidget *parent, EIndexViewType viewType, const ServiceContext &services);

    /// Deletes panes and time scale at once, as the view goes.
    void deletePanes();
    /// False while it comes and goes.
    bool isWhole() const;
    void refreshTimeScale();
    void tellInstrument(const QString &asked);

    void keyPressEvent(QKeyEvent *event) override;
    /// That of a key opens the menu of the selected pane.
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void enterEvent(GZ::EnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

    const boost::shared_ptr<CRealtimeUiParam> mUiParam;
    std::unique_ptr<PaneRow> mPanes;
    std::unique_ptr<SelectedPane> mSelected;
    std::unique_ptr<TemplateBar> mBar;
    std::unique_ptr<CrossLines> mCrossLines;

private:
    struct Told;

    void tellCrossLine();
    void tellComplete(bool complete);

    CRealtimeTimeWidget *mTimeScale = nullptr; ///< null in a view without time scale
    std::unique_ptr<ViewKeys> mKeys;
    std::unique_ptr<Told> mTold; ///< what was told by signals last
};

} // namespace TC
