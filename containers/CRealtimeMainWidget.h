#pragma once

#include "containers/MainView.h"
#include "host/Export.h"
#include "host/records/Enumerations.h"
#include "host/records/RPCUiPortfolioDetail.h"
#include "host/services/CFormulaManager.h"
#include "host/toolkit/Events.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QVector>

#include <memory>
#include <vector>

class QDateTime;

namespace TC {

class FormulaPlacement;
class HistoryDownload;
class KeyedFormulas;
class MainChart;
class RecordWindows;
class RegionStatistics;
class SavedView;
class TradeFormula;
class TradeSettings;

/// Whose trading sessions a view has.
enum class EAxisOf { Instrument, Underlying };

/// One intraday chart view: what a host creates. The main pane, any number of formula panes beneath it, the time
/// scale, the frame over the selected pane, and in the concise style the bar of formula templates.
///
/// A host calls setParam with a saved view, if it has one, then setStock, then request(false), and the last two again on
/// every change of instrument. The view tells what concerns the host by events that it delivers upward. User-interface
/// thread only.
///
/// What is told to all panes alike is MainView's; here is what is shown in them, and what happens on an event.
class TIMESHARE_EXPORT CRealtimeMainWidget : public MainView {
    Q_OBJECT
public:
    /// A view of the services of its parent: the program's own unless that, or a widget above it, was given others.
    CRealtimeMainWidget(QWidget *parent, EIndexViewType viewType)
        : CRealtimeMainWidget(parent, viewType, ServiceContext::of(parent)) {}
    /// A view of the services of a context, which outlives it.
    CRealtimeMainWidget(QWidget *parent, EIndexViewType viewType, const ServiceContext &services);
    ~CRealtimeMainWidget() override;

    using MainView::setParam;

    // Instrument

    /// Shows an instrument, a user-defined index or a portfolio; the main formulas follow its kind. Requests
    /// nothing. `useUnderlying` takes the trading sessions of the underlying. A key that nobody knows leaves the view
    /// without an instrument, in silence.
    void setStock(const QString &key, bool useUnderlying);
    void setStock(const QString &key, EAxisOf axis = EAxisOf::Instrument) {
        setStock(key, axis == EAxisOf::Underlying);
    }
    /// The same; false for a key that nobody knows.
    bool trySetStock(const QString &key, bool useUnderlying = false);
    void clearStock();
    void clear(bool updateView);
    /// Takes another analysis of a portfolio; the caller requests.
    void setPortfolioType(EPortfolioAnalyzeGraphType type);
    /// The axis of a portfolio is that of its last futures position.
    void subPortfolioCallBack(const RPCUiPortfolioDetail &detail);
    /// Fetches missing history of the instrument, and requests anew as it comes.
    void downloadData();
    /// Progress of that download: every step before the last one requests anew. -1 is no progress.
    void suppleProgress(int done, int total, const QString &market, const QString &code);

    // Panes

    /// Adds an empty pane and selects it.
    void addIndexWidget();
    /// Removes the pane of an id and selects its neighbour.
    void delIndexWidget(int id);
    void delAllIndexWidgets();
    void clearSubIndexes();
    /// Adds panes of the default formulas, or removes the last ones, until `count` panes stand, the main pane
    /// included: 1 to 10.
    void adjustIndexWidgetSize(int count);
    /// One day fewer, or one more.
    void scaleView(bool fewer);
    void scaleView(EDayChange change) {
        change == eBackToOneDay ? backToOneDay() : scaleView(change == eOneDayFewer);
    }

    // The saved view

    /// The view as JSON text: its formula panes, overlays, the formula attached to the main chart, the choice of trades.
    QString param() const;
    /// Restores what param has told, as far as the text is sound; one that is no such text changes nothing. Requests
    /// nothing.
    void setParam(const QString &text);
    /// The formulas of all formula panes, pane by pane.
    QVector<QString> getIndexParam() const;
    /// Puts a pane for each formula in the place of the formula panes there. Stretch factors begin with the main pane's;
    /// those that the list lacks are 2 for the main pane and 1 for each other. Requests nothing.
    void loadSettings(QVector<QString> &indexes, std::vector<int> &stretches);

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
    void destroyWidget(const QString &key) { destoryWidget(key); }
    /// Results of a key's formula.
    void minitermFormulaDataCallback(const QString &key, const FormulaMetaPtr &meta,
                                     const FormulaResultPtr &result);
    /// Shows or removes the trade-data formula, as the user has configured it.
    void applyFormula();
    /// Another account's trade data; an empty account takes the formula away, and the configuration keeps it.
    void updateFrormulaData(const QString &account);
    void updateFormulaData(const QString &account) { updateFrormulaData(account); }
    void addMultiVewFormulaAndLinkageData(bool addFormula);
    void addMultiViewFormulaAndLinkageData(bool addFormula) { addMultiVewFormulaAndLinkageData(addFormula); }
    void delMultiVewFormulaAndLinkageData(const QList<QString> &accounts);
    void delMultiViewFormulaAndLinkageData(const QList<QString> &accounts) {
        delMultiVewFormulaAndLinkageData(accounts);
    }
    void updateLinkageData(const QList<QString> &accounts, bool show);
    /// Always of the account of setFormulaAccount, whatever `account` says.
    void updateLinkageData(const QString &account, bool show);

    // Region statistics

    /// Shows the statistics of a region: its first index, and its text, which is the last index, start and end in seconds
    /// since the epoch, joined by commas. An empty region hides the region lines.
    void statisticSelectRegion(int start, const QString &text);
    /// A region of one moment; null does nothing.
    void statisticSelectRegion(QDateTime *dateTime);
    void hideStatisticDialog();
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
    /// Escape ends the statistics of a region.
    void keyPressEvent(QKeyEvent *event) override;

private:
    struct Events;

    void backToOneDay();
    void takeDays(int former);

    std::unique_ptr<MainChart> mChart;
    std::unique_ptr<FormulaPlacement> mPlacement;
    std::unique_ptr<KeyedFormulas> mKeyed;
    std::unique_ptr<TradeFormula> mTradeFormula;
    std::unique_ptr<TradeSettings> mTradeSettings;
    std::unique_ptr<RecordWindows> mRecords;
    std::unique_ptr<RegionStatistics> mRegion;
    std::unique_ptr<HistoryDownload> mDownload;
    std::unique_ptr<SavedView> mSavedView;
};

} // namespace TC
