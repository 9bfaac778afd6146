// Overlays: those the user adds, and those that follow the main instrument by rule.

#include "host/services/CConfigService.h"
#include "host/services/CIndexManager.h"
#include "host/services/CSectorManager.h"
#include "host/services/CStockManager.h"
#include "host/services/StockTypeCenter.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <algorithm>

namespace TC {
namespace {

using Details = QList<CInstrumentDetailPtr>;

CInstrumentDetailPtr detailOf(const QString &key) {
    return CSingletonT<CStockManager>::instance().getInstrumentDetail(key);
}

bool isSectorIndex(const CInstrumentDetailPtr &detail) {
    return getDetailMarket(detail) == "BKZS";
}

bool hasKey(const Details &details, const QString &key) {
    return std::any_of(details.begin(), details.end(),
                       [&](const CInstrumentDetailPtr &detail) { return getDetailQsKey(detail) == key; });
}

bool hasKeyWith(const Details &details, const QString &part) {
    return std::any_of(details.begin(), details.end(), [&](const CInstrumentDetailPtr &detail) {
        return getDetailQsKey(detail).contains(part, Qt::CaseInsensitive);
    });
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
QString convertibleKeyByType(const CInstrumentDetailPtr &detail) {
    using kvservice::StockTypeCenter;
    const std::string market = getDetailMarket(detail);
    const std::string code = getDetailCode(detail);
    const bool isBond =
        StockTypeCenter::isTypedStock(10019, market, code) || StockTypeCenter::isTypedStock(135, market, code);
    if (isBond && detail && detail->mUnderlying && !detail->mUnderlying->mCode.empty()) {
        return QString::fromStdString(vmStockKey(market, detail->mUnderlying->mCode));
    }
    const std::string bond = getStockConvertibleBond(market, code);
    return bond.empty() ? QString() : QString::fromStdString(vmStockKey(market, bond));
}

} // namespace

bool CRealtimeUiParam::canAddStock() const {
    return mAddStocks.size() + mAddNoAxisStocks.size() < mMaxAddStock;
}

void CRealtimeUiParam::addStock(const QString &key, const QString &, bool hasAxis) {
    CInstrumentDetailPtr detail = detailOf(key);
    if (!detail) {
        const QString sectorIndex = CSingletonT<CSectorManager>::instance().getBkzsCodeByName(key);
        detail = detailOf(sectorIndex);
        if (detail) {
            mAddBkzsCode = sectorIndex;
        }
    }
    if (!detail) {
        addIndex(key);
        return;
    }
    const QString detailKey = getDetailQsKey(detail);
    Details &overlays = hasAxis ? mAddStocks : mAddNoAxisStocks;
    if (hasKey(overlays, detailKey)) {
        return;
    }
    overlays.append(detail);
    mStockColors[detailKey] = overlayColor(mAddStocks.size() - 1 + (hasAxis ? 0 : mAddNoAxisStocks.size()));
}

void CRealtimeUiParam::addIndex(const QString &key) {
    const CIndexDetail *index = CSingletonT<CIndexManager>::instance().getIndex(key);
    if (!index) {
        return;
    }
    mAddIndexes.append(new CIndexDetail(*index));
    mAddStocks.append(indexDetail2Detail(*index));
    mStockColors[key] = overlayColor(mAddStocks.size() - 1);
}

int CRealtimeUiParam::overlayColor(int position) const {
    const int count = mAddStockColors.size();
    return count > 0 ? mAddStockColors[std::max(position, 0) % count] : 0;
}

void CRealtimeUiParam::delAllStock() {
    qDeleteAll(mAddIndexes);
    mAddIndexes.clear();
    mAddStocks.clear();
    mAddNoAxisStocks.clear();
    mStockColors.clear();
    mAddSwBkzsLevel = -1;
    mAddBkzsCode.clear();
    mAddStockFlags = 0;
    mAddConvertibleCodes.clear();
}

QList<CInstrumentDetailPtr> CRealtimeUiParam::getAllAddStockList() const {
    return mAddStocks + mAddNoAxisStocks;
}

bool CRealtimeUiParam::isOverlayStock(const QString &key) const {
    return hasKeyWith(mAddStocks, key) || isNoAxisOverlayStock(key);
}

bool CRealtimeUiParam::isNoAxisOverlayStock(const QString &key) const {
    return hasKeyWith(mAddNoAxisStocks, key);
}

bool CRealtimeUiParam::isOverlayIndex(const QString &key) const {
    return std::any_of(mAddIndexes.begin(), mAddIndexes.end(), [&](const CIndexDetail *index) {
        return index->key().compare(key, Qt::CaseInsensitive) == 0;
    });
}

void CRealtimeUiParam::setSector(const QString &sector, const QString &name) {
    if (sector == mSector) {
        return;
    }
    const QString newSector = sector; // may be a reference to a member that is emptied now
    delAllStock();
    mSector = newSector;
    if (SingletonManager::getIndexUserConfig().read().mOverlaySector && !mSector.isEmpty()) {
        addStock(mSector, name, true);
    }
}

void CRealtimeUiParam::setAddSwBkzsLevel(int level) {
    mAddSwBkzsLevel = level;
}

void CRealtimeUiParam::updateAddSwBkzsCode() {
    if (mAddSwBkzsLevel == -1) {
        return;
    }
    CSectorManager &sectors = CSingletonT<CSectorManager>::instance();
    const QString sectorName = sectors.getSWSectorByStock(getStock(), mAddSwBkzsLevel);
    const QString code = sectors.getBkzsCodeByName(sectorName);
    if (code.isEmpty()) {
        removeOverlays(mAddStocks, mStockColors, isSectorIndex);
        mAddBkzsCode.clear();
        return;
    }
    if (code == mAddBkzsCode) {
        return;
    }
    showSectorIndex(detailOf(code));
    mAddBkzsCode = code;
}

void CRealtimeUiParam::showSectorIndex(const CInstrumentDetailPtr &detail) {
    for (Details *overlays : {&mAddStocks, &mAddNoAxisStocks}) {
        const int at = lastSectorIndex(*overlays);
        if (at < 0) {
            continue;
        }
        if (!detail) {
            overlays->removeAt(at);
            return;
        }
        overlays->replace(at, detail);
        const int noAxisCount = overlays == &mAddStocks ? 0 : mAddNoAxisStocks.size();
        mStockColors[getDetailQsKey(detail)] = overlayColor(std::min(at, mAddStocks.size() - 1 + noAxisCount));
        return;
    }
    if (detail && canAddStock()) {
        mAddStocks.append(detail);
        mStockColors[getDetailQsKey(detail)] = overlayColor(mAddStocks.size() - 1);
    }
}

void CRealtimeUiParam::clearAddSwBkzsCode() {
    removeOverlays(mAddStocks, mStockColors, isSectorIndex);
    removeOverlays(mAddNoAxisStocks, mStockColors, isSectorIndex);
    mAddBkzsCode.clear();
}

void CRealtimeUiParam::updateAddConvertibleCode() {
    if (!(mAddStockFlags & eConvertibleOverlay)) {
        return;
    }
    clearAddConvertibleCode();
    QSet<QString> codes = CSingletonT<CSectorManager>::instance().getConvertibleCodeByStock(getStock());
    if (codes.isEmpty()) {
        const QString key = convertibleKeyByType(mStockDetail);
        if (!key.isEmpty()) {
            codes.insert(key);
        }
    }
    for (const QString &key : qAsConst(codes)) {
        const CInstrumentDetailPtr detail = detailOf(key);
        if (detail && canAddStock()) {
            mAddStocks.append(detail);
            mStockColors[getDetailQsKey(detail)] = overlayColor(mAddStocks.size() - 1);
            mAddConvertibleCodes.insert(key);
        }
    }
}

void CRealtimeUiParam::clearAddConvertibleCode() {
    const auto isConvertible = [&](const CInstrumentDetailPtr &detail) {
        return mAddConvertibleCodes.contains(getDetailQsKey(detail));
    };
    removeOverlays(mAddStocks, mStockColors, isConvertible);
    removeOverlays(mAddNoAxisStocks, mStockColors, isConvertible);
    mAddConvertibleCodes.clear();
}

} // namespace TC
