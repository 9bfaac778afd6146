#include "chartdata/CRealtimeData.h"

#include "chartdata/PaneParts.h"
#include "chartdata/RegionText.h"
#include "chartdata/SeriesText.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/CMultiRequestDataManager.h"
#include "host/toolkit/Text.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <algorithm>

namespace TC {
namespace {

constexpr int kPlainResult = 1; ///< data type of results that no callback brought

QString idOf(const CFormulaParam &param) {
    return GZ::sToQs(param.mRequestId);
}

} // namespace

CRealtimeData::CRealtimeData(boost::shared_ptr<CRealtimeUiParam> uiParam, EIndexDisplayType displayType,
                             GZ::CEventDeliverer *next)
    : IndexBaseData(next, displayType, uiParam->services()), mUiParam(std::move(uiParam)),
      mParts(std::make_unique<PaneParts>(
          PaneOwner{*this, *mUiParam, displayType, mFormulas, mReq, mData, mMaxMin,
                    [this](const QString &name) { return isMainGraph(name); },
                    [this](const std::vector<std::string> &instruments) { onLinkageChanged(instruments); }})) {}

CRealtimeData::~CRealtimeData() {
    retire();
    unrequest();
    mParts->changes.cut();
    clearData();
}

HeldParts CRealtimeData::held() const {
    return HeldParts(mLock, *mParts);
}

// Formulas

void CRealtimeData::addFormula(const QString &name) {
    held()->formulas.add(name);
}

bool CRealtimeData::hasFormula(const QString &name) const {
    return held()->formulas.has(name);
}

QList<QString> CRealtimeData::getSubFormulas() const {
    return held()->formulas.sub();
}

void CRealtimeData::removeFormula(const QString &name, bool redrawAfter) {
    const CFormulaDetailPtr formula = mUiParam->service<CFormulaOperateManager>().getFormula(name);
    const CFormulaKey key(mUiParam->getStock(), formula ? formula->mName : name.toUpper());
    QString requestId;
    {
        const HeldParts parts = held();
        parts->formulas.remove(key.mFormula);
        requestId = parts->requests.close(key);
    }
    mParts->traffic.withdrawOne(requestId);
    const HeldParts parts = held();
    if (!mData.contains(key)) {
        return;
    }
    parts->forget(key);
    if (redrawAfter) {
        parts->drawing.redraw();
    }
}

void CRealtimeData::removeAllFormulas() {
    for (const QString &name : getFormulas()) {
        removeFormula(name, false);
    }
    redraw();
}

void CRealtimeData::replaceSubFormula(const QString &name) {
    unrequest();
    clearData();
    held()->formulas.replace(name);
}

bool CRealtimeData::isMainGraph(const QString &formula) const {
    const CFormulaDetailPtr detail = mUiParam->service<CFormulaOperateManager>().getFormula(formula);
    return (detail && detail->mType == eReplacingFormula) || mUiParam->isMainFormula(formula);
}

QString CRealtimeData::getMainGraph() const {
    return held()->formulas.mainGraph();
}

// Set-up

void CRealtimeData::clearData() {
    held()->clear();
}

void CRealtimeData::setAxisWidget(CGraphAxisWidget *axisWidget) {
    held()->axis.set(mUiParam->mStripScales.of(axisWidget));
}

void CRealtimeData::setTradeDate(int date) {
    held()->day.set(date, *mUiParam);
}

int CRealtimeData::getTradeDate() const {
    return held()->day.date();
}

void CRealtimeData::setDrawEnabled(bool enabled) {
    held()->drawing.setEnabled(enabled);
}

void CRealtimeData::setReplayMode(bool replay) {
    held()->day.setReplayed(replay);
}

void CRealtimeData::setFillGaps(bool fill) {
    held()->series.setFillsGaps(fill);
}

// Requests

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

QVector<CFormulaParam> CRealtimeData::openRequests(corvane::ERunMode mode) {
    const HeldParts parts = held();
    return parts->requests.open(parts->day.date(), mode);
}

void CRealtimeData::applyCached(const QVector<CFormulaParam> &params) {
    auto &cache = mUiParam->service<CMultiRequestDataManager>();
    for (const CFormulaParam &param : params) {
        CFormulaKey key;
        FormulaMetaPtr meta;
        FormulaResultPtr result;
        if (mReq.getKey(key, idOf(param)) &&
            cache.getFormulaHistoryData(key.mStock, key.mFormula, meta, result)) {
            takeWithoutDrawing(meta, result, param);
        }
    }
}

void CRealtimeData::takeWithoutDrawing(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                       const CFormulaParam &param) {
    held()->picture.noteDamage(applyHistory(meta, result, idOf(param), kPlainResult, QString(), true));
}

void CRealtimeData::request(corvane::ERunMode mode) {
    QVector<CFormulaParam> params;
    {
        const HeldParts parts = held();
        params = openRequests(mode);
        parts->log.requested(params);
        if (mDisplayType == EIndexDisplayType::Main) {
            applyCached(params);
        }
    }
    if (!params.isEmpty()) {
        mParts->traffic.send(params, historyCallback(), realtimeCallback());
    }
}

void CRealtimeData::requestReplay(corvane::ERunMode mode) {
    QVector<CFormulaParam> params = openRequests(mode);
    if (!params.isEmpty()) {
        mParts->traffic.sendToReplay(params, historyCallback(), realtimeCallback());
    }
}

void CRealtimeData::syncRequest(corvane::ERunMode mode) {
    QVector<CFormulaParam> params = openRequests(mode);
    std::vector<FormulaMetaPtr> metas;
    std::vector<FormulaResultPtr> results;
    if (mParts->traffic.fetch(params, metas, results)) {
        for (int i = 0; i < params.size(); ++i) {
            const auto at = static_cast<std::size_t>(i);
            takeWithoutDrawing(metas[at], results[at], params[i]);
        }
    }
}

void CRealtimeData::unrequest() {
    const QVector<QString> ids = held()->requests.closeAll();
    updateStrategyBacktestData(ids);
    mParts->traffic.withdraw(ids);
}

void CRealtimeData::withdrawOverlays(const QVector<QString> &ids) {
    updateStrategyBacktestData(ids);
    mParts->traffic.withdrawOverlays(ids);
}

void CRealtimeData::unrequestOverlays() {
    const QVector<QString> ids = held()->requests.closeOverlays(getMainGraph());
    withdrawOverlays(ids);
}

void CRealtimeData::removeOverlayData() {
    QVector<QString> ids;
    {
        const HeldParts parts = held();
        const QString formula = getMainGraph();
        ids = parts->requests.closeOverlays(formula);
        parts->forgetOverlays(formula);
    }
    withdrawOverlays(ids);
    redraw();
}

// Results

bool CRealtimeData::findSeries(CFormulaKey &key, const QString &requestId) const {
    const bool found = mReq.getKey(key, requestId);
    if (!found) {
        mUiParam->service<CFormulaManager>().unrequestFormula(requestId);
    }
    return found;
}

void CRealtimeData::onHistoryCallback(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                      const QString &requestId, int dataType, const QString &formula,
                                      bool keepRange) {
    const HeldParts parts = held();
    parts->log.history(meta, result, requestId, dataType);
    CFormulaKey key;
    if (mDisplayType == EIndexDisplayType::Main && result && !result->mTimes.empty() &&
        mReq.getKey(key, requestId)) {
        mUiParam->service<CMultiRequestDataManager>().addFormulaHistoryData(key.mStock, key.mFormula, meta,
                                                                            result);
    }
    parts->news.react(applyHistory(meta, result, requestId, dataType, formula, keepRange), nullptr);
}

int CRealtimeData::applyHistory(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                const QString &requestId, int, const QString &, bool keepRange) {
    const HeldParts parts = held();
    CFormulaKey key;
    if (!findSeries(key, requestId)) {
        return eNothingChanged;
    }
    parts->warnings.history(key, requestId, meta.get(), result.get());
    return parts->news.tellAverage(parts->intake.history(key, meta, result, keepRange));
}

int CRealtimeData::applyPushedResult(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                     const QString &formula) {
    const HeldParts parts = held();
    return parts->news.tellAverage(
        parts->intake.pushed(CFormulaKey(mUiParam->getStock(), formula), meta, result));
}

void CRealtimeData::minitermFormulaDataCallback(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                                const QString &, const QString &formula, int) {
    held()->news.react(applyPushedResult(meta, result, formula), nullptr);
}

void CRealtimeData::onRealtimeCallback(int number, const QString &requestId, const FormulaInstantPtr &point) {
    held()->news.reactToPoint(doRealtimeCallback(number, requestId, point), static_cast<IndexBaseData *>(this));
}

int CRealtimeData::doRealtimeCallback(int, const QString &requestId, const FormulaInstantPtr &point) {
    const HeldParts parts = held();
    CFormulaKey key;
    if (!point || !findSeries(key, requestId)) {
        return eNothingChanged;
    }
    parts->note(key, requestId, *point);
    return parts->news.tellAverage(parts->intake.point(key, *point));
}

void CRealtimeData::alignOverlay(const CFormulaKey &key, int first) {
    held()->intake.align(key, first);
}

// Value range and scale

bool CRealtimeData::updateMaxMin(const CFormulaKey &key, int first) {
    const HeldParts parts = held();
    return parts->ranges.update(key, first, parts->picture.rect());
}

bool CRealtimeData::isRangeOutgrown() const {
    return held()->ranges.isOutgrown();
}

void CRealtimeData::adoptMaxMin(const MaxMinMap &ranges, bool overwrite) {
    const HeldParts parts = held();
    if (parts->ranges.adopt(ranges, overwrite)) {
        redraw();
    }
}

double CRealtimeData::valueAtIndex(int index) const {
    return held()->lookup.valueAtIndex(index, [this](const QString &formula) { return isMainGraph(formula); });
}

double CRealtimeData::priceAtIndex(int index) const {
    return held()->lookup.priceAtIndex(index);
}

double CRealtimeData::valueAtY(int y, const QRect &rect, bool *valid) const {
    return held()->lookup.valueAtY(y, rect, valid);
}

int CRealtimeData::yAtIndex(int index, const QRect &rect) {
    return held()->lookup.yAtIndex(index, rect);
}

int CRealtimeData::yOfValue(double value, const QRect &rect) const {
    return held()->lookup.yOfValue(value, rect);
}

int CRealtimeData::mainChartHeight(const QRect &rect) const {
    return held()->lookup.mainChartHeight(rect);
}

// Pixmaps

void CRealtimeData::setChartRect(const QRect &rect) {
    held()->drawing.setRect(rect);
}

void CRealtimeData::setPixelRatio(double ratio) {
    held()->drawing.setRatio(ratio);
}

void CRealtimeData::drawChart(const QRect &rect) {
    held()->picture.draw(rect);
}

void CRealtimeData::drawLinkage(const QRect &rect) {
    held()->drawing.drawTrades(rect);
}

void CRealtimeData::redraw() {
    held()->drawing.redraw();
}

void CRealtimeData::paint(QPainter &painter, const QRect &rect, const QRegion *part) {
    const HeldParts parts = held();
    parts->drawing.refresh(painter);
    if (parts->drawing.isEnabled()) {
        onLinkageChanged(parts->changes.takeUntold()); // what has changed on other threads
    }
    parts->drawing.paint(painter, rect, part);
}

void CRealtimeData::paintTo(QPainter *painter, const QRect &rect) {
    paint(*painter, rect, nullptr);
}

void CRealtimeData::paintTo(QPainter *painter, const QRect &rect, const QRegion &part) {
    paint(*painter, rect, &part);
}

QRect CRealtimeData::takeDirtyRect() {
    return held()->picture.takeDirtyRect();
}

QRegion CRealtimeData::takeDirtyRegion() {
    return held()->picture.takeDirtyRegion();
}

bool CRealtimeData::covers(const QSize &size) const {
    return held()->picture.covers(size);
}

// Trade linkage

void CRealtimeData::onLinkageChanged(const std::vector<std::string> &instruments) {
    const HeldParts parts = held();
    const CInstrumentDetailPtr detail = instruments.empty() ? nullptr : mUiParam->getStockDetail();
    if (detail && std::count(instruments.begin(), instruments.end(), getDetailKey(detail)) > 0) {
        parts->drawing.redrawTrades();
    }
}

void CRealtimeData::drawLinkageMarks(QPainter *painter, const QRect &rect) {
    if (painter) {
        held()->trades.drawMarks(*painter, rect);
    }
}

bool CRealtimeData::hitOrder(int x, int y) const {
    return held()->trades.hitOrder(x, y);
}

bool CRealtimeData::hitDeal(int x, int y) const {
    return held()->trades.hitDeal(x, y);
}

bool CRealtimeData::hitTask(int x, int y) const {
    return held()->trades.hitTask(x, y);
}

bool CRealtimeData::getOrdersAt(int x, int y, QList<boost::shared_ptr<kvservice::COrderDetail>> &orders) const {
    return held()->trades.getOrdersAt(x, y, orders);
}

bool CRealtimeData::getDealsAt(int x, int y, QList<boost::shared_ptr<kvservice::CDealDetail>> &deals) const {
    return held()->trades.getDealsAt(x, y, deals);
}

bool CRealtimeData::getTasksAt(int x, int y, QList<boost::shared_ptr<kvservice::CTaskDetail>> &tasks) const {
    return held()->trades.getTasksAt(x, y, tasks);
}

QString CRealtimeData::getResultText() const {
    const HeldParts parts = held();
    return seriesText(mData);
}

QStringList CRealtimeData::statisticRange(int &start, int &end) const {
    RegionSeries series;
    readData([&series](const SeriesMap &data) { series = regionSeries(data); });
    return regionTexts(series, mUiParam->getStockDetail(), start, end, mUiParam->services());
}

void CRealtimeData::showInstrumentChart() {
    mParts->news.askForChart(mUiParam->getStockDetail());
}

} // namespace TC
