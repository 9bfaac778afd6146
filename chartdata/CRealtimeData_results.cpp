// Results: whole series, pushed series, single points, and what follows from them.

#include "chartdata/CRealtimeData.h"

#include "chartdata/OverlayAlignment.h"
#include "chartdata/PointMerge.h"
#include "chartdata/RequestLog.h"
#include "host/services/CConfigService.h"
#include "host/services/CMultiRequestDataManager.h"
#include "host/toolkit/Text.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <boost/format.hpp>
#include <boost/thread/lock_guard.hpp>
#include <boost/thread/locks.hpp>

#include <algorithm>

namespace TC {
namespace {

using Hold = boost::lock_guard<boost::recursive_mutex>;

constexpr int kEventNewData = 3029;
constexpr int kEventAverage = 3072;
constexpr int kEventRangeOutgrown = 3151;
constexpr std::size_t kAverageLine = 1;
const char kSource[] = "CRealtimeData";

/// Last value of a line, or null.
const double *lastOf(const se::RPCFormulaResult &result, std::size_t line) {
    const bool has = line < result.mValues.size() && !result.mValues[line].empty();
    return has ? &result.mValues[line].back() : nullptr;
}

void withdraw(const QString &requestId) {
    CSingletonT<CFormulaManager>::instance().unrequestFormula(requestId);
}

int lastIndex(const se::RPCFormulaResult &result) {
    return std::max(static_cast<int>(result.mTimes.size()) - 1, 0);
}

template <class T> void setElement(std::vector<T> &list, std::size_t index, const T &value) {
    if (list.size() <= index) {
        list.resize(index + 1);
    }
    list[index] = value;
}

} // namespace

CRealtimeData::ERole CRealtimeData::roleOf(const CFormulaKey &key) const {
    if (mDisplayType != EIndexDisplayType::Main) {
        return ERole::Ordinary;
    }
    if (!mUiParam->isBasicFormula(key.mFormula) && mFormulas.contains(mUiParam->getBasicFormula())) {
        return ERole::Ordinary;
    }
    if (mUiParam->isMainStock(key.mStock)) {
        return ERole::Main;
    }
    return mUiParam->isOverlayStock(key.mStock) ? ERole::Overlay : ERole::Ordinary;
}

/// An overlay draws its first line in its own colour, and no second one.
se::RPCFormulaResultCache CRealtimeData::makeEntry(const CFormulaKey &key, ERole role,
                                                   const FormulaMetaPtr &meta,
                                                   const FormulaResultPtr &result) const {
    se::RPCFormulaResultCache entry;
    if (meta) {
        entry.meta = *meta;
    }
    if (result) {
        entry.result = *result;
    }
    if (role == ERole::Overlay) {
        setElement(entry.meta.mLineColors, 0, mUiParam->mStockColors.value(key.mStock, se::kDefaultColor));
        setElement(entry.meta.mLineFlags, 0, se::kLineFixedColor);
        if (entry.meta.mLineAxis.size() >= 2) {
            entry.meta.mLineAxis[1] = se::eLineHidden;
        }
    }
    return entry;
}

void CRealtimeData::storeSeries(const CFormulaKey &key, ERole role, se::RPCFormulaResultCache &&entry) {
    publishDataCount(role, entry.result.mTimes.size());
    seriesOf(role)[key] = std::move(entry);
}

CRealtimeData::SeriesMap &CRealtimeData::seriesOf(ERole role) {
    return role == ERole::Overlay ? mOverlayData : mData;
}

void CRealtimeData::publishDataCount(ERole role, std::size_t length) {
    if (role == ERole::Main && mIsLastTradingDay) {
        mUiParam->setDataCount(static_cast<int>(length));
    }
}

bool CRealtimeData::realignOverlays(int first, bool untilChanged) {
    bool changed = false;
    for (const CInstrumentDetailPtr &overlay : mUiParam->getAllAddStockList()) {
        const CFormulaKey key(getDetailQsKey(overlay), mUiParam->getBasicFormula());
        if (!mOverlayData.contains(key)) {
            continue;
        }
        alignOverlay(key, first);
        if (!(changed && untilChanged)) {
            changed = updateMaxMin(key, first) || changed;
        }
    }
    return changed;
}

void CRealtimeData::deliverAverage(const double *value) {
    const QString text = QString::number(value ? *value : 0.0, 'g', 6);
    deliverEvent(kEventAverage, 0, 0, text, static_cast<IndexBaseData *>(this));
}

void CRealtimeData::react(int flags, void *sender) {
    if (flags == eNothingChanged) {
        return;
    }
    noteDamage(flags);
    if ((flags & eRangeChanged) && isRangeOutgrown()) {
        deliverEvent(kEventRangeOutgrown, 0, 0, QString(), nullptr);
        return;
    }
    if (!mDrawEnabled) {
        return;
    }
    if (flags & (eRangeChanged | eSeriesChanged)) {
        drawChart(mChartRect);
        drawLinkage(mChartRect);
    }
    deliverEvent(kEventNewData, 0, 0, QString(), sender);
}

// Whole series

void CRealtimeData::onHistoryCallback(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                      const QString &requestId, int dataType, const QString &formula,
                                      bool keepRange) {
    const Hold hold(mLock);
    if (mDisplayType == EIndexDisplayType::Main) {
        const std::size_t names = meta ? meta->mLineNames.size() : 0;
        const std::size_t values = result && !result->mValues.empty() ? result->mValues[0].size() : 0;
        logTraffic(
            this, "TC::CRealtimeData::onHistoryCallback", kSource,
            boost::format("mainID:%1%, reqid = %2%, meta size = %3%, basic data size = %4%, dataType:%5%") %
                mUiParam->getMainPanelID() % requestId.toStdString() % names % values % dataType);
        CFormulaKey key;
        if (result && !result->mTimes.empty() && mReq.getKey(key, requestId)) {
            CSingletonT<CMultiRequestDataManager>::instance().addFormulaHistoryData(key.mStock, key.mFormula,
                                                                                    meta, result);
        }
    }
    react(applyHistory(meta, result, requestId, dataType, formula, keepRange), nullptr);
}

int CRealtimeData::applyHistory(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                const QString &requestId, int, const QString &, bool keepRange) {
    const Hold hold(mLock);
    CFormulaKey key;
    if (!mReq.getKey(key, requestId)) {
        withdraw(requestId);
        return eNothingChanged;
    }
    const ERole role = roleOf(key);
    storeSeries(key, role, makeEntry(key, role, meta, result));
    int flags = eSeriesChanged;
    if (role == ERole::Overlay) {
        alignOverlay(key, 0);
    }
    if (role == ERole::Main && realignOverlays(0, false)) {
        flags |= eRangeChanged;
    }
    if (!keepRange && role != ERole::Overlay) {
        forgetRange(key);
        flags |= eRangeChanged;
    }
    if (updateMaxMin(key, 0)) {
        flags |= eRangeChanged;
    }
    if (role == ERole::Main) {
        deliverAverage(result ? lastOf(*result, kAverageLine) : nullptr);
    }
    return flags;
}

void CRealtimeData::alignOverlay(const CFormulaKey &key, int first) {
    const Hold hold(mLock);
    const auto overlay = mOverlayData.constFind(key);
    if (overlay == mOverlayData.constEnd()) {
        return;
    }
    mData.detach(); // an iterator stays good while an entry is added
    const auto isMain = [this](const CFormulaKey &candidate) {
        return mUiParam->isMainStock(candidate.mStock) && mUiParam->isBasicFormula(candidate.mFormula);
    };
    auto main = mData.constBegin();
    while (main != mData.constEnd() && !isMain(main.key())) {
        ++main;
    }
    const std::size_t from = static_cast<std::size_t>(std::max(first, 0));
    if (main == mData.constEnd() || from >= main->result.mTimes.size() ||
        from >= overlay->result.mTimes.size()) {
        return;
    }
    if (mFillGaps) {
        mData[key] = *overlay; // gaps are filled when it is drawn
        return;
    }
    auto aligned = mData.find(key);
    if (aligned == mData.end()) {
        aligned = mData.insert(key, se::RPCFormulaResultCache());
        aligned->meta = overlay->meta;
    }
    if (!hasShapeOf(aligned->result, main->result)) {
        shapeLike(aligned->result, main->result);
    }
    const std::size_t changed = alignValues(aligned->result, main->result, overlay->result, from);
    if (changed < main->result.mTimes.size()) {
        notePoint(*aligned, changed);
    }
}

// Pushed series

int CRealtimeData::applyPushedResult(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                     const QString &formula) {
    const Hold hold(mLock);
    const CFormulaKey key(mUiParam->getStock(), formula);
    const ERole role = roleOf(key);
    SeriesMap &series = seriesOf(role);
    const auto found = series.find(key);
    const bool merged = found != series.end() && result && !result->mTimes.empty();
    int flags = eSeriesChanged;
    int first = 0;
    if (merged) {
        const EPointParts parts = role == ERole::Overlay ? EPointParts::Values : EPointParts::Everything;
        if (mergeLastPoint(found->result, *result, parts) == EPushOutcome::Nothing) {
            flags = eNothingChanged;
        }
        publishDataCount(role, found->result.mTimes.size());
        first = lastIndex(found->result);
    } else {
        storeSeries(key, role, makeEntry(key, role, meta, result));
    }
    if (role == ERole::Overlay) {
        alignOverlay(key, first);
    }
    if (role == ERole::Main && realignOverlays(first, false)) {
        flags |= eRangeChanged;
    }
    if (!merged && role != ERole::Overlay) {
        forgetRange(key);
        flags |= eRangeChanged;
    }
    if (updateMaxMin(key, first)) {
        flags |= eRangeChanged;
    }
    if (role == ERole::Main) {
        deliverAverage(lastOf(mData[key].result, kAverageLine));
    }
    return flags;
}

void CRealtimeData::minitermFormulaDataCallback(const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                                                const QString &, const QString &formula, int) {
    const Hold hold(mLock);
    react(applyPushedResult(meta, result, formula), nullptr);
}

// Single points

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
    if (!mReq.getKey(key, requestId)) {
        withdraw(requestId);
        return eNothingChanged;
    }
    const ERole role = roleOf(key);
    SeriesMap &series = seriesOf(role);
    const auto found = series.find(key);
    if (found == series.end()) {
        return eNothingChanged; // no point can start a series
    }
    se::RPCFormulaResult &stored = found->result;
    logPoint(stored, requestId, *point);
    const PointPlace place = findPlace(stored.mTimes, point->mTime);
    if (place.kind == EPointPlace::None) {
        return eNothingChanged;
    }
    const bool overlay = role == ERole::Overlay;
    const EPointParts parts = overlay ? EPointParts::Values : EPointParts::Everything;
    const bool shown = !overlay || mFillGaps; // an overlay is shown as it is, or as it is aligned
    if (storePoint(stored, place, *point, parts) && shown) {
        notePoint(*found, place.index);
    }
    int flags = ePointChanged;
    if (place.kind == EPointPlace::New || (place.kind == EPointPlace::Older && !overlay)) {
        flags |= eSeriesChanged;
    }
    const int first = overlay ? lastIndex(stored) : static_cast<int>(place.index);
    if (overlay) {
        alignOverlay(key, first);
    }
    publishDataCount(role, stored.mTimes.size());
    if (role == ERole::Main && realignOverlays(first, true)) {
        flags |= eRangeChanged;
    }
    if (!(flags & eRangeChanged) && updateMaxMin(key, first)) {
        flags |= eRangeChanged;
    }
    if (role == ERole::Main) {
        deliverAverage(point->mValues.size() > kAverageLine ? &point->mValues[kAverageLine] : nullptr);
    }
    return flags;
}

/// Sub panes are logged point by point, when the program is set to.
void CRealtimeData::logPoint(const se::RPCFormulaResult &series, const QString &requestId,
                             const se::RPCFormulaInstantResult &point) const {
    if (mDisplayType != EIndexDisplayType::Sub || series.mTimes.empty()) {
        return;
    }
    const CConfig *config = getConfig();
    if (config && config->debugLog()) {
        logTraffic(this, "TC::CRealtimeData::doRealtimeCallback", kSource,
                   boost::format("mainID:%1%, qsReqId:%2%, lasttime:%3%, newtime:%4%") %
                       mUiParam->getMainPanelID() % requestId.toStdString() %
                       utils::millisecondsToTime(series.mTimes.back().first) %
                       utils::millisecondsToTime(point.mTime.first));
    }
}

} // namespace TC
