#pragma once

#include "chartdata/ChartLook.h"
#include "chartdata/LinkageGeometry.h"
#include "host/drawing/IndexBaseData.h"
#include "host/records/CFormulaParam.h"
#include "host/records/CInstrumentDetail.h"
#include "host/records/Enumerations.h"
#include "host/services/CFormulaManager.h"
#include "host/services/CLinkageManager.h"

#include <QList>
#include <QMap>
#include <QPair>
#include <QPixmap>
#include <QRect>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTime>
#include <QVector>
#include <boost/enable_shared_from_this.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/signals2/connection.hpp>

#include <map>
#include <memory>
#include <string>
#include <vector>

class QPainter;

namespace TC {

class AxisScale;
class CGraphAxisWidget;
class CRealtimeUiParam;
class MarkPlacer;
struct LinkageScope;

/// What a result changed; combined by or.
enum EChangeFlag : int {
    eNothingChanged = 0,
    ePointChanged = 1, ///< a point changed in place
    eRangeChanged = 2, ///< the wanted value range changed, or was reset
    eSeriesChanged = 4, ///< replaced, a point gained or an older point changed: the pixmap is redrawn
};

/// The series of one graph pane: requests, results, value ranges and pre-rendered pixmaps.
///
/// Results may arrive on a thread of the service. One recursive mutex guards all state; host calls that
/// withdraw requests are made outside it. Always held by boost::shared_ptr, and kept alive by the callbacks of
/// its requests until the service lets go of them.
class CRealtimeData : public IndexBaseData, public boost::enable_shared_from_this<CRealtimeData> {
    Q_OBJECT
public:
    template <class Record>
    using Marks = std::map<int, std::map<int, std::map<std::string, boost::shared_ptr<Record>>>>; ///< x, y, key
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
    /// The first formula of the main chart that is no volume formula, else the basic formula.
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
    /// Whether paintTo leaves nothing of a pane of this size uncovered.
    bool covers(const QSize &size) const {
        boost::recursive_mutex::scoped_lock hold(mLock);
        return !mChartPixmap.isNull() && mChartRect.size() == size;
    }
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
    /// What a key is for this pane; worked out anew on every result.
    enum class ERole { Main, Overlay, Ordinary };

    /// Which lines of the series are drawn.
    enum class EBand { Both, Volume };
    /// One line as the walk over the series meets it.
    struct DrawnLine;

    double cachedChange(qint64 from, qint64 to, int count) const;
    ERole roleOf(const CFormulaKey &key) const;
    void buildRequestParams(QVector<CFormulaParam> &params, corvane::ERunMode mode);
    void buildFixedPriceParams(QVector<CFormulaParam> &params, corvane::ERunMode mode);
    /// One of the two above, as the view asks.
    QVector<CFormulaParam> buildParams(corvane::ERunMode mode);
    /// Calls `fill` for each series that this pane asks for, and registers those for which it answers true.
    template <class Fill> void buildEach(QVector<CFormulaParam> &params, corvane::ERunMode mode, Fill fill);
    QSet<CFormulaKey> wantedKeys() const;
    void applyCached(const QVector<CFormulaParam> &params);
    FormulaHistoryCallback historyCallback();
    FormulaRealtimeCallback realtimeCallback();
    QVector<QString> takeOverlayRequests();
    void withdrawOverlays(const QVector<QString> &ids);
    se::RPCFormulaResultCache makeEntry(const CFormulaKey &key, ERole role, const FormulaMetaPtr &meta,
                                        const FormulaResultPtr &result) const;
    /// Stores a series whole, in place of the one that its key has.
    void storeSeries(const CFormulaKey &key, ERole role, se::RPCFormulaResultCache &&entry);
    SeriesMap &seriesOf(ERole role);
    void publishDataCount(ERole role, std::size_t length);
    /// Aligns all overlays after the main series changed from `first` on; true when a wanted range changed. With
    /// `untilChanged` no further range is computed then.
    bool realignOverlays(int first, bool untilChanged);
    void forgetRange(const CFormulaKey &key);
    /// Tells the host the newest average price; null, or an empty line, is 0.
    void deliverAverage(const double *value);
    void logPoint(const se::RPCFormulaResult &series, const QString &requestId,
                  const se::RPCFormulaInstantResult &point) const;
    void onLinkageChanged(const std::vector<std::string> &instruments);
    /// Draws what has changed on other threads.
    void drawUntoldLinkage();
    void react(int flags, void *sender);
    void drawSeries(QPainter *painter, const QRect &rect, int start, int end, int total, EBand band);
    /// Brings the pixmaps up to date for a painter.
    void refreshPixmaps(const QPainter &painter);
    bool isLinkageShown() const;
    void drawTail(QPainter *painter, const QRect &rect);
    /// Remembers what EChangeFlag bits changed on the screen, for takeDirtyRect.
    void noteDamage(int flags);
    /// Remembers for noteDamage that a point of a held series has other contents now.
    void notePoint(const se::RPCFormulaResultCache &entry, std::size_t index);
    template <class Visit>
    void visitLines(const QRect &rect, int start, int end, EBand band, Visit visit) const;
    void drawLine(QPainter *painter, const DrawnLine &line, int total) const;
    bool isHiddenNetValue(const CFormulaKey &key, const se::RPCFormulaMetaResult &meta, int line) const;
    void drawGrid(QPainter &painter, const QSize &size) const;
    quint64 priceBandDigest(int end) const;
    int drawnPointCount() const;
    QRect tailRect() const;
    void makePixmaps();
    double baseOf(const CFormulaKey &key, const se::RPCFormulaResultCache &middleOf) const;
    bool updateJointRange(const CFormulaKey &key);
    bool updateSingleRange(const CFormulaKey &key);
    bool isForeign(const CFormulaKey &key) const;
    MaxMinMap axisRanges() const;
    QPair<double, double> priceRange() const;

    void forgetMarks();
    bool findLinkageReference(LinkageScope &scope) const;
    void drawSelectedData(QPainter &painter, const QRect &rect, MarkPlacer &placer, const LinkageScope &scope);
    void drawAccountView(QPainter &painter, MarkPlacer &placer, LinkageScope scope);
    double recordClose(const CInstrumentDetailPtr &detail, bool ofTradeDate) const;
    void drawOrderMarks(QPainter &painter, MarkPlacer &placer, const LinkageScope &scope);
    void drawDealMarks(QPainter &painter, MarkPlacer &placer, const LinkageScope &scope);
    void drawAccountDeals(QPainter &painter, MarkPlacer &placer, const LinkageScope &scope);
    int costStepEnd() const;
    void drawCostSteps(QPainter &painter, const MarkPlacer &placer);
    template <class IsShown>
    void drawTasks(QPainter &painter, MarkPlacer &placer, const LinkageScope &scope,
                   const std::string &instrument, IsShown isShown);
    void drawTaskMarks(QPainter &painter, MarkPlacer &placer, const LinkageScope &scope);
    void drawAccountTasks(QPainter &painter, MarkPlacer &placer, const LinkageScope &scope);
    void drawAmountCurves(QPainter &painter, const QRect &rect, const LinkageScope &scope);
    void drawTotalAmounts(QPainter &painter, const QRect &rect, const TimedAmounts &totals, int now) const;
    void drawNetAmount(QPainter &painter, const QRect &rect, const TimedAmounts &totals, int now) const;
    void drawProfitCurve(QPainter &painter, const QRect &rect, const LinkageScope &scope);
    void drawBalanceCurve(QPainter &painter, const QRect &rect, const LinkageScope &scope);
    void drawMinuteCurve(QPainter &painter, const QRect &rect, const TimedValues &values,
                         const CurveScale &scale, const QColor &color) const;
    TimedValues byIndex(const TimedValues &byMinute) const;
    template <class Value> TradingOrder<Value> inTradingOrder(const std::map<int, Value> &byMinute) const;

    boost::shared_ptr<CRealtimeUiParam> mUiParam;
    std::weak_ptr<const AxisScale> mAxis; ///< of the strip; null without one
    SeriesMap mOverlayData; ///< series of overlays, on their own time stamps
    MaxMinMap mDrawnMaxMin; ///< range each key was last drawn with
    bool mDrawEnabled = false;
    QRect mChartRect{0, 0, 0, 0};
    QPixmap mChartPixmap;
    QPixmap mLinkagePixmap;
    double mPixelRatio = 1.0; ///< device pixels per pixel of the pixmaps
    ChartLook mLook; ///< of the pixmaps
    int mDamage = 0; ///< EChangeFlag bits since the last takeDirtyRect
    QRect mTailOnScreen; ///< where the newest points were then
    int mTailCount = 0; ///< number of points of the view then
    int mDrawnEnd = -1; ///< last index in the chart pixmap
    quint64 mPriceBandDigest = 0; ///< of what its price band was drawn from; 0 when nothing is known
    bool mDrawnPointChanged = false; ///< a point in it has changed since it was drawn
    bool mChartStale = false; ///< it is drawn anew before it is shown
    qint32 mTradeDate = 0; ///< seconds since the epoch at midnight
    bool mIsLastTradingDay = false;
    QTime mReplayTime; ///< newest point during replay
    bool mReplayMode = false;
    bool mFillGaps = false;
    Marks<kvservice::CTaskDetail> mTaskMarks;
    Marks<kvservice::COrderDetail> mOrderMarks;
    Marks<kvservice::CDealDetail> mDealMarks;
    struct LinkageBond;
    std::shared_ptr<LinkageBond> mLinkageBond; ///< what the linkage signal holds of this object
    boost::signals2::connection mLinkageConnection;
};

} // namespace TC
