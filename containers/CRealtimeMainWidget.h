#pragma once

#include "chartview/IDayRows.h"
#include "containers/CRealtimeWidget.h"
#include "host/records/BSONObj.h"
#include "host/records/CInstrumentDetail.h"
#include "host/records/Enumerations.h"
#include "host/records/RPCUiPortfolioDetail.h"
#include "host/services/CFormulaManager.h"
#include "host/toolkit/CBaseWidget.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QVector>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <memory>
#include <vector>

class QDateTime;

namespace TC {

class CRealtimeUiParam;
struct MainViewParts;

/// One intraday chart view: what a host creates. The main pane, any number of formula panes beneath it, the time
/// scale, the frame over the selected pane, and in the concise style the bar of formula templates.
///
/// A host calls setStock, then request(false), and again on every change of instrument. The view tells what
/// concerns the host by events that it delivers upward. User-interface thread only. What it is made of is told in
/// MainViewParts.h, what it does with events in MainViewEvents.cpp.
class CRealtimeMainWidget : public GZ::CBaseWidget, public IDayRows {
    Q_OBJECT
public:
    CRealtimeMainWidget(QWidget *parent, EIndexViewType viewType);
    ~CRealtimeMainWidget() override;

    // Instrument

    /// Shows an instrument, a user-defined index or a portfolio; the main formulas follow its kind. Requests
    /// nothing. `useUnderlying` takes the trading sessions of the underlying.
    void setStock(const QString &key, bool useUnderlying);
    void clearStock();
    /// Key and market word of the instrument's record; those of an empty record for an index or a portfolio.
    QString getStock() const;
    QString getMarket() const;
    void setSector(const QString &sector, const QString &name);
    void setFormulaAccount(const QString &account);
    void setCanOverlaySector(bool can);
    /// Puts the cross line of the view parameters back: off, at no index.
    void resetUiParam();
    /// Shows a past trading day: the function answers its midnight, in seconds since the epoch.
    void setGetTradeDateFunc(boost::function<int()> func);
    void setPairParamFunc(boost::function<void(QString)> func) { getRealTimeWidget()->setPairParamFunc(func); }
    /// Takes another analysis of a portfolio; the caller requests.
    void setPortfolioType(EPortfolioAnalyzeGraphType type);
    /// The axis of a portfolio is that of its last futures position.
    void subPortfolioCallBack(const RPCUiPortfolioDetail &detail);

    // Overlays

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
    /// Withdraws; a group model on an instrument that is no index goes on.
    void unrequest();
    void clear(bool updateView);
    void beReplay(bool replay);
    /// Whether a past day is shown; the main pane alone.
    void beHistory(bool history) { getRealTimeWidget()->beHistory(history); }
    /// Fetches missing history of the instrument, and requests anew as it comes.
    void downloadData();
    /// Progress of that download: every step before the last one requests anew. -1 is no progress.
    void suppleProgress(int done, int total, const QString &market, const QString &code);

    // Panes

    CRealtimeWidget *getRealTimeWidget() const;
    /// In order of creation, which is that from top to bottom.
    QVector<CRealtimeWidget *> getSubIndexWidgets() const;
    QVector<QList<CRealtimeGraphWidget *>> dayRows() const override;
    boost::shared_ptr<CRealtimeUiParam> getUiParam() const { return mUiParam; }
    /// Adds an empty pane and selects it.
    void addIndexWidget();
    /// Removes the pane of an id and selects its neighbour.
    void delIndexWidget(int id);
    void delAllIndexWidgets();
    void clearSubIndexes();
    /// Adds panes of the default formulas, or removes the last ones, until `count` panes stand, the main pane
    /// included: 1 to 10.
    void adjustIndexWidgetSize(int count);
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
    void setWidgetFocus();

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
    QVector<QString> getSelectIndex() const;
    QVector<QString> getSelectTempalte() const;
    void updateSelectIndex(const QVector<QString> &names);
    void updateSelectTemplate(const QVector<QString> &names);

    // Formulas

    /// What the host's formula browser or editor asks for: 0 shown, 1 applied, 2 parameters confirmed, 3 modified,
    /// 4 deleted. Any other `op` does nothing, and so does an unknown formula, but for 4.
    void updateIndex(const QString &name, int op, EFormulaLanguage language, corvane::ERunMode mode);
    /// Shows a formula where its type belongs; one attached to the main chart goes off again.
    void handleDoubleClickedFormula(const QString &name);
    /// Shows it, or starts it anew, in a run mode.
    void handleApplyFormula(const QString &name, EFormulaLanguage language, corvane::ERunMode mode);
    /// Requests it anew wherever it is shown.
    void handleConfirmFormula(const QString &name);
    void handleModifyFormula(const QString &name, EFormulaLanguage language);
    void handleDeleteFormula(const QString &name);
    void deleteMainFormula(const QString &name);
    /// Places a formula of a type whose results the host pushes, and remembers the pane under `key`.
    void createIndexWidget(const QString &key, int type, const QString &name);
    /// Asks for the pane of a key to be closed.
    void destoryWidget(const QString &key);
    /// Results of a key's formula.
    void minitermFormulaDataCallback(const QString &key, const FormulaMetaPtr &meta,
                                     const FormulaResultPtr &result);
    /// Tells the template bar that a pane gives up its formula for another.
    void updateIndexTemplate(CRealtimeWidget *pane, const QString &name);
    /// Shows or removes the trade-data formula, as the user has configured it.
    void applyFormula();
    /// Another account's trade data; an empty account takes the formula away, and the configuration keeps it.
    void updateFrormulaData(const QString &account);
    void addMultiVewFormulaAndLinkageData(bool addFormula);
    void delMultiVewFormulaAndLinkageData(const QList<QString> &accounts);
    void updateLinkageData(const QList<QString> &accounts, bool show);
    /// Always of the account of setFormulaAccount, whatever `account` says.
    void updateLinkageData(const QString &account, bool show);

    // Cross line and days

    bool isShowCrossline() const;
    void switchCrossline();
    /// One position to the left or right; the first call shows the cross line, at the newest or the first point.
    void moveCursor(bool left);
    void moveToHome();
    void moveToEnd();
    /// One day fewer, or one more.
    void scaleView(bool fewer);

    // Region statistics

    /// Takes a region: its first index, and its text, which is the last index, start and end in seconds since the
    /// epoch, joined by commas. An empty region hides the region lines.
    void statisticSelectRegion(int start, const QString &text);
    /// A region of one moment; null does nothing.
    void statisticSelectRegion(QDateTime *dateTime);
    void setRegionLineHide();

    // Trade linkage

    /// Opens the dialog of what is shown of the user's trades, or brings it forward; from then on it governs that.
    void showLinkageSetting();
    void showLinkageDataFromKey();
    /// Takes the choice of the dialog over, as long as it governs.
    void updateLinkageSetting();
    void updateLinkageDatas();
    /// The dialog governs no longer.
    void closeLinkageSetting();
    /// What is checked in the dialog, by name; what it is to begin with when there is none yet.
    QMap<QString, bool> getLinkageDialogSetting() const;
    /// What the dialog begins with when it is made; names that the map does not hold stay.
    void presetLinkageDialogSetting(const QMap<QString, bool> &setting);
    /// Checks it in the dialog; without one nothing is kept.
    void loadLinkageDialogSetting(const QMap<QString, bool> &setting);
    /// Opens the dialog of the records of a kind at a point of a graph, "linkage_orders", "linkage_deals" or
    /// "linkage_tasks", and hides the others; when there are none nothing changes. With the user's quick cancel, or
    /// without a configuration of the user, tasks are cancelled at once instead.
    void showLinkageDatas(void *graph, const QString &kind, int x, int y);

    bool handleEvent(int event, int first, int second, QString text, void *payload) override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    boost::shared_ptr<CRealtimeUiParam> mUiParam;
    std::unique_ptr<MainViewParts> mParts; ///< null while they are being made
};

} // namespace TC
