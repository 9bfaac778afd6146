#pragma once

#include "host/drawing/IGraphWidget.h"
#include "host/drawing/IndexBaseData.h"
#include "host/records/Enumerations.h"
#include "host/services/CFormulaManager.h"
#include "host/toolkit/CBaseWidget.h"

#include <QColor>
#include <QList>
#include <QPen>
#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QString>
#include <QVector>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

class QAction;
class QMenu;

namespace kvservice {
class CDealDetail;
class COrderDetail;
} // namespace kvservice

namespace TC {

class CModifyModelParamDialog;
class CRealtimeData;
class CRealtimeUiParam;
class CStockInfo;
class CViewVariableDialog;
class GraphMenu;
struct GraphMenuSubject;

/// One drawn graph of a pane: the price chart of a trading day with its volume band, or a formula pane of that
/// day. It owns no series: it paints what its data has rendered, puts the interactive layers on top, and turns
/// input into events. User-interface thread only.
class CRealtimeGraphWidget : public GZ::CBaseWidget, public IGraphWidget {
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
    void updateLinkageData(const QString &accounts, bool add);
    void updateLinkageData(const QList<QString> &accounts, bool add);
    /// Opens the smart keyboard for an overlay with an axis scale of its own.
    void superposedStock();
    /// Asks the host for the analysis of the instrument's sector.
    void showContrastSector();
    /// Opens the menu of the pane's title at a point of the screen: the formulas that can take the place of the present
    /// ones.
    void showTitleMenu(const QPoint &at);

    // View

    /// Takes the ranges to draw with; the user's drawings follow.
    void updateAxis(const IndexBaseData::MaxMinMap &ranges, bool overwrite);
    /// Renders the chart anew. The caller repaints.
    void updateView();
    /// Repaints what of the data has changed since the last call, and nothing else.
    void updateChanged();
    /// Drops the series of overlays and repaints.
    void updateOverlay();
    void beHistory(bool history);
    void beReplay(bool replay);
    void setCreateNewWorkShow(bool show);
    void setMouseIn(bool in);
    void setPairParamFunc(boost::function<void(QString)> func);
    /// Whether the mouse moves over this graph.
    bool isCrossActive() const;
    /// Whether a selection is under way. It is painted with the next repaint, which is the view's to ask for.
    bool isSelecting() const { return mLeftSelecting || mRightSelecting; }
    /// Row of the mouse in this graph, -1 unless it moves over it.
    int getMouseY() const;
    /// Moves the region lines to two axis indices.
    void setRegionLine(int startIndex, int endIndex);
    void setRegionLineHide();
    /// Shows the first formula of the pane with its values at the cross line and its hidden variables there, in a
    /// window. Nothing without a series, or without a formula.
    void viewVariable();

    /// Passes a finished drawing to the host, as event 3183.
    void onGraphFinished(void *notification) override;
    bool handleEvent(int event, int first, int second, QString text, void *payload) override;
    void onUiResourceChanged() override;

    /// An instrument picked in the smart keyboard, to be overlaid; `withAxis` on an axis scale of its own. One
    /// that is there already, or is the main one, changes nothing. The shortcuts "03" and "04" stand for an index.
    void overlayPickedStock(const CStockInfo &picked, ESmartKeyType type, bool withAxis);

public slots:
    // What the entries of the menus do. Those that need a formula, an account or a level take it from the entry that
    // sent them, and do nothing when there is none.

    /// Opens the editor of the pane's formula.
    void slotEditFormula();
    /// Takes all formulas but the main ones off the pane and asks to close it.
    void slotCloseFormula();
    void slotAddIndexWidget();
    void slotAddIndex();
    void slotDelIndex();
    /// Shows another formula in place of the present ones.
    void slotUpdateIndex();
    void slotOverlayStock();
    void slotOverlayNoAxisStock();
    /// Switches the setting that overlays the instrument's sector.
    void slotOverlaySector();
    void slotDelAllStock();
    void slotRefresh();
    void slotShowVolume();
    void slotShowGradient();
    /// Puts the text of all series on the clipboard.
    void slotCopy();
    void slotExportFormula();
    /// Shows the region lines and asks for the statistics of a region: its first index, and its text (end index,
    /// start and end in seconds since the epoch, joined by commas).
    void slotStatistic(bool checked, int startIndex, const QString &text);
    void slotCreateNewWork();
    void slotShowLinkageData();
    /// Shows the trades of all accounts of the instrument's kind, or of none when all were shown.
    void slotSelectAllAccount(bool checked);
    void slotSelectShowAccount(bool checked);
    /// Shows the parameters of the pane's last formula.
    void slotModifyModelParam();
    /// Adds the instrument to one of the user's lists; false when there is none.
    bool slotAddSelfStock();
    void slotContrastSector(bool checked);
    void slotShowAfterTradeFixedPriceDeal(bool checked);
    void slotRestoreGraph();
    void slotAutoChangePeriod();
    /// Overlays the counterpart of a share that is listed in two markets.
    void slotOverlayAHStock();
    /// Puts instrument, formulas and request ids on the clipboard.
    void slotCopyRequestInfo();
    /// Overlays the index of the instrument's sector of a level; with any of them overlaid it only goes.
    void slotAddBkzsCode();
    /// Overlays what the instrument converts to or from, or takes it away.
    void slotAddConvertibleCode();
    void slotAddVWAPFormula();
    /// Switches the filter of repeated instruments; only while the trade-data formula is shown.
    void slotFilterStock();
    void slotDownloadDatas();
    void slotShowControlDialog();
    /// Sets the range of the market replay to that of a region's text, which may have a key as its fourth field.
    void slotSetReplayTimeRegin(bool checked, int index, const QString &text);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    /// Looks for the trades under the mouse when a tip is due.
    bool event(QEvent *event) override;
    void enterEvent(QEvent *event) override;
    /// Ends whatever the mouse has under way.
    void leaveEvent(QEvent *event) override;
    /// Opens the menu of the pane, or that of a region that the right button has selected. With the right button still
    /// down, as some platforms tell it, the menu waits for its release.
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    /// What a paint needs of the theme and of the formulas, kept from paint to paint.
    struct PaintCache {
        int generation = -1; ///< of the theme
        QColor background;
        QColor leftBorder;
        QColor rightBorder;
        QList<QString> formulas;
        bool formulasKnown = false; ///< the flag below belongs to `formulas`
        bool groupModelOnly = false; ///< a group model among the formulas, and no script model
    };

    const PaintCache &paintCache();
    void paintGroupModelNotice(QPainter &painter);
    void paintSelections(QPainter &painter);
    void paintRegionLines(QPainter &painter);
    void paintTip(QPainter &painter);
    void paintEnhancement(QPainter &painter);

    GraphMenuSubject menuSubject();
    void addEntries(QMenu &menu, const GraphMenu &entries);
    /// The entries of the region that the right button has selected, which is over with it; false when it is too
    /// narrow.
    bool addRegion(QMenu &menu, const GraphMenu &entries);
    void openMenuAfterRelease(const QMouseEvent &release);

    void warnOfLimit();
    void openOverlayKeyboard(const QString &title, bool withAxis);
    /// The list of accounts shown of the instrument's kind.
    QList<QString> &shownAccounts();
    void tellShownAccounts();
    void growSelection(const QPoint &mouse);
    bool moveCrossLine(int x, bool on);
    void deliverLeftSelection();
    void dropTip();
    QString markAt(int x, int y) const;

    /// Pixel of this widget to (axis index, value), and back.
    QPointF toLogical(const QPointF &pixel) const;
    QPointF toPixel(const QPointF &logical) const;

    boost::shared_ptr<CRealtimeData> mData;
    boost::shared_ptr<CRealtimeUiParam> mUiParam;
    CViewVariableDialog *mVariableDialog = nullptr; ///< made on first use
    CModifyModelParamDialog *mModifyParamDialog = nullptr; ///< made on first use, child of this widget
    QVector<QAction *> mAccountActions; ///< of the last opened menu of accounts
    bool mAllAccountsSelected = false; ///< when that menu was built
    bool mMenuPostponed = false; ///< until the right button is released
    EIndexDisplayType mDisplayType;
    int mId;
    bool mShowTip = false;
    bool mMouseIn = false;
    int mMouseX = 0; ///< last mouse position, valid from the first move on
    int mMouseY = 0;
    EIndexViewType mViewType;
    bool mDragging = false; ///< a left drag with the cross line off
    int mDragStartX = -1;
    bool mLeftSelecting = false;
    bool mRightSelecting = false;
    bool mNormalContextMenu = true; ///< false when the next context menu is that of the region
    QPoint mLeftStart;
    QRect mLeftRect;
    QPoint mRightStart;
    QRect mRightRect;
    bool mCrossActive = false; ///< the cross line follows the mouse of this graph
    QString mStock; ///< key of the instrument
    boost::function<void(QString)> mPairParamFunc; ///< stored only
    QString mMenuStyle;
    bool mCreateNewWorkShow = true;
    int mRegionLeftX = 0;
    int mRegionRightX = 0;
    bool mRegionLinesVisible = false;
    bool mReplay = false;
    QList<boost::shared_ptr<kvservice::COrderDetail>> mOrderTips; ///< under the mouse
    QList<boost::shared_ptr<kvservice::CDealDetail>> mDealTips;
    bool mAHOverlay = false; ///< a paired view with automatic overlay
    bool mHistory = false; ///< shows a past day
    PaintCache mPaintCache;
};

} // namespace TC
