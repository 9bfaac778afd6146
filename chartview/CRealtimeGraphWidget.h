#pragma once

#include "chartview/AccountCommands.h"
#include "chartview/DrawingSpace.h"
#include "chartview/FormulaCommands.h"
#include "chartview/GraphContextMenu.h"
#include "chartview/GraphInput.h"
#include "chartview/GraphLayers.h"
#include "chartview/GraphPointer.h"
#include "chartview/GraphSubject.h"
#include "chartview/HiddenVariables.h"
#include "chartview/OverlayCommands.h"
#include "chartview/RegionLines.h"
#include "chartview/TradeTip.h"
#include "chartview/ViewCommands.h"
#include "host/Export.h"
#include "host/drawing/IGraphWidget.h"
#include "host/drawing/IndexBaseData.h"
#include "host/records/Enumerations.h"
#include "host/services/CFormulaManager.h"
#include "host/toolkit/CBaseWidget.h"
#include "host/toolkit/QtCompat.h"

#include <QList>
#include <QString>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

namespace TC {

class CRealtimeData;
class CRealtimeUiParam;
class CStockInfo;

/// One drawn graph of a pane: the price chart of a trading day with its volume band, or a formula pane of that
/// day. It owns no series: it paints what its data has rendered, puts the interactive layers on top, and turns
/// input into events. A face over its parts, which do the work. User-interface thread only.
class TIMESHARE_EXPORT CRealtimeGraphWidget : public GZ::CBaseWidget, public IGraphWidget {
    Q_OBJECT
public:
    /// `id` is told in the events of this graph. The last argument says whether it is the graph of the newest
    /// day; the graph itself does not read it.
    CRealtimeGraphWidget(int id, boost::shared_ptr<CRealtimeData> source,
                         boost::shared_ptr<CRealtimeUiParam> uiParam, EIndexDisplayType displayType,
                         EIndexViewType viewType, QWidget *parent, bool newest);
    /// Withdraws the requests of the data and empties it.
    ~CRealtimeGraphWidget() override;

    boost::shared_ptr<CRealtimeData> getData() const;

    // Formulas and requests, passed on to the data

    void addIndex(const QString &name);
    void delIndex(const QString &name);
    void delAllIndex();
    /// Leaves the main formulas and this one; the caller requests again.
    void updateIndex(const QString &name);
    bool findIndex(const QString &name) const;
    QList<QString> getIndexes() const;
    bool hasGroupModelIndex() const;
    bool hasPythonIndex() const;
    /// Requests, from the replay service while in replay. A group model in a sub pane of a view that does not
    /// show group graphs is requested only when its first formula is a script model.
    void request(corvane::ERunMode mode);
    void syncRequest(corvane::ERunMode mode);
    void unrequest();
    void minitermFormulaDataCallback(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                     const QString &stock, const QString &formula, int dataType);

    // Instrument

    /// The instrument of this graph. In a paired view, `isPair` overlays its counterpart of the other market when there
    /// are overlays, and gives it up when it falls to false.
    void setStock(const QString &key, bool isPair);
    /// Adds accounts to those whose trades are shown, or takes them away: one, or several joined by commas. A single
    /// one that is listed already, on either side, changes nothing.
    void updateLinkageData(const QString &accounts, bool add) { mAccounts.update(accounts, add); }
    void updateLinkageData(const QList<QString> &accounts, bool add) { mAccounts.update(accounts, add); }
    /// Opens the smart keyboard for an overlay with an axis scale of its own.
    void superposedStock() { mOverlays.pickWithAxis(); }
    /// Asks the host for the analysis of the instrument's sector.
    void showContrastSector() { mView.showContrast(); }
    /// Opens the menu of formulas that can take the place of the present ones, at a point of the screen.
    void showTitleMenu(const QPoint &at) { mMenu.openTitleMenu(at); }

    // View

    /// Takes the ranges to draw with; the user's drawings follow.
    void updateAxis(const IndexBaseData::MaxMinMap &ranges, bool overwrite);
    /// Renders the chart anew. The caller repaints.
    void updateView();
    /// Repaints what of the data has changed since the last call, and nothing else.
    void updateChanged();
    /// Drops the series of overlays and repaints.
    void updateOverlay();
    void beHistory(bool history) { mSubject.history = history; }
    void beReplay(bool replay);
    void setCreateNewWorkShow(bool show) { mSubject.createNewWork = show; }
    void setMouseIn(bool in) { mPointer.setMouseIn(in); }
    void setPairParamFunc(boost::function<void(QString)> func);
    /// Whether the mouse moves over this graph.
    bool isCrossActive() const { return mPointer.isCrossActive(); }
    /// Whether a selection is under way. It is painted with the next repaint, which is the view's to ask for.
    bool isSelecting() const { return mPointer.isSelecting(); }
    /// Row of the mouse in this graph, -1 unless it moves over it.
    int getMouseY() const;
    /// Moves the region lines to two axis indices.
    void setRegionLine(int startIndex, int endIndex);
    void setRegionLineHide();
    /// Shows the first formula of the pane with its values and hidden variables at the cross line, in a window.
    void viewVariable() { mVariables.show(); }

    /// Passes a finished drawing to the host.
    void onGraphFinished(void *notification) override;
    bool handleEvent(int event, int first, int second, QString text, void *payload) override;
    void onUiResourceChanged() override;

    /// An instrument picked in the smart keyboard, to be overlaid; `withAxis` on an axis scale of its own.
    void overlayPickedStock(const CStockInfo &picked, ESmartKeyType type, bool withAxis) {
        mOverlays.overlayPicked(picked, type, withAxis);
    }

Q_SIGNALS:
    /// The mouse has left; what it had under way is over.
    void mouseLeft();

public Q_SLOTS:
    // What the entries of the menus do. Those that need a formula, an account or a level take it from the entry that
    // sent them, and do nothing when there is none.

    /// Opens the editor of the pane's formula.
    void slotEditFormula() { mFormulas.edit(); }
    /// Takes all formulas but the main ones off the pane and asks to close it.
    void slotCloseFormula() { mFormulas.closeAll(); }
    void slotAddIndexWidget();
    void slotAddIndex();
    void slotDelIndex();
    /// Shows another formula in place of the present ones.
    void slotUpdateIndex();
    void slotOverlayStock() { mOverlays.pickWithAxis(); }
    void slotOverlayNoAxisStock() { mOverlays.pickWithoutAxis(); }
    /// Switches the setting that overlays the instrument's sector.
    void slotOverlaySector() { mOverlays.toggleSector(); }
    void slotDelAllStock() { mOverlays.takeAll(); }
    void slotRefresh() { request(corvane::ERunMode::Ordinary); }
    void slotShowVolume() { mView.toggleVolume(); }
    void slotShowGradient() { mView.toggleGradient(); }
    /// Puts the text of all series on the clipboard.
    void slotCopy() { mFormulas.copyResults(); }
    void slotExportFormula() { mFormulas.exportFirst(); }
    /// Shows the region lines and asks for the statistics of a region: its first index, and its text (end index,
    /// start and end in seconds since the epoch, joined by commas).
    void slotStatistic(bool checked, int startIndex, const QString &text);
    void slotCreateNewWork();
    void slotShowLinkageData();
    /// Shows the trades of all accounts of the instrument's kind, or of none when all were shown.
    void slotSelectAllAccount(bool checked);
    void slotSelectShowAccount(bool checked);
    /// Shows the parameters of the pane's last formula.
    void slotModifyModelParam() { mFormulas.modifyParameters(); }
    /// Adds the instrument to one of the user's lists; false when there is none.
    bool slotAddSelfStock() { return mView.addSelfStock(); }
    void slotContrastSector(bool /*checked*/) { mView.showContrast(); }
    void slotShowAfterTradeFixedPriceDeal(bool checked);
    void slotRestoreGraph();
    void slotAutoChangePeriod();
    /// Overlays the counterpart of a share that is listed in two markets.
    void slotOverlayAHStock() { mOverlays.overlayCounterpart(); }
    /// Puts instrument, formulas and request ids on the clipboard.
    void slotCopyRequestInfo() { mFormulas.copyRequestInfo(); }
    /// Overlays the index of the instrument's sector of a level; with any of them overlaid it only goes.
    void slotAddBkzsCode();
    /// Overlays what the instrument converts to or from, or takes it away.
    void slotAddConvertibleCode() { mOverlays.toggleConvertible(); }
    void slotAddVWAPFormula() { mAccounts.toggleFormula(sentBy()); }
    /// Switches the filter of repeated instruments; only while the trade-data formula is shown.
    void slotFilterStock() { mView.toggleFilter(); }
    void slotDownloadDatas();
    void slotShowControlDialog();
    /// Sets the range of the market replay to that of a region's text, which may have a key as its fourth field.
    void slotSetReplayTimeRegin(bool /*checked*/, int /*index*/, const QString &text) {
        mView.setReplayRange(text);
    }

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    bool event(QEvent *event) override;
    void enterEvent(GZ::EnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    /// The entry that sent a slot; null when none did.
    const QAction *sentBy() const;

    // The parts, each after those that it reads.
    GraphSubject mSubject;
    boost::function<void(QString)> mPairParamFunc; ///< stored only
    GraphPointer mPointer;
    RegionLines mRegionLines;
    TradeTip mTip;
    DrawingSpace mSpace;
    GraphLayers mLayers;
    GraphInput mInput;
    FormulaCommands mFormulas;
    OverlayCommands mOverlays;
    AccountCommands mAccounts;
    ViewCommands mView;
    GraphContextMenu mMenu;
    HiddenVariables mVariables;
};

} // namespace TC
