#include "chartdata/CRealtimeData.h"

#include "chartdata/ChartPicture.h"
#include "chartdata/LinkageListener.h"
#include "chartdata/PaneAxis.h"
#include "chartdata/PaneLog.h"
#include "chartdata/PanePixmap.h"
#include "chartdata/PaneRanges.h"
#include "chartdata/PaneSeries.h"
#include "chartdata/RegionText.h"
#include "chartdata/RequestBook.h"
#include "chartdata/ResultIntake.h"
#include "chartdata/SceneSource.h"
#include "chartdata/ShownDay.h"
#include "chartdata/TradeLayer.h"
#include "chartdata/ValueLookup.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/CMultiRequestDataManager.h"
#include "host/services/CReplayManager.h"
#include "host/toolkit/Events.h"
#include "host/toolkit/Text.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QPainter>

#include <algorithm>

namespace TC {
namespace {

constexpr int kPlainResult = 1; ///< data type of results that no callback brought
constexpr int kChartOne = 1; ///< arguments of eInstrumentChartAsked
constexpr int kChartPeriod = 60;

QString idOf(const CFormulaParam &param) {
    return GZ::sToQs(param.mRequestId);
}

} // namespace

/// What the data consist of. A part is given those that it needs, and knows nothing of the others.
struct CRealtimeData::Parts {
    explicit Parts(CRealtimeData &of)
        : log(&of, *of.mUiParam, of.mDisplayType),
          requests(*of.mUiParam, of.mDisplayType, of.mFormulas, of.mReq),
          series(*of.mUiParam, of.mDisplayType, of.mFormulas, day, of.mData),
          ranges(*of.mUiParam, of.mDisplayType, day, of.mData, of.mMaxMin),
          lookup(*of.mUiParam, of.mDisplayType, of.mData, axis, of.mMaxMin),
          scene(*of.mUiParam, of.mDisplayType, day, series, ranges, axis),
          picture(scene, *of.mUiParam, [&of] { of.tellReplayTime(); }), intake(series, ranges, picture),
          trades(*of.mUiParam, of.mDisplayType, day, lookup),
          changes([&of](const std::vector<std::string> &instruments) { of.onLinkageChanged(instruments); }) {}

    PaneLog log;
    ShownDay day;
    PaneAxis axis;
    RequestBook requests;
    PaneSeries series;
    PaneRanges ranges;
    ValueLookup lookup;
    SceneSource scene;
    ChartPicture picture;
    ResultIntake intake;
    TradeLayer trades;
    LinkageListener changes;
};

CRealtimeData::CRealtimeData(boost::shared_ptr<CRealtimeUiParam> uiParam, EIndexDisplayType displayType,
                             GZ::CEventDeliverer *next)
    : IndexBaseData(next, displayType), mUiParam(std::move(uiParam)), mParts(std::make_unique<Parts>(*this)) {}

CRealtimeData::~CRealtimeData() {
    retire();
    unrequest();
    mParts->changes.cut();
    clearData();
}

// Formulas

void CRealtimeData::addFormula(const QString &name) {
    const Hold hold(mLock);
    const QString upper = name.toUpper();
    if (!mFormulas.contains(upper)) {
        mFormulas.append(upper);
    }
}

bool CRealtimeData::hasFormula(const QString &name) const {
    const Hold hold(mLock);
    return mFormulas.contains(name.toUpper());
}

QList<QString> CRealtimeData::getSubFormulas() const {
    const Hold hold(mLock);
    QList<QString> found;
    for (const QString &name : mFormulas) {
        if (!isMainGraph(name)) {
            found.append(name);
        }
    }
    return found;
}

void CRealtimeData::removeFormula(const QString &name, bool redrawAfter) {
    const CFormulaDetailPtr formula = CSingletonT<CFormulaOperateManager>::instance().getFormula(name);
    const CFormulaKey key(mUiParam->getStock(), formula ? formula->mName : name.toUpper());
    QString requestId;
    {
        const Hold hold(mLock);
        mFormulas.removeAll(key.mFormula);
        requestId = mParts->requests.close(key);
    }
    if (!requestId.isEmpty()) {
        CSingletonT<CFormulaManager>::instance().unrequestFormula(requestId);
        QVector<QString> ids{requestId};
        CSingletonT<CReplayManager>::instance().deleteFormulas(ids);
    }
    const Hold hold(mLock);
    if (!mData.contains(key)) {
        return;
    }
    mParts->series.remove(key);
    mParts->ranges.forget(key);
    mParts->picture.noteDamage(eSeriesChanged);
    if (redrawAfter) {
        drawAll();
    }
}

void CRealtimeData::removeAllFormulas() {
    for (const QString &name : getFormulas()) {
        removeFormula(name, false);
    }
    const Hold hold(mLock);
    drawAll();
}

void CRealtimeData::replaceSubFormula(const QString &name) {
    unrequest();
    clearData();
    const Hold hold(mLock);
    const auto isNoMain = [this](const QString &formula) { return !mUiParam->isMainFormula(formula); };
    mFormulas.erase(std::remove_if(mFormulas.begin(), mFormulas.end(), isNoMain), mFormulas.end());
    addFormula(name);
}

bool CRealtimeData::isMainGraph(const QString &formula) const {
    const CFormulaDetailPtr detail = CSingletonT<CFormulaOperateManager>::instance().getFormula(formula);
    return (detail && detail->mType == eReplacingFormula) || mUiParam->isMainFormula(formula);
}

QString CRealtimeData::getMainGraph() const {
    const Hold hold(mLock);
    for (const QString &name : mFormulas) {
        if (isMainGraph(name) && !mUiParam->isVolFormula(name)) {
            return name;
        }
    }
    return mUiParam->getBasicFormula();
}

// Set-up

void CRealtimeData::clearData() {
    const Hold hold(mLock);
    mParts->series.clear();
    mParts->ranges.clear();
    mParts->picture.noteDamage(eSeriesChanged);
}

void CRealtimeData::setAxisWidget(CGraphAxisWidget *axisWidget) {
    const Hold hold(mLock);
    mParts->axis.set(mUiParam->mStripScales.of(axisWidget));
}

void CRealtimeData::setTradeDate(int date) {
    const Hold hold(mLock);
    mParts->day.set(date, *mUiParam);
}

int CRealtimeData::getTradeDate() const {
    const Hold hold(mLock);
    return mParts->day.date();
}

void CRealtimeData::setDrawEnabled(bool enabled) {
    const Hold hold(mLock);
    mDrawEnabled = enabled;
    redraw();
}

void CRealtimeData::setReplayMode(bool replay) {
    const Hold hold(mLock);
    mParts->day.setReplayed(replay);
}

void CRealtimeData::setFillGaps(bool fill) {
    const Hold hold(mLock);
    mParts->series.setFillsGaps(fill);
}

// Requests

QVector<CFormulaParam> CRealtimeData::openRequests(corvane::ERunMode mode) {
    const Hold hold(mLock);
    return mParts->requests.open(mParts->day.date(), mode);
}

// The callbacks copy the pointer that they hold: a request may be withdrawn, and its callbacks freed, from
// within.

FormulaHistoryCallback CRealtimeData::historyCallback() {
    return [self = shared_from_this()](const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                       const QString &requestId, int dataType, const QString &formula,
                                       bool keepRange) {
        const boost::shared_ptr<CRealtimeData> data = self;
        data->onHistoryCallback(meta, result, requestId, dataType, formula, keepRange);
    };
}

FormulaRealtimeCallback CRealtimeData::realtimeCallback() {
    return [self = shared_from_this()](int number, const QString &requestId, const FormulaInstantPtr &point) {
        const boost::shared_ptr<CRealtimeData> data = self;
        data->onRealtimeCallback(number, requestId, point);
    };
}

void CRealtimeData::applyCached(const QVector<CFormulaParam> &params) {
    auto &cache = CSingletonT<CMultiRequestDataManager>::instance();
    for (const CFormulaParam &param : params) {
        CFormulaKey key;
        FormulaMetaPtr meta;
        FormulaResultPtr result;
        if (mParts->requests.find(key, idOf(param)) &&
            cache.getFormulaHistoryData(key.mStock, key.mFormula, meta, result)) {
            mParts->picture.noteDamage(applyHistory(meta, result, idOf(param), kPlainResult, QString(), true));
        }
    }
}

void CRealtimeData::request(corvane::ERunMode mode) {
    QVector<CFormulaParam> params;
    {
        const Hold hold(mLock);
        params = openRequests(mode);
        mParts->log.requested(params);
        if (mDisplayType == EIndexDisplayType::Main) {
            applyCached(params);
        }
    }
    if (!params.isEmpty()) {
        CSingletonT<CFormulaManager>::instance().requestFormulas(params, historyCallback(), realtimeCallback());
    }
}

void CRealtimeData::requestReplay(corvane::ERunMode mode) {
    QVector<CFormulaParam> params = openRequests(mode);
    if (params.isEmpty()) {
        return;
    }
    mParts->log.replayRequested(params);
    CSingletonT<CReplayManager>::instance().requestFormulas(mUiParam->getStock(), params, historyCallback(),
                                                            realtimeCallback());
}

void CRealtimeData::syncRequest(corvane::ERunMode mode) {
    QVector<CFormulaParam> params = openRequests(mode);
    if (params.isEmpty()) {
        return;
    }
    std::vector<FormulaMetaPtr> metas;
    std::vector<FormulaResultPtr> results;
    CSingletonT<CFormulaManager>::instance().requestFormulasSync(params, metas, results);
    const std::size_t count = static_cast<std::size_t>(params.size());
    if (metas.size() != count || results.size() != count) {
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const QString id = idOf(params[static_cast<int>(i)]);
        const Hold hold(mLock);
        mParts->picture.noteDamage(applyHistory(metas[i], results[i], id, kPlainResult, QString(), true));
    }
}

// A service may be delivering into this object while requests are withdrawn.

void CRealtimeData::unrequest() {
    QVector<QString> ids;
    {
        const Hold hold(mLock);
        ids = mParts->requests.closeAll();
    }
    if (ids.isEmpty()) {
        return;
    }
    updateStrategyBacktestData(ids);
    mParts->log.withdrawn(ids);
    CSingletonT<CFormulaManager>::instance().unrequestFormulas(ids);
    CSingletonT<CReplayManager>::instance().deleteFormulas(ids);
}

void CRealtimeData::withdrawOverlays(const QVector<QString> &ids) {
    updateStrategyBacktestData(ids);
    CSingletonT<CFormulaManager>::instance().unrequestFormulas(ids);
}

void CRealtimeData::unrequestOverlays() {
    QVector<QString> ids;
    {
        const Hold hold(mLock);
        ids = mParts->requests.closeOverlays(getMainGraph());
    }
    withdrawOverlays(ids);
}

void CRealtimeData::removeOverlayData() {
    QVector<QString> ids;
    {
        const Hold hold(mLock);
        const QString formula = getMainGraph();
        ids = mParts->requests.closeOverlays(formula);
        mParts->series.removeOverlays(formula);
        mParts->picture.noteDamage(eSeriesChanged);
    }
    withdrawOverlays(ids);
    const Hold hold(mLock);
    drawAll();
}

// Results

bool CRealtimeData::findSeries(CFormulaKey &key, const QString &requestId) const {
    const bool found = mParts->requests.find(key, requestId);
    if (!found) {
        CSingletonT<CFormulaManager>::instance().unrequestFormula(requestId);
    }
    return found;
}

void CRealtimeData::deliverAverage(const std::optional<double> &value) {
    if (value) {
        deliverEvent(eLastValueChanged, 0, 0, QString::number(*value, 'g', 6),
                     static_cast<IndexBaseData *>(this));
    }
}

void CRealtimeData::react(int flags, void *sender) {
    if (flags == eNothingChanged) {
        return;
    }
    mParts->picture.noteDamage(flags);
    if ((flags & eRangeChanged) && isRangeOutgrown()) {
        deliverEvent(eRangeOutgrown, 0, 0, QString(), nullptr);
        return;
    }
    if (!mDrawEnabled) {
        return;
    }
    if (flags & (eRangeChanged | eSeriesChanged)) {
        drawAll();
    }
    deliverEvent(eDataChanged, 0, 0, QString(), sender);
}

void CRealtimeData::onHistoryCallback(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                      const QString &requestId, int dataType, const QString &formula,
                                      bool keepRange) {
    const Hold hold(mLock);
    mParts->log.history(meta, result, requestId, dataType);
    CFormulaKey key;
    if (mDisplayType == EIndexDisplayType::Main && result && !result->mTimes.empty() &&
        mParts->requests.find(key, requestId)) {
        CSingletonT<CMultiRequestDataManager>::instance().addFormulaHistoryData(key.mStock, key.mFormula, meta,
                                                                                result);
    }
    react(applyHistory(meta, result, requestId, dataType, formula, keepRange), nullptr);
}

int CRealtimeData::applyHistory(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                const QString &requestId, int, const QString &, bool keepRange) {
    const Hold hold(mLock);
    CFormulaKey key;
    if (!findSeries(key, requestId)) {
        return eNothingChanged;
    }
    const Intake intake = mParts->intake.history(key, meta, result, keepRange);
    deliverAverage(intake.average);
    return intake.flags;
}

int CRealtimeData::applyPushedResult(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                     const QString &formula) {
    const Hold hold(mLock);
    const Intake intake = mParts->intake.pushed(CFormulaKey(mUiParam->getStock(), formula), meta, result);
    deliverAverage(intake.average);
    return intake.flags;
}

void CRealtimeData::minitermFormulaDataCallback(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                                const QString &, const QString &formula, int) {
    const Hold hold(mLock);
    react(applyPushedResult(meta, result, formula), nullptr);
}

void CRealtimeData::onRealtimeCallback(int number, const QString &requestId, const FormulaInstantPtr &point) {
    const Hold hold(mLock);
    react(doRealtimeCallback(number, requestId, point), static_cast<IndexBaseData *>(this));
}

int CRealtimeData::doRealtimeCallback(int, const QString &requestId, const FormulaInstantPtr &point) {
    if (!point) {
        return eNothingChanged;
    }
    const Hold hold(mLock);
    CFormulaKey key;
    if (!findSeries(key, requestId)) {
        return eNothingChanged;
    }
    const auto series = mData.constFind(key);
    mParts->log.point(series == mData.constEnd() ? nullptr : &*series, requestId, *point);
    const Intake intake = mParts->intake.point(key, *point);
    deliverAverage(intake.average);
    return intake.flags;
}

void CRealtimeData::alignOverlay(const CFormulaKey &key, int first) {
    const Hold hold(mLock);
    mParts->intake.align(key, first);
}

// Value range and scale

bool CRealtimeData::updateMaxMin(const CFormulaKey &key, int first) {
    const Hold hold(mLock);
    return mParts->ranges.update(key, first, mParts->picture.rect());
}

bool CRealtimeData::isRangeOutgrown() const {
    const Hold hold(mLock);
    return mParts->ranges.isOutgrown();
}

void CRealtimeData::adoptMaxMin(const MaxMinMap &ranges, bool overwrite) {
    const Hold hold(mLock);
    if (mParts->ranges.adopt(ranges, overwrite)) {
        redraw();
    }
}

double CRealtimeData::valueAtIndex(int index) const {
    const Hold hold(mLock);
    return mParts->lookup.valueAtIndex(index, [this](const QString &formula) { return isMainGraph(formula); });
}

double CRealtimeData::valueAtY(int y, const QRect &rect, bool *valid) const {
    const Hold hold(mLock);
    return mParts->lookup.valueAtY(y, rect, valid);
}

int CRealtimeData::yAtIndex(int index, const QRect &rect) {
    const Hold hold(mLock);
    return mParts->lookup.yAtIndex(index, rect);
}

int CRealtimeData::yOfValue(double value, const QRect &rect) const {
    const Hold hold(mLock);
    return mParts->lookup.yOfValue(value, rect);
}

int CRealtimeData::mainChartHeight(const QRect &rect) const {
    return mParts->lookup.mainChartHeight(rect);
}

// Pixmaps

void CRealtimeData::makePixmaps() {
    mParts->picture.make(!mDrawEnabled);
    mParts->trades.make(mParts->picture.rect().size(), mParts->picture.ratio());
}

void CRealtimeData::setChartRect(const QRect &rect) {
    const Hold hold(mLock);
    mParts->picture.setRect(rect);
    if (rect.width() > 0 && rect.height() > 0) {
        makePixmaps();
    }
    redraw();
}

void CRealtimeData::setPixelRatio(double ratio) {
    const Hold hold(mLock);
    if (mParts->picture.setRatio(ratio)) {
        makePixmaps();
        redraw();
    }
}

void CRealtimeData::drawChart(const QRect &rect) {
    const Hold hold(mLock);
    mParts->picture.draw(rect);
}

void CRealtimeData::drawLinkage(const QRect &rect) {
    const Hold hold(mLock);
    const ChartPicture &picture = mParts->picture;
    if (mParts->trades.draw(rect, picture.rect().size(), picture.ratio())) {
        mParts->picture.noteDamage(eSeriesChanged);
    }
}

void CRealtimeData::drawAll() {
    const QRect rect = mParts->picture.rect();
    drawChart(rect);
    drawLinkage(rect);
}

void CRealtimeData::redraw() {
    const Hold hold(mLock);
    if (mDrawEnabled) {
        drawAll();
    }
}

void CRealtimeData::refreshPixmaps(const QPainter &painter) {
    if (!mDrawEnabled) {
        return;
    }
    const double ratio = evenRatio(painter);
    if (ratio > 0.0 && ratio != mParts->picture.ratio()) {
        setPixelRatio(ratio);
    } else if (mParts->picture.isStale()) {
        redraw();
    }
    const std::vector<std::string> instruments = mParts->changes.takeUntold();
    if (!instruments.empty()) {
        onLinkageChanged(instruments);
    }
}

void CRealtimeData::paint(QPainter *painter, const QRect &rect, const QRegion *part) {
    const Hold hold(mLock);
    refreshPixmaps(*painter);
    mParts->picture.paint(*painter, rect, part);
    mParts->trades.paint(*painter, mParts->picture.rect(), part);
}

void CRealtimeData::paintTo(QPainter *painter, const QRect &rect) {
    paint(painter, rect, nullptr);
}

void CRealtimeData::paintTo(QPainter *painter, const QRect &rect, const QRegion &part) {
    paint(painter, rect, &part);
}

QRect CRealtimeData::takeDirtyRect() {
    const Hold hold(mLock);
    return mParts->picture.takeDirtyRect();
}

bool CRealtimeData::covers(const QSize &size) const {
    const Hold hold(mLock);
    return mParts->picture.covers(size);
}

void CRealtimeData::tellReplayTime() {
    if (!mParts->day.isReplayed() || mData.isEmpty() || mData.last().result.mTimes.empty()) {
        return;
    }
    mParts->day.setReplayTime(mData.last().result.mTimes.back().first);
    deliverEvent(eRegionBoundMoved, eReplayTime, 0, QString(), &mParts->day.replayTime());
}

// Trade linkage

void CRealtimeData::onLinkageChanged(const std::vector<std::string> &instruments) {
    const Hold hold(mLock);
    const CInstrumentDetailPtr detail = mUiParam->getStockDetail();
    if (detail && std::count(instruments.begin(), instruments.end(), getDetailKey(detail)) > 0) {
        drawLinkage(mParts->picture.rect());
    }
}

void CRealtimeData::drawLinkageMarks(QPainter *painter, const QRect &rect) {
    const Hold hold(mLock);
    if (painter) {
        mParts->trades.drawMarks(*painter, rect);
    }
}

bool CRealtimeData::hitOrder(int x, int y) const {
    const Hold hold(mLock);
    return mParts->trades.hitOrder(x, y);
}

bool CRealtimeData::hitDeal(int x, int y) const {
    const Hold hold(mLock);
    return mParts->trades.hitDeal(x, y);
}

bool CRealtimeData::hitTask(int x, int y) const {
    const Hold hold(mLock);
    return mParts->trades.hitTask(x, y);
}

bool CRealtimeData::getOrdersAt(int x, int y, QList<boost::shared_ptr<kvservice::COrderDetail>> &orders) const {
    const Hold hold(mLock);
    return mParts->trades.getOrdersAt(x, y, orders);
}

bool CRealtimeData::getDealsAt(int x, int y, QList<boost::shared_ptr<kvservice::CDealDetail>> &deals) const {
    const Hold hold(mLock);
    return mParts->trades.getDealsAt(x, y, deals);
}

bool CRealtimeData::getTasksAt(int x, int y, QList<boost::shared_ptr<kvservice::CTaskDetail>> &tasks) const {
    const Hold hold(mLock);
    return mParts->trades.getTasksAt(x, y, tasks);
}

// What is told of the series

QString CRealtimeData::getResultText() const {
    const Hold hold(mLock);
    if (mData.isEmpty()) {
        return QString();
    }
    if (mData.size() == 1) {
        se::RPCFormulaResultCache entry = mData.first();
        return GZ::sToQs(getResultTxtStr(entry.result, entry.meta, true));
    }
    std::vector<se::RPCFormulaResult> results;
    std::vector<se::RPCFormulaMetaResult> metas;
    for (const se::RPCFormulaResultCache &entry : mData) {
        results.push_back(entry.result);
        metas.push_back(entry.meta);
    }
    return GZ::sToQs(getResultTxtStr(results, metas, true));
}

QStringList CRealtimeData::statisticRange(int &start, int &end) const {
    RegionSeries series;
    {
        const Hold hold(mLock);
        if (!findRegionSeries(mData, series)) {
            return {};
        }
    }
    return regionTexts(series, mUiParam->getStockDetail(), start, end);
}

void CRealtimeData::showInstrumentChart() {
    const CInstrumentDetailPtr detail = mUiParam->getStockDetail();
    deliverEvent(eInstrumentChartAsked, kChartOne, kChartPeriod,
                 getDetailQsCode(detail) + QLatin1Char('.') + getDetailQsMarket(detail), nullptr);
}

} // namespace TC
