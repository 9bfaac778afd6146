#include "chartdata/PaneRanges.h"

#include "chartdata/LinkageScope.h"
#include "chartdata/ShownDay.h"
#include "host/drawing/CDrawStyle.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/CLinkageManager.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/Text.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <algorithm>

namespace TC {
namespace {

constexpr double kSmallestHalf = 0.01;
constexpr double kTicksOfHalf = 10.0;

Extremes extremesOf(const se::RPCFormulaResultCache &entry) {
    return {entry.max, entry.min};
}

/// The close of an overlay. On a live day the view parameters know none; then the catalogue is asked.
double overlayBase(const CRealtimeUiParam &view, const QString &stock, int tradeDate) {
    const double base = view.getLastClose(stock);
    if (base != 0.0) {
        return base;
    }
    const double listed = view.service<CStockManager>().getCurrentDateLastClose(stock, tradeDate);
    return isUsable(listed) ? listed : base;
}

/// Whether a formula shows something else in place of the main chart.
bool replacesChart(const CRealtimeUiParam &view, const QString &name) {
    const CFormulaDetailPtr formula = view.service<CFormulaOperateManager>().getFormula(name);
    return formula && formula->mType == eReplacingFormula && !view.isBasicFormula(name);
}

} // namespace

bool PaneRanges::update(const CFormulaKey &key, int first, const QRect &pane) {
    const auto found = mSeries.find(key);
    if (found == mSeries.end()) {
        return false;
    }
    se::RPCFormulaResultCache &entry = *found;
    const bool mainPane = mDisplayType == EIndexDisplayType::Main;
    const bool prices = GZ::isSameName(key.mFormula, QLatin1String("REALTIME"));
    Extremes seen;
    const bool any = CDrawStyle::calcMaxMin(seen.max, seen.min, first, mView.mPointCount, entry, pane, true,
                                            false, 1.0f, prices);
    if (!any && mainPane && !mView.isMainFormula(key.mFormula)) {
        return false;
    }
    if (!isUsable(seen.max) || !isUsable(seen.min)) {
        return false;
    }
    const bool volume = mView.isVolFormula(key.mFormula);
    if (volume) {
        seen.min = 0.0;
    }
    if (!widen(entry.max, entry.min, seen)) {
        return false;
    }
    if (!mainPane || volume) {
        return storeRange(mWanted, key, {entry.max, entry.min});
    }
    const bool single = mView.getAllAddStockList().isEmpty() && !(mView.mLinkageFlags & eSelectedDataView);
    return single ? updateSingle(key) : updateJoint(key);
}

/// Close of the main instrument, of kind 0 or 1; unset when there is none.
double PaneRanges::priceBase() const {
    if (mView.mStockKind == eUserIndex) {
        return mView.getLastClose();
    }
    const CInstrumentDetailPtr detail = mView.getStockDetail();
    return detail && mView.mStockKind == eInstrument
               ? mView.service<CStockManager>().getCurrentDateLastClose(detail, mDay.date())
               : kUnsetValue;
}

/// What percentages of a series are counted from; unset for a series that is neither the main instrument's nor an
/// overlay's. `middleOf` gives the extremes of a portfolio.
double PaneRanges::baseOf(const CFormulaKey &key, const se::RPCFormulaResultCache &middleOf) const {
    if (!mView.isMainStock(key.mStock)) {
        return mView.isOverlayStock(key.mStock) ? overlayBase(mView, key.mStock, mDay.date()) : kUnsetValue;
    }
    if (mView.mStockKind == ePortfolio) {
        return extremesOf(middleOf).isSet() ? (middleOf.max + middleOf.min) * 0.5 : kUnsetValue;
    }
    return priceBase();
}

/// Largest relative distance of the user's shown orders and deals from the close; 0 when none are shown.
double PaneRanges::amplitudeOfTrades() const {
    if (!(mView.mLinkageFlags & eSelectedDataView)) {
        return 0.0;
    }
    CLinkageManager &linkage = mView.service<CLinkageManager>();
    const auto &stocks = mView.mLinkageStocks;
    const auto &accounts = mView.mLinkageAccounts;
    double amplitude = 0.0;
    const auto take = [&amplitude](double found) {
        if (isUsable(found)) {
            amplitude = std::max(amplitude, found);
        }
    };
    if (mView.mLinkageShow[eShowOrders]) {
        take(linkage.getOrderAmplitude(stocks, accounts));
    }
    if (mView.mLinkageShow[eShowDeals]) {
        take(linkage.getDealAmplitude(stocks, accounts));
    }
    return amplitude;
}

/// Several instruments, or marks that carry prices of their own: every series gets the same percentages.
bool PaneRanges::updateJoint(const CFormulaKey &key) {
    double amp = amplitudeOfTrades();
    double ampFree = 0.0;
    const auto target = [&](const CFormulaKey &of) -> double & {
        const bool free = !mView.isMainStock(of.mStock) && mView.isNoAxisOverlayStock(of.mStock);
        return free ? ampFree : amp;
    };
    for (auto entry = mSeries.constBegin(); entry != mSeries.constEnd(); ++entry) {
        if (!mView.isVolFormula(entry.key().mFormula) && extremesOf(*entry).isSet()) {
            gatherAmplitude(target(entry.key()), extremesOf(*entry), baseOf(entry.key(), *entry));
        }
    }
    const auto updated = mSeries.constFind(key);
    bool stored = false;
    for (auto entry = mSeries.constBegin(); entry != mSeries.constEnd(); ++entry) {
        const double distance = target(entry.key());
        if (mView.isVolFormula(entry.key().mFormula) || isZero(distance)) {
            continue;
        }
        const double base = baseOf(entry.key(), *updated);
        if (isUsable(base)) {
            stored |= storeRange(mWanted, entry.key(), amplitudeRange(base, distance));
        }
    }
    return stored;
}

/// One instrument: the same range around its base for all its series.
bool PaneRanges::updateSingle(const CFormulaKey &key) {
    Extremes all = extremesOf(*mSeries.constFind(key));
    for (auto entry = mSeries.constBegin(); entry != mSeries.constEnd(); ++entry) {
        if (!mView.isVolFormula(entry.key().mFormula) && extremesOf(*entry).isSet()) {
            all.max = std::max(all.max, entry->max);
            all.min = std::min(all.min, entry->min);
        }
    }
    double base = kUnsetValue;
    double minHalf = kSmallestHalf;
    if (replacesChart(mView, key.mFormula) || mView.mStockKind == ePortfolio) {
        base = (all.max + all.min) * 0.5;
    } else {
        base = priceBase();
        const double half = getDetailPriceTick(mView.getStockDetail()) * kTicksOfHalf;
        minHalf = mView.mStockKind == eInstrument && isUsable(half) ? half : kSmallestHalf;
    }
    if (!isUsable(base)) {
        return false;
    }
    const ValueRange range = centredRange(all, base, minHalf);
    bool stored = false;
    for (auto entry = mSeries.constBegin(); entry != mSeries.constEnd(); ++entry) {
        if (!mView.isVolFormula(entry.key().mFormula)) {
            stored |= storeRange(mWanted, entry.key(), range);
        }
    }
    return stored;
}

bool PaneRanges::adopt(const IndexBaseData::MaxMinMap &ranges, bool overwrite) {
    return adoptRanges(mDrawn, ranges, overwrite);
}

void PaneRanges::forget(const CFormulaKey &key) {
    mWanted.remove(key);
    mDrawn.remove(key);
}

void PaneRanges::clear() {
    mWanted.clear();
    mDrawn.clear();
}

} // namespace TC
