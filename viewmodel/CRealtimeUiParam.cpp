#include "viewmodel/CRealtimeUiParam.h"

#include "host/drawing/LineColor.h"
#include "host/records/ValueComparison.h"
#include "host/services/CConfigService.h"
#include "host/services/CHostClock.h"
#include "host/services/CIndexManager.h"
#include "host/services/CStockManager.h"
#include "host/services/CTradeOpenCloseTimeManager.h"
#include "host/services/ServiceContext.h"
#include "host/services/StockTypeCenter.h"
#include "host/toolkit/Text.h"
#include "host/toolkit/ThemeColor.h"
#include "host/toolkit/Wording.h"
#include "viewmodel/CRealTimeCustomIndexAxis.h"
#include "viewmodel/CRealTimeNomalAxis.h"
#include "viewmodel/CRealTimePortfolioAxis.h"
#include "viewmodel/InstrumentDay.h"
#include "viewmodel/TradingSessions.h"
#include "viewmodel/ViewOverlays.h"

#include <algorithm>

namespace TC {
namespace {

constexpr int kMidnight = 1440; ///< minute that ends an evening

QList<int> overlayColorsOfTheme() {
    QList<int> colors;
    for (const char *key :
         {"ic_clr_realtime_superpos_1", "ic_clr_realtime_superpos_2", "ic_clr_realtime_superpos_3"}) {
        colors.append(lineColor(GZ::themeColor(key)));
    }
    return colors;
}

QList<CIndexDetail *> copiesOf(const QList<CIndexDetail *> &indexes) {
    QList<CIndexDetail *> copies;
    for (const CIndexDetail *index : indexes) {
        copies.append(new CIndexDetail(*index));
    }
    return copies;
}

} // namespace

CRealtimeUiParam::CRealtimeUiParam(EIndexViewType viewType, const ServiceContext &services)
    : mViewType(viewType), mAddStockColors(overlayColorsOfTheme()), mNormalAxis(new CRealTimeNomalAxis),
      mIndexAxis(new CRealTimeCustomIndexAxis), mPortfolioAxis(new CRealTimePortfolioAxis),
      mServices(&services) {
    mCurrentAxis = mNormalAxis;
    mNormalAxis->setServices(services);
    mIndexAxis->setServices(services);
    mPortfolioAxis->setServices(services);
}

CRealtimeUiParam::CRealtimeUiParam(const CRealtimeUiParam &other)
    : mViewType(other.mViewType), mServices(other.mServices) {
    *this = other; // and then copies of what is owned
    mAddIndexes = copiesOf(other.mAddIndexes);
    mNormalAxis = new CRealTimeNomalAxis(*other.mNormalAxis);
    mIndexAxis = new CRealTimeCustomIndexAxis(*other.mIndexAxis);
    mPortfolioAxis = new CRealTimePortfolioAxis(*other.mPortfolioAxis);
    if (other.mCurrentAxis == other.mPortfolioAxis) {
        mCurrentAxis = mPortfolioAxis;
    } else if (other.mCurrentAxis == other.mIndexAxis) {
        mCurrentAxis = mIndexAxis;
    } else {
        mCurrentAxis = mNormalAxis;
    }
}

CRealtimeUiParam::~CRealtimeUiParam() {
    qDeleteAll(mAddIndexes);
    delete mNormalAxis;
    delete mIndexAxis;
    delete mPortfolioAxis;
}

void CRealtimeUiParam::setStock(const QString &key, bool useUnderlying) {
    const int oldKind = mStockKind;
    bool changed = false;
    CStockManager &stocks = service<CStockManager>();
    if (service<CIndexManager>().getIndex(key)) {
        mStockKind = eUserIndex;
        mIndexKey = key;
        mStockDetail.reset();
        mValid = true;
        setTradingDay(stockDay(false));
    } else if (stocks.isExist(key)) {
        mStockKind = eInstrument;
        changed = key != getDetailQsKey(mStockDetail);
        mStockDetail = stocks.getInstrumentDetail(key);
        mValid = true;
        resetInstrumentAxis(useUnderlying);
    } else if (stocks.isPortfolio(key)) {
        mStockKind = ePortfolio;
        mPortfolioKey = QStringLiteral("TZZH") + key;
        mStockDetail.reset();
        mValid = true;
        setTradingDay(stockDay(false));
    } else {
        mStockDetail.reset();
        mValid = false;
    }
    if (mStockKind != oldKind) {
        mCurrentAxis = axisOfKind(mStockKind);
    }
    if (changed) {
        updateAddSwBkzsCode();
        updateAddConvertibleCode();
    }
}

void CRealtimeUiParam::resetInstrumentAxis(bool useUnderlying) {
    mSessions.clear();
    if (service<CTradeOpenCloseTimeManager>().getTradeTime(
            getDetailQsMarket(mStockDetail), getDetailQsCode(mStockDetail), mSessions, mPointCount)) {
        return;
    }
    if (useUnderlying && hasUnderlyingDay(mStockDetail)) {
        resetAxis(mStockDetail->mUnderlying->mMarket, mStockDetail->mUnderlying->mCode);
    } else {
        resetAxis(getDetailMarket(mStockDetail), getDetailCode(mStockDetail));
    }
}

CRealtimeBaseFormulaAxis *CRealtimeUiParam::axisOfKind(int kind) const {
    switch (kind) {
    case eInstrument:
        return mNormalAxis;
    case eUserIndex:
        return mIndexAxis;
    case ePortfolio:
        return mPortfolioAxis;
    default:
        return mCurrentAxis;
    }
}

void CRealtimeUiParam::clearStock() {
    mStockDetail.reset();
}

void CRealtimeUiParam::clear() {
    setDataCount(0);
}

QString CRealtimeUiParam::getStock() const {
    switch (mStockKind) {
    case eUserIndex:
        return mIndexKey;
    case ePortfolio:
        return mPortfolioKey;
    default:
        return getDetailQsKey(mStockDetail);
    }
}

CInstrumentDetailPtr CRealtimeUiParam::getStockDetail() const {
    return mStockDetail;
}

bool CRealtimeUiParam::isValid() const {
    return mValid;
}

bool CRealtimeUiParam::isMainStock(const QString &key) const {
    return GZ::isSameName(key, getStock());
}

int CRealtimeUiParam::getMainPanelID() const {
    return mPanelInfo ? mPanelInfo->mId : 0;
}

bool CRealtimeUiParam::isShowGroupIndexGraph() const {
    return service<kvservice::StockTypeCenter>().isIndex(getDetailMarket(mStockDetail),
                                                         getDetailCode(mStockDetail)) ||
           mStockKind == eUserIndex;
}

void CRealtimeUiParam::setFormulaAccount(const QString &account) {
    mFormulaAccount = account;
}

bool CRealtimeUiParam::canAddStock() const {
    return mAddStocks.size() + mAddNoAxisStocks.size() < mMaxAddStock;
}

void CRealtimeUiParam::addStock(const QString &key, const QString &, bool hasAxis) {
    ViewOverlays(*this).add(key, hasAxis);
}

void CRealtimeUiParam::delAllStock() {
    ViewOverlays(*this).removeAll();
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
    return std::any_of(mAddIndexes.begin(), mAddIndexes.end(),
                       [&](const CIndexDetail *index) { return GZ::isSameName(index->key(), key); });
}

void CRealtimeUiParam::setSector(const QString &sector, const QString &name) {
    if (sector == mSector) {
        return;
    }
    const QString newSector = sector; // may be a reference to a member that is emptied now
    delAllStock();
    mSector = newSector;
    if (service<CConfigService>().indexUserConfig().read().mOverlaySector && !mSector.isEmpty()) {
        addStock(mSector, name, true);
    }
}

void CRealtimeUiParam::setAddSwBkzsLevel(int level) {
    mAddSwBkzsLevel = level;
}

void CRealtimeUiParam::updateAddSwBkzsCode() {
    ViewOverlays(*this).followSector();
}

void CRealtimeUiParam::clearAddSwBkzsCode() {
    ViewOverlays(*this).removeSector();
}

void CRealtimeUiParam::updateAddConvertibleCode() {
    ViewOverlays(*this).followConvertible();
}

void CRealtimeUiParam::clearAddConvertibleCode() {
    ViewOverlays(*this).removeConvertible();
}

bool CRealtimeUiParam::isMainFormula(const QString &name) const {
    return mCurrentAxis && mCurrentAxis->isMainFormula(name);
}

bool CRealtimeUiParam::isBasicFormula(const QString &name) const {
    return mCurrentAxis && mCurrentAxis->isBasicFormula(name);
}

bool CRealtimeUiParam::isVolFormula(const QString &name) const {
    return mCurrentAxis && mCurrentAxis->isVolFormula(name);
}

QList<QString> CRealtimeUiParam::getMainFormula() const {
    return mCurrentAxis ? mCurrentAxis->getMainFormula() : QList<QString>();
}

QString CRealtimeUiParam::getBasicFormula() const {
    return mCurrentAxis ? mCurrentAxis->getBasicFormula() : QString();
}

QString CRealtimeUiParam::getVolFormula() const {
    return mCurrentAxis ? mCurrentAxis->getVolFormula() : QString();
}

QString CRealtimeUiParam::getApplyMainFormula() const {
    return QStringLiteral("VWAP成交均价");
}

void CRealtimeUiParam::setPortfolioGraphType(int type) {
    if (mCurrentAxis) {
        mCurrentAxis->setPortfolioGraphType(type);
    }
}

bool CRealtimeUiParam::showContextMenu() const {
    return mCurrentAxis && mCurrentAxis->showContextMenu();
}

bool CRealtimeUiParam::fillRequestParam(CFormulaParam &param, const QString &key,
                                        boost::shared_ptr<CFormulaDetail> formula) {
    QString requestKey = key;
    if (param.mStockKind == eUserIndex) {
        // The code of an overlay is the key as the index manager spells it.
        for (const CInstrumentDetailPtr &overlay : getAllAddStockList()) {
            if (GZ::isSameName(getDetailQsKey(overlay), key)) {
                requestKey = getDetailQsCode(overlay);
            }
        }
    }
    CRealtimeBaseFormulaAxis *axis = axisOfKind(param.mStockKind);
    return axis && axis->fillRequestParam(param, requestKey, formula);
}

double CRealtimeUiParam::getLastClose() const {
    if (mStockKind == eInstrument) {
        return mGetTradeDateFunc ? service<CStockManager>().getCurrentDateLastClose(
                                       getDetailQsKey(mStockDetail), mGetTradeDateFunc())
                                 : getDetailLastClose(mStockDetail);
    }
    if (mStockKind != eUserIndex) {
        return 0.0;
    }
    const std::string key = mIndexKey.toStdString();
    CIndexManager &indexes = service<CIndexManager>();
    double value = indexes.storedValue(key);
    if (isZero(value)) {
        value = indexes.dispatchedLastClose(key);
    }
    return isZero(value) ? indexes.initialValue(key) : value;
}

double CRealtimeUiParam::getLastClose(const QString &key) const {
    if (const CIndexDetail *index = service<CIndexManager>().getIndex(key)) {
        return index->mBaseValue;
    }
    return mGetTradeDateFunc ? service<CStockManager>().getCurrentDateLastClose(key, mGetTradeDateFunc()) : 0.0;
}

void CRealtimeUiParam::setTradingDay(const TradingDay &day) {
    mSessions = day.sessions;
    mPointCount = day.pointCount;
}

void CRealtimeUiParam::resetAxis(const std::string &market, const std::string &code) {
    setTradingDay(tradingDay(tradingDayOf(market, code, mStockDetail, mShowFixedPriceDeal, *mServices)));
}

void CRealtimeUiParam::showFixedPriceDeal(bool show) {
    mShowFixedPriceDeal = show;
    setTradingDay(stockDay(show));
}

void CRealtimeUiParam::resize(const QRect &rect) {
    const qint64 width = qint64(rect.right()) - rect.left() + 1 - mRightAxisWidth - mLeftAxisWidth;
    mDayWidth = double(width) / qMax(mDayCount, 1);
}

int CRealtimeUiParam::getIndexByTime(const QTime &time) const {
    return getIndexByTime(axisMinute(time));
}

int CRealtimeUiParam::getIndexByTime(int minute) const {
    return indexOfMinute(mSessions, minute, hasNightSession(mStockDetail, *mServices));
}

QDateTime CRealtimeUiParam::getDateTimeByIndex(int index) const {
    const QDateTime now = service<CHostClock>().currentDateTime();
    if (index < 0) {
        return QDateTime(now.date(), QTime(0, 0));
    }
    const int minute = minuteOfIndex({mSessions, mPointCount}, index);
    const QTime time = minute == -1 ? QTime(0, 0) : QTime(minute / 60, minute % 60);
    if (!time.isValid()) {
        // The hour 24 of a night session. A QDateTime with a date would turn it into the morning's midnight.
        return QDateTime();
    }
    if (mGetTradeDateFunc) {
        return QDateTime(GZ::exchangeDate(uint(mGetTradeDateFunc())), time);
    }
    QDateTime dateTime = now;
    dateTime.setTime(time);
    return dateTime;
}

QString CRealtimeUiParam::getTimeTextByIndex(int index) const {
    const bool midnight = index >= 0 && minuteOfIndex({mSessions, mPointCount}, index) == kMidnight;
    return midnight ? QStringLiteral("24:00") : getDateTimeByIndex(index).toString(GZ::kMinuteFormat);
}

int CRealtimeUiParam::getXAxisByIndex(int index) const {
    return pixelOfIndex(mDayWidth, mPointCount, index);
}

int CRealtimeUiParam::getIndexByXAxis(int x) const {
    return indexOfPixel(mDayWidth, mPointCount, x);
}

} // namespace TC
