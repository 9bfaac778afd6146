#pragma once

#include "chartdata/ChangeFlags.h"
#include "host/Export.h"
#include "host/drawing/IndexBaseData.h"
#include "host/records/CFormulaParam.h"
#include "host/records/CInstrumentDetail.h"
#include "host/records/Enumerations.h"
#include "host/services/CFormulaManager.h"
#include "host/services/CLinkageManager.h"

#include <QList>
#include <QMap>
#include <QRect>
#include <QRegion>
#include <QString>
#include <QStringList>
#include <QVector>
#include <boost/enable_shared_from_this.hpp>
#include <boost/shared_ptr.hpp>

#include <memory>
#include <string>
#include <vector>

class QPainter;

namespace TC {

class CGraphAxisWidget;
class CRealtimeUiParam;
class HeldParts;
struct PaneParts;

/// The series of one graph pane: requests, results, value ranges and pre-rendered pixmaps. It conducts parts, of which
/// each owns one thing, see PaneParts.
///
/// Lock rule: whatever touches state holds mLock, through held(), from its first step to its last, drawing and events
/// included, parts are called under it and never lock, and services are asked for requests, or told that they are
/// withdrawn, without it.
///
/// Results may arrive on a thread of the service. Always held by boost::shared_ptr, and kept alive by the callbacks of
/// its requests until the service lets go of them.
class TIMESHARE_EXPORT CRealtimeData : public IndexBaseData,
                                       public boost::enable_shared_from_this<CRealtimeData> {
    Q_OBJECT
public:
    using SeriesMap = QMap<CFormulaKey, se::RPCFormulaResultCache>;

    /// `next` hears of new data.
    CRealtimeData(boost::shared_ptr<CRealtimeUiParam> uiParam, EIndexDisplayType displayType,
                  GZ::CEventDeliverer *next);
    ~CRealtimeData() override;

    // Formulas. Names are upper-cased.

    void addFormula(const QString &name);
    bool hasFormula(const QString &name) const;
    /// Formulas for which isMainGraph is false, in order.
    QList<QString> getSubFormulas() const;
    void removeFormula(const QString &name, bool redrawAfter);
    void removeAllFormulas();
    /// Withdraws, clears and leaves the main formulas and the new one. The caller requests again.
    void replaceSubFormula(const QString &name);
    /// A formula that replaces the main chart, or a main formula of the kind shown; one attached to it is neither.
    bool isMainGraph(const QString &formula) const override;
    /// The first formula of the main chart that is no volume formula; empty when there is none.
    QString getMainGraph() const override;

    // Requests

    void request(corvane::ERunMode mode);
    /// The same from the replay service.
    void requestReplay(corvane::ERunMode mode);
    /// Blocks until results are in, and stores them without drawing.
    void syncRequest(corvane::ERunMode mode);
    void unrequest();
    void unrequestOverlays();
    void removeOverlayData();
    void clearData();

    // Set-up

    /// The strip of this view whose ticks and ranges are drawn by, while it lives. May be null.
    void setAxisWidget(CGraphAxisWidget *axisWidget);
    /// Trading day shown, seconds since the epoch at its midnight; 0 takes that of the view model.
    void setTradeDate(int date);
    int getTradeDate() const override;
    void setDrawEnabled(bool enabled);
    void setReplayMode(bool replay);
    void setFillGaps(bool fill);

    // Results

    void onHistoryCallback(const FormulaMetaPtr &meta, const FormulaResultPtr &result, const QString &requestId,
                           int dataType, const QString &formula, bool keepRange);
    void onRealtimeCallback(int number, const QString &requestId, const FormulaInstantPtr &point);
    /// Takes a whole series in; answers EChangeFlag bits.
    int applyHistory(const FormulaMetaPtr &meta, const FormulaResultPtr &result, const QString &requestId,
                     int dataType, const QString &formula, bool keepRange);
    /// Merges one point; answers EChangeFlag bits.
    int doRealtimeCallback(int number, const QString &requestId, const FormulaInstantPtr &point);
    /// Takes in a series that the host pushes without a request; answers EChangeFlag bits.
    int applyPushedResult(const FormulaMetaPtr &meta, const FormulaResultPtr &result, const QString &formula);
    void minitermFormulaDataCallback(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                     const QString &stock, const QString &formula, int dataType);
    /// Brings an overlay series onto the points of the main series, from index `first` on.
    void alignOverlay(const CFormulaKey &key, int first);

    // Value range and scale

    /// Recomputes the wanted range of a series from index `first` on; true when a wanted range changed.
    bool updateMaxMin(const CFormulaKey &key, int first);
    /// Whether a wanted range has left the drawn one.
    bool isRangeOutgrown() const;
    /// Takes ranges to draw with; widens what is there unless `overwrite`.
    void adoptMaxMin(const MaxMinMap &ranges, bool overwrite);
    double valueAtIndex(int index) const;
    /// The price at an index, whether it is drawn or not; kUnsetValue when there is none.
    double priceAtIndex(int index) const;
    double valueAtY(int y, const QRect &rect, bool *valid) const;
    int yAtIndex(int index, const QRect &rect);
    int yOfValue(double value, const QRect &rect) const;
    /// Rows of the price chart inside a pane.
    int mainChartHeight(const QRect &rect) const;

    // Pixmaps

    void setChartRect(const QRect &rect);
    void drawChart(const QRect &rect);
    void drawLinkage(const QRect &rect);
    void redraw();
    void paintTo(QPainter *painter, const QRect &rect);
    /// The same of a part alone. The painter has no clip afterwards.
    void paintTo(QPainter *painter, const QRect &rect, const QRegion &part);
    /// The part of the pane, in its pixels, that changed on the screen since the last call: the columns of the
    /// newest points when only they moved, the whole pane otherwise, null when nothing did.
    QRect takeDirtyRect();
    /// The same without the rows of those columns in which nothing changed. Either call takes what the other would have.
    QRegion takeDirtyRegion();
    /// Whether paintTo leaves nothing of a pane of this size uncovered.
    bool covers(const QSize &size) const;
    /// Device pixels per pixel of the pane; the pixmaps are rendered at it. 1 until set.
    void setPixelRatio(double ratio);

    // Trade linkage

    void drawLinkageMarks(QPainter *painter, const QRect &rect);
    bool hitOrder(int x, int y) const;
    bool hitDeal(int x, int y) const;
    bool hitTask(int x, int y) const;
    bool getOrdersAt(int x, int y, QList<boost::shared_ptr<kvservice::COrderDetail>> &orders) const;
    bool getDealsAt(int x, int y, QList<boost::shared_ptr<kvservice::CDealDetail>> &deals) const;
    bool getTasksAt(int x, int y, QList<boost::shared_ptr<kvservice::CTaskDetail>> &tasks) const;

    /// The text of all series, for the export of a pane.
    QString getResultText() const;

    // Region figures

    /// What prices and volumes come to between two indices of the series, both included, as text: first, highest,
    /// lowest and last price, volume, change, mean price, amplitude, turnover, amount, change by the cached daily
    /// quotes. Empty without both series, or when `start` lies outside; `end` is brought back into the series.
    QStringList statisticRange(int &start, int &end) const;
    /// Asks the host for the chart of the main instrument.
    void showInstrumentChart();

private:
    /// The parts under the lock, for as long as the answer lives.
    HeldParts held() const;
    FormulaHistoryCallback historyCallback();
    FormulaRealtimeCallback realtimeCallback();
    /// Opens the requests of all formulas.
    QVector<CFormulaParam> openRequests(corvane::ERunMode mode);
    /// Takes in what other views have fetched already; the request under way replaces it later.
    void applyCached(const QVector<CFormulaParam> &params);
    void takeWithoutDrawing(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                            const CFormulaParam &param);
    void withdrawOverlays(const QVector<QString> &ids);
    /// The series that a delivery is for. A stale one is withdrawn.
    bool findSeries(CFormulaKey &key, const QString &requestId) const;
    void paint(QPainter &painter, const QRect &rect, const QRegion *part);
    void onLinkageChanged(const std::vector<std::string> &instruments);

    boost::shared_ptr<CRealtimeUiParam> mUiParam;
    const std::unique_ptr<PaneParts> mParts;
};

} // namespace TC
