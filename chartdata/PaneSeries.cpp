#include "chartdata/PaneSeries.h"

#include "chartdata/OverlayAlignment.h"
#include "chartdata/ShownDay.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <algorithm>

namespace TC {
namespace {

template <class T> void setElement(std::vector<T> &list, std::size_t index, const T &value) {
    if (list.size() <= index) {
        list.resize(index + 1);
    }
    list[index] = value;
}

/// What of a point counts: an overlay is drawn from values alone.
EPointParts partsOf(ESeriesRole role) {
    return role == ESeriesRole::Overlay ? EPointParts::Values : EPointParts::Everything;
}

} // namespace

ESeriesRole PaneSeries::roleOf(const CFormulaKey &key) const {
    if (mDisplayType != EIndexDisplayType::Main) {
        return ESeriesRole::Ordinary;
    }
    if (!mView.isBasicFormula(key.mFormula) && mFormulas.contains(mView.getBasicFormula())) {
        return ESeriesRole::Ordinary;
    }
    if (mView.isMainStock(key.mStock)) {
        return ESeriesRole::Main;
    }
    return mView.isOverlayStock(key.mStock) ? ESeriesRole::Overlay : ESeriesRole::Ordinary;
}

se::RPCFormulaResultCache *PaneSeries::find(const CFormulaKey &key, ESeriesRole role) {
    Map &map = mapOf(role);
    const auto found = map.find(key);
    return found == map.end() ? nullptr : &*found;
}

void PaneSeries::publishCount(ESeriesRole role, const se::RPCFormulaResult &series) const {
    if (role == ESeriesRole::Main && mDay.isLive()) {
        mView.setDataCount(static_cast<int>(series.mTimes.size()));
    }
}

void PaneSeries::store(const CFormulaKey &key, ESeriesRole role, const FormulaMetaPtr &meta,
                       const FormulaResultPtr &result) {
    se::RPCFormulaResultCache entry;
    if (meta) {
        entry.meta = *meta;
    }
    if (result) {
        entry.result = *result;
    }
    if (role == ESeriesRole::Overlay) {
        setElement(entry.meta.mLineColors, 0, mView.mStockColors.value(key.mStock, se::kDefaultColor));
        setElement(entry.meta.mLineFlags, 0, se::kLineFixedColor);
        if (entry.meta.mLineAxis.size() >= 2) {
            entry.meta.mLineAxis[1] = se::eLineHidden;
        }
    }
    publishCount(role, entry.result);
    mapOf(role)[key] = std::move(entry);
}

EPushOutcome PaneSeries::mergeLast(se::RPCFormulaResultCache &series, ESeriesRole role,
                                   const se::RPCFormulaResult &result) {
    const EPushOutcome outcome = mergeLastPoint(series.result, result, partsOf(role));
    publishCount(role, series.result);
    return outcome;
}

SeriesPoint PaneSeries::merge(se::RPCFormulaResultCache &series, ESeriesRole role, const PointPlace &place,
                              const se::RPCFormulaInstantResult &point) {
    const bool changed = storePoint(series.result, place, point, partsOf(role));
    publishCount(role, series.result);
    const bool shown =
        role != ESeriesRole::Overlay || mFillsGaps; // an overlay is shown as it is, or as it is aligned
    return changed && shown ? SeriesPoint{&series, place.index} : SeriesPoint();
}

PaneSeries::Map::const_iterator PaneSeries::mainSeries() const {
    const Map &shown = mShown;
    auto main = shown.constBegin();
    while (main != shown.constEnd() &&
           !(mView.isMainStock(main.key().mStock) && mView.isBasicFormula(main.key().mFormula))) {
        ++main;
    }
    return main;
}

SeriesPoint PaneSeries::align(const CFormulaKey &key, int first) {
    const auto overlay = mOverlays.constFind(key);
    if (overlay == mOverlays.constEnd()) {
        return {};
    }
    mShown.detach(); // an iterator stays good while an entry is added
    const auto main = mainSeries();
    const std::size_t from = static_cast<std::size_t>(std::max(first, 0));
    if (main == mShown.constEnd() || from >= main->result.mTimes.size() ||
        from >= overlay->result.mTimes.size()) {
        return {};
    }
    if (mFillsGaps) {
        mShown[key] = *overlay; // gaps are filled when it is drawn
        return {};
    }
    auto aligned = mShown.find(key);
    if (aligned == mShown.end()) {
        aligned = mShown.insert(key, se::RPCFormulaResultCache());
        aligned->meta = overlay->meta;
    }
    if (!hasShapeOf(aligned->result, main->result)) {
        shapeLike(aligned->result, main->result);
    }
    const std::size_t changed = alignValues(aligned->result, main->result, overlay->result, from);
    return changed < main->result.mTimes.size() ? SeriesPoint{&*aligned, changed} : SeriesPoint();
}

std::vector<CFormulaKey> PaneSeries::overlays() const {
    std::vector<CFormulaKey> keys;
    if (mOverlays.isEmpty()) {
        return keys;
    }
    for (const CInstrumentDetailPtr &overlay : mView.getAllAddStockList()) {
        const CFormulaKey key(getDetailQsKey(overlay), mView.getBasicFormula());
        if (mOverlays.contains(key)) {
            keys.push_back(key);
        }
    }
    return keys;
}

void PaneSeries::removeOverlays(const QString &formula) {
    mOverlays.clear();
    for (const CInstrumentDetailPtr &overlay : mView.getAllAddStockList()) {
        const QString stock = getDetailQsKey(overlay);
        if (!mView.isMainStock(stock)) {
            mShown.remove(CFormulaKey(stock, formula));
        }
    }
}

void PaneSeries::clear() {
    mShown.clear();
    mOverlays.clear();
}

} // namespace TC
