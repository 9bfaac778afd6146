#include "chartdata/ValueLookup.h"

#include "chartdata/ChartLayout.h"
#include "chartdata/PaneAxis.h"
#include "viewmodel/CRealtimeUiParam.h"

namespace TC {
namespace {

/// The value of line 0 at an index; null when it has none there.
const double *firstValue(const se::RPCFormulaResultCache &entry, int index) {
    const auto &lines = entry.result.mValues;
    const bool has = index >= 0 && !lines.empty() && std::size_t(index) < lines[0].size();
    return has ? &lines[0][std::size_t(index)] : nullptr;
}

} // namespace

/// A series of another instrument than the one shown. Indexes and portfolios have none.
bool ValueLookup::isForeign(const CFormulaKey &key) const {
    return mView.mStockKind == eInstrument && key.mStock != mView.getStock();
}

/// The price chart of the instrument shown.
bool ValueLookup::isPrice(const CFormulaKey &key) const {
    return mView.isBasicFormula(key.mFormula) && !isForeign(key);
}

double ValueLookup::valueAtIndex(int index, const std::function<bool(const QString &)> &isMainGraph) const {
    const IndexBaseData::MaxMinMap ranges = mAxis.shown().ranges;
    for (auto entry = mSeries.constBegin(); entry != mSeries.constEnd(); ++entry) {
        const CFormulaKey &key = entry.key();
        if (!ranges.contains(key) || isForeign(key) ||
            (mDisplayType == EIndexDisplayType::Main && !isMainGraph(key.mFormula))) {
            continue;
        }
        if (const double *value = firstValue(*entry, index)) {
            return *value;
        }
    }
    return 0.0;
}

double ValueLookup::priceAtIndex(int index) const {
    for (auto entry = mSeries.constBegin(); entry != mSeries.constEnd(); ++entry) {
        const double *value = isPrice(entry.key()) ? firstValue(*entry, index) : nullptr;
        if (value) {
            return *value;
        }
    }
    return kUnsetValue;
}

int ValueLookup::mainChartHeight(const QRect &pane) const {
    return priceAxisHeight(pane.height(), mDisplayType == EIndexDisplayType::Main && mView.mShowVolume);
}

ValueRange ValueLookup::priceRange() const {
    const IndexBaseData::MaxMinMap ranges = mAxis.shown().ranges;
    for (auto entry = mSeries.constBegin(); entry != mSeries.constEnd(); ++entry) {
        const auto range = ranges.constFind(entry.key());
        if (range != ranges.constEnd() && isPrice(entry.key())) {
            return *range;
        }
    }
    return {0.0, 0.0};
}

int ValueLookup::yOfValue(double value, const QRect &pane) const {
    return rowOfValue(value, priceRange(), pane.height());
}

int ValueLookup::yAtIndex(int index, const QRect &pane) const {
    if (const StripScales::Scale left = mView.mStripScales.of(mView.mLeftAxis)) {
        mWanted = left->shown().ranges;
    }
    for (auto entry = mSeries.constBegin(); entry != mSeries.constEnd(); ++entry) {
        const auto range = mWanted.constFind(entry.key());
        const double *value = firstValue(*entry, index);
        if (range != mWanted.constEnd() && isPrice(entry.key()) && value) {
            return rowOfValue(*value, *range, mainChartHeight(pane));
        }
    }
    return -1;
}

double ValueLookup::valueAtY(int y, const QRect &pane, bool *valid) const {
    if (mAxis.isNull()) {
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
    const int priceRows = mainChartHeight(pane);
    const bool inVolume = mainPane && y > priceRows;
    const int top = inVolume ? priceRows : 0;
    const int rows = inVolume ? pane.height() - priceRows : mainPane ? priceRows : pane.height();
    const IndexBaseData::MaxMinMap ranges = mAxis.shown().ranges;
    for (auto entry = mSeries.constBegin(); entry != mSeries.constEnd(); ++entry) {
        const CFormulaKey &key = entry.key();
        const auto range = ranges.constFind(key);
        if (range == ranges.constEnd() || isForeign(key)) {
            continue;
        }
        if (inVolume && !mView.isVolFormula(key.mFormula)) {
            markInvalid();
            continue;
        }
        if (!mainPane || inVolume || mView.isBasicFormula(key.mFormula)) {
            return valueOfRow(y - top, *range, rows);
        }
    }
    return 0.0;
}

} // namespace TC
