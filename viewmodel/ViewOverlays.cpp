#include "viewmodel/ViewOverlays.h"

#include "host/services/CIndexManager.h"
#include "host/services/CSectorManager.h"
#include "host/services/CStockManager.h"
#include "host/services/StockTypeCenter.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <algorithm>

namespace TC {
namespace {

using Details = QList<CInstrumentDetailPtr>;

CInstrumentDetailPtr detailOf(const CRealtimeUiParam &view, const QString &key) {
    return view.service<CStockManager>().getInstrumentDetail(key);
}

bool isSectorIndex(const CInstrumentDetailPtr &detail) {
    return getDetailMarket(detail) == "BKZS";
}

int lastSectorIndex(const Details &details) {
    for (int i = details.size() - 1; i >= 0; --i) {
        if (isSectorIndex(details[i])) {
            return i;
        }
    }
    return -1;
}

/// Removes the overlays that a rule names, with their colours.
template <class Rule> void removeOverlays(Details &details, QMap<QString, int> &colors, Rule isRemoved) {
    for (int i = details.size() - 1; i >= 0; --i) {
        if (isRemoved(details[i])) {
            colors.remove(getDetailQsKey(details[i]));
            details.removeAt(i);
        }
    }
}

/// What converts to or from the main instrument when the catalogue of sectors does not tell: a bond converts to
/// its underlying, which is looked for in the bond's own market, and a share may have a bond.
QString convertibleKeyByType(const CInstrumentDetailPtr &detail, kvservice::StockTypeCenter &types) {
    const std::string market = getDetailMarket(detail);
    const std::string code = getDetailCode(detail);
    const bool isBond = types.isOfType(10019, market, code) || types.isOfType(135, market, code);
    if (isBond && detail && detail->mUnderlying && !detail->mUnderlying->mCode.empty()) {
        return QString::fromStdString(vmStockKey(market, detail->mUnderlying->mCode));
    }
    const std::string bond = types.convertibleBond(market, code);
    return bond.empty() ? QString() : QString::fromStdString(vmStockKey(market, bond));
}

} // namespace

bool hasKey(const Details &overlays, const QString &key) {
    return std::any_of(overlays.begin(), overlays.end(),
                       [&](const CInstrumentDetailPtr &detail) { return getDetailQsKey(detail) == key; });
}

bool hasKeyWith(const Details &overlays, const QString &part) {
    return std::any_of(overlays.begin(), overlays.end(), [&](const CInstrumentDetailPtr &detail) {
        return getDetailQsKey(detail).contains(part, Qt::CaseInsensitive);
    });
}

void ViewOverlays::setColor(const QString &key, int position) {
    const QList<int> &colors = mParam.mAddStockColors;
    mParam.mStockColors[key] = colors.isEmpty() ? 0 : colors[std::max(position, 0) % colors.size()];
}

void ViewOverlays::append(const CInstrumentDetailPtr &detail) {
    mParam.mAddStocks.append(detail);
    setColor(getDetailQsKey(detail), mParam.mAddStocks.size() - 1);
}

void ViewOverlays::add(const QString &key, bool hasAxis) {
    CInstrumentDetailPtr detail = detailOf(mParam, key);
    if (!detail) {
        const QString sectorIndex = mParam.service<CSectorManager>().getBkzsCodeByName(key);
        detail = detailOf(mParam, sectorIndex);
        if (detail) {
            mParam.mAddBkzsCode = sectorIndex;
        }
    }
    if (!detail) {
        addIndex(key);
        return;
    }
    const QString detailKey = getDetailQsKey(detail);
    if (hasKey(hasAxis ? mParam.mAddStocks : mParam.mAddNoAxisStocks, detailKey)) {
        return;
    }
    if (hasAxis) {
        append(detail);
    } else {
        mParam.mAddNoAxisStocks.append(detail);
        setColor(detailKey, mParam.mAddStocks.size() - 1 + mParam.mAddNoAxisStocks.size());
    }
}

void ViewOverlays::addIndex(const QString &key) {
    const CIndexDetail *index = mParam.service<CIndexManager>().getIndex(key);
    if (!index) {
        return;
    }
    mParam.mAddIndexes.append(new CIndexDetail(*index));
    mParam.mAddStocks.append(indexDetail2Detail(*index));
    setColor(key, mParam.mAddStocks.size() - 1);
}

void ViewOverlays::removeAll() {
    qDeleteAll(mParam.mAddIndexes);
    mParam.mAddIndexes.clear();
    mParam.mAddStocks.clear();
    mParam.mAddNoAxisStocks.clear();
    mParam.mStockColors.clear();
    mParam.mAddSwBkzsLevel = -1;
    mParam.mAddBkzsCode.clear();
    mParam.mAddStockFlags = 0;
    mParam.mAddConvertibleCodes.clear();
}

void ViewOverlays::followSector() {
    if (mParam.mAddSwBkzsLevel == -1) {
        return;
    }
    CSectorManager &sectors = mParam.service<CSectorManager>();
    const QString sectorName = sectors.getSWSectorByStock(mParam.getStock(), mParam.mAddSwBkzsLevel);
    const QString code = sectors.getBkzsCodeByName(sectorName);
    if (code.isEmpty()) {
        removeOverlays(mParam.mAddStocks, mParam.mStockColors, isSectorIndex);
        mParam.mAddBkzsCode.clear();
        return;
    }
    if (code == mParam.mAddBkzsCode) {
        return;
    }
    showSectorIndex(detailOf(mParam, code));
    mParam.mAddBkzsCode = code;
}

/// Puts a sector index in the place of the one overlaid, or adds it when there is room; null takes it away.
void ViewOverlays::showSectorIndex(const CInstrumentDetailPtr &detail) {
    for (Details *overlays : {&mParam.mAddStocks, &mParam.mAddNoAxisStocks}) {
        const int at = lastSectorIndex(*overlays);
        if (at < 0) {
            continue;
        }
        if (!detail) {
            overlays->removeAt(at);
            return;
        }
        overlays->replace(at, detail);
        const int noAxisCount =
            overlays == &mParam.mAddStocks ? 0 : static_cast<int>(mParam.mAddNoAxisStocks.size());
        setColor(getDetailQsKey(detail),
                 std::min(at, static_cast<int>(mParam.mAddStocks.size()) - 1 + noAxisCount));
        return;
    }
    if (detail && mParam.canAddStock()) {
        append(detail);
    }
}

void ViewOverlays::removeSector() {
    removeOverlays(mParam.mAddStocks, mParam.mStockColors, isSectorIndex);
    removeOverlays(mParam.mAddNoAxisStocks, mParam.mStockColors, isSectorIndex);
    mParam.mAddBkzsCode.clear();
}

void ViewOverlays::followConvertible() {
    if (!(mParam.mAddStockFlags & eConvertibleOverlay)) {
        return;
    }
    removeConvertible();
    QSet<QString> codes = mParam.service<CSectorManager>().getConvertibleCodeByStock(mParam.getStock());
    if (codes.isEmpty()) {
        const QString key =
            convertibleKeyByType(mParam.mStockDetail, mParam.service<kvservice::StockTypeCenter>());
        if (!key.isEmpty()) {
            codes.insert(key);
        }
    }
    for (const QString &key : qAsConst(codes)) {
        const CInstrumentDetailPtr detail = detailOf(mParam, key);
        if (detail && mParam.canAddStock()) {
            append(detail);
            mParam.mAddConvertibleCodes.insert(key);
        }
    }
}

void ViewOverlays::removeConvertible() {
    const auto isConvertible = [this](const CInstrumentDetailPtr &detail) {
        return mParam.mAddConvertibleCodes.contains(getDetailQsKey(detail));
    };
    removeOverlays(mParam.mAddStocks, mParam.mStockColors, isConvertible);
    removeOverlays(mParam.mAddNoAxisStocks, mParam.mStockColors, isConvertible);
    mParam.mAddConvertibleCodes.clear();
}

} // namespace TC
