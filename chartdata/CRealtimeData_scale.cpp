// Value ranges and the mapping between values, indices and pixel rows.

#include "chartdata/CRealtimeData.h"
#include "chartdata/ChartLayout.h"
#include "chartdata/LinkageScope.h"
#include "chartdata/ValueRange.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/CStockManager.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <algorithm>
#include <cmath>

namespace TC {
namespace {

constexpr int kReplacesMainChart = 2; ///< CFormulaDetail::mType
constexpr double kSmallestHalf = 0.01;

Extremes extremesOf(const se::RPCFormulaResultCache &entry) {
    return {entry.max, entry.min};
}

/// The close of an overlay. On a live day the view parameters know none; then the catalogue is asked.
double overlayBase(const CRealtimeUiParam &uiParam, const QString &stock, int tradeDate) {
    const double base = uiParam.getLastClose(stock);
    if (base != 0.0) {
        return base;
    }
    const double listed = CSingletonT<CStockManager>::instance().getCurrentDateLastClose(stock, tradeDate);
    return isUsable(listed) ? listed : base;
}

} // namespace

bool CRealtimeData::updateMaxMin(const CFormulaKey &key, int first) {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    const auto found = mData.find(key);
    if (found == mData.end()) {
        return false;
    }
    se::RPCFormulaResultCache &entry = *found;
    const bool mainPane = mDisplayType == EIndexDisplayType::Main;
    const bool prices = key.mFormula.compare(QLatin1String("REALTIME"), Qt::CaseInsensitive) == 0;
    Extremes seen;
    const bool any = CDrawStyle::calcMaxMin(seen.max, seen.min, first, mUiParam->mPointCount, entry, mChartRect,
                                            true, false, 1.0f, prices);
    if (!any && mainPane && !mUiParam->isMainFormula(key.mFormula)) {
        return false;
    }
    if (!isUsable(seen.max) || !isUsable(seen.min)) {
        return false;
    }
    const bool volume = mUiParam->isVolFormula(key.mFormula);
    if (volume) {
        seen.min = 0.0;
    }
    if (!widen(entry.max, entry.min, seen)) {
        return false;
    }
    if (!mainPane || volume) {
        return storeRange(mMaxMin, key, {entry.max, entry.min});
    }
    const bool single =
        mUiParam->getAllAddStockList().isEmpty() && !(mUiParam->mLinkageFlags & eSelectedDataView);
    return single ? updateSingleRange(key) : updateJointRange(key);
}

/// What percentages of a series are counted from; unset for a series that is neither the main instrument's nor an
/// overlay's. `middleOf` gives the extremes of a portfolio.
double CRealtimeData::baseOf(const CFormulaKey &key, const se::RPCFormulaResultCache &middleOf) const {
    if (!mUiParam->isMainStock(key.mStock)) {
        return mUiParam->isOverlayStock(key.mStock) ? overlayBase(*mUiParam, key.mStock, mTradeDate)
                                                    : kUnsetValue;
    }
    switch (mUiParam->mStockKind) {
    case 0: {
        const CInstrumentDetailPtr detail = mUiParam->getStockDetail();
        return detail ? CSingletonT<CStockManager>::instance().getCurrentDateLastClose(detail, mTradeDate)
                      : kUnsetValue;
    }
    case 1:
        return mUiParam->getLastClose();
    case 2:
        return extremesOf(middleOf).isSet() ? (middleOf.max + middleOf.min) * 0.5 : kUnsetValue;
    default:
        return kUnsetValue;
    }
}

/// Several instruments, or marks that carry prices of their own: every series gets the same percentages.
bool CRealtimeData::updateJointRange(const CFormulaKey &key) {
    double amp = 0.0;
    double ampFree = 0.0;
    if (mUiParam->mLinkageFlags & eSelectedDataView) {
        CLinkageManager &linkage = CSingletonT<CLinkageManager>::instance();
        const auto take = [&](bool shown, double found) {
            if (shown && isUsable(found)) {
                amp = std::max(amp, found);
            }
        };
        const auto &stocks = mUiParam->mLinkageStocks;
        const auto &accounts = mUiParam->mLinkageAccounts;
        const bool orders = mUiParam->mLinkageShow[0];
        const bool deals = mUiParam->mLinkageShow[1];
        take(orders, orders ? linkage.getOrderAmplitude(stocks, accounts) : 0.0);
        take(deals, deals ? linkage.getDealAmplitude(stocks, accounts) : 0.0);
    }
    const auto target = [&](const CFormulaKey &of) -> double & {
        const bool free = !mUiParam->isMainStock(of.mStock) && mUiParam->isNoAxisOverlayStock(of.mStock);
        return free ? ampFree : amp;
    };
    for (auto entry = mData.constBegin(); entry != mData.constEnd(); ++entry) {
        if (!mUiParam->isVolFormula(entry.key().mFormula) && extremesOf(*entry).isSet()) {
            gatherAmplitude(target(entry.key()), extremesOf(*entry), baseOf(entry.key(), *entry));
        }
    }
    const auto updated = mData.constFind(key);
    bool stored = false;
    for (auto entry = mData.constBegin(); entry != mData.constEnd(); ++entry) {
        const double distance = target(entry.key());
        if (mUiParam->isVolFormula(entry.key().mFormula) || isZero(distance)) {
            continue;
        }
        const double base = baseOf(entry.key(), *updated);
        if (isUsable(base)) {
            stored |= storeRange(mMaxMin, entry.key(), amplitudeRange(base, distance));
        }
    }
    return stored;
}

/// One instrument: the same range around its base for all its series.
bool CRealtimeData::updateSingleRange(const CFormulaKey &key) {
    const se::RPCFormulaResultCache &updated = *mData.constFind(key);
    Extremes all = extremesOf(updated);
    for (auto entry = mData.constBegin(); entry != mData.constEnd(); ++entry) {
        if (!mUiParam->isVolFormula(entry.key().mFormula) && extremesOf(*entry).isSet()) {
            all.max = std::max(all.max, entry->max);
            all.min = std::min(all.min, entry->min);
        }
    }
    double base = kUnsetValue;
    double minHalf = kSmallestHalf;
    const CFormulaDetailPtr formula = CSingletonT<CFormulaOperateManager>::instance().getFormula(key.mFormula);
    const bool replaces =
        formula && formula->mType == kReplacesMainChart && !mUiParam->isBasicFormula(key.mFormula);
    if (replaces || mUiParam->mStockKind == 2) {
        base = (all.max + all.min) * 0.5;
    } else if (mUiParam->mStockKind == 1) {
        base = mUiParam->getLastClose();
    } else if (const CInstrumentDetailPtr detail = mUiParam->getStockDetail();
               detail && mUiParam->mStockKind == 0) {
        base = CSingletonT<CStockManager>::instance().getCurrentDateLastClose(detail, mTradeDate);
        const double tick = getDetailPriceTick(detail);
        minHalf = isUsable(tick) && isUsable(tick * 10.0) ? tick * 10.0 : kSmallestHalf;
    }
    if (!isUsable(base)) {
        return false;
    }
    const ValueRange range = centredRange(all, base, minHalf);
    bool stored = false;
    for (auto entry = mData.constBegin(); entry != mData.constEnd(); ++entry) {
        if (!mUiParam->isVolFormula(entry.key().mFormula)) {
            stored |= storeRange(mMaxMin, entry.key(), range);
        }
    }
    return stored;
}

bool CRealtimeData::isRangeOutgrown() const {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    return isOutgrown(mMaxMin, mDrawnMaxMin);
}

void CRealtimeData::adoptMaxMin(const MaxMinMap &ranges, bool overwrite) {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    if (adoptRanges(mDrawnMaxMin, ranges, overwrite)) {
        redraw();
    }
}

int CRealtimeData::mainChartHeight(const QRect &rect) const {
    return priceAxisHeight(rect.height(), mDisplayType == EIndexDisplayType::Main && mUiParam->mShowVolume);
}

/// A series of another instrument than the one shown. Indexes and portfolios have none.
bool CRealtimeData::isForeign(const CFormulaKey &key) const {
    return mUiParam->mStockKind == 0 && key.mStock != mUiParam->getStock();
}

/// The ranges that are on the axis; empty without an axis strip.
IndexBaseData::MaxMinMap CRealtimeData::axisRanges() const {
    const std::shared_ptr<const AxisScale> axis = mAxis.lock();
    return axis ? axis->shown().ranges : MaxMinMap();
}

double CRealtimeData::valueAtIndex(int index) const {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    const MaxMinMap ranges = axisRanges();
    for (auto entry = mData.constBegin(); entry != mData.constEnd(); ++entry) {
        const CFormulaKey &key = entry.key();
        if (!ranges.contains(key) || isForeign(key) ||
            (mDisplayType == EIndexDisplayType::Main && !isMainGraph(key.mFormula))) {
            continue;
        }
        const auto &lines = entry->result.mValues;
        if (index >= 0 && !lines.empty() && std::size_t(index) < lines[0].size()) {
            return lines[0][std::size_t(index)];
        }
    }
    return 0.0;
}

int CRealtimeData::yOfValue(double value, const QRect &rect) const {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    return rowOfValue(value, priceRange(), rect.height());
}

/// The range of prices that is on the axis: maximum and minimum, both 0 when there is none.
QPair<double, double> CRealtimeData::priceRange() const {
    const MaxMinMap ranges = axisRanges();
    for (auto entry = mData.constBegin(); entry != mData.constEnd(); ++entry) {
        const auto range = ranges.constFind(entry.key());
        if (range != ranges.constEnd() && mUiParam->isBasicFormula(entry.key().mFormula) &&
            !isForeign(entry.key())) {
            return *range;
        }
    }
    return {0.0, 0.0};
}

int CRealtimeData::yAtIndex(int index, const QRect &rect) {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    if (const StripScales::Scale left = mUiParam->mStripScales.of(mUiParam->mLeftAxis)) {
        mMaxMin = left->shown().ranges;
    }
    for (auto entry = mData.constBegin(); entry != mData.constEnd(); ++entry) {
        const auto range = mMaxMin.constFind(entry.key());
        if (range == mMaxMin.constEnd() || !mUiParam->isBasicFormula(entry.key().mFormula) ||
            isForeign(entry.key())) {
            continue;
        }
        const auto &lines = entry->result.mValues;
        if (index >= 0 && !lines.empty() && std::size_t(index) < lines[0].size()) {
            return rowOfValue(lines[0][std::size_t(index)], *range, mainChartHeight(rect));
        }
    }
    return -1;
}

double CRealtimeData::valueAtY(int y, const QRect &rect, bool *valid) const {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    if (mAxis.expired()) {
        return 0.0;
    }
    const auto markInvalid = [valid] {
        if (valid) {
            *valid = false;
        }
    };
    const bool mainPane = mDisplayType == EIndexDisplayType::Main;
    if (!mainPane) {
        markInvalid();
    }
    const int priceRows = mainChartHeight(rect);
    const bool inVolume = mainPane && y > priceRows;
    const int top = inVolume ? priceRows : 0;
    const int rows = inVolume ? rect.height() - priceRows : mainPane ? priceRows : rect.height();
    const MaxMinMap ranges = axisRanges();
    for (auto entry = mData.constBegin(); entry != mData.constEnd(); ++entry) {
        const CFormulaKey &key = entry.key();
        const auto range = ranges.constFind(key);
        if (range == ranges.constEnd() || isForeign(key)) {
            continue;
        }
        if (inVolume && !mUiParam->isVolFormula(key.mFormula)) {
            markInvalid();
            continue;
        }
        if (!mainPane || inVolume || mUiParam->isBasicFormula(key.mFormula)) {
            return valueOfRow(y - top, *range, rows);
        }
    }
    return 0.0;
}

} // namespace TC
