// Lifetime, instrument and kind, roles of formulas, last closes.

#include "viewmodel/CRealtimeUiParam.h"

#include "host/drawing/LineColor.h"
#include "host/services/CIndexManager.h"
#include "host/services/CStockManager.h"
#include "host/services/CTradeOpenCloseTimeManager.h"
#include "host/services/StockTypeCenter.h"
#include "host/toolkit/ThemeColor.h"
#include "viewmodel/CRealTimeCustomIndexAxis.h"
#include "viewmodel/CRealTimeNomalAxis.h"
#include "viewmodel/CRealTimePortfolioAxis.h"
#include "viewmodel/TradingSessions.h"

#include <cmath>

namespace TC {
namespace {

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

/// Whether the axis of an instrument is that of its underlying.
bool hasUnderlyingAxis(const CInstrumentDetailPtr &detail) {
    static const QStringList kStockMarkets{QStringLiteral("SH"), QStringLiteral("SZ"), QStringLiteral("SSE"),
                                           QStringLiteral("SZSE")};
    return detail && kStockMarkets.contains(getDetailQsMarket(detail)) && detail->mUnderlying &&
           !detail->mUnderlying->mMarket.empty() && !detail->mUnderlying->mCode.empty();
}

bool isZero(double value) {
    return std::fabs(value) <= kValueTolerance;
}

} // namespace

CRealtimeUiParam::CRealtimeUiParam(EIndexViewType viewType)
    : mViewType(viewType), mAddStockColors(overlayColorsOfTheme()), mNormalAxis(new CRealTimeNomalAxis),
      mIndexAxis(new CRealTimeCustomIndexAxis), mPortfolioAxis(new CRealTimePortfolioAxis) {
    mCurrentAxis = mNormalAxis;
}

CRealtimeUiParam::CRealtimeUiParam(const CRealtimeUiParam &other)
    : mViewType(other.mViewType), mStockKind(other.mStockKind), mMaxAddStock(other.mMaxAddStock),
      mCrossShown(other.mCrossShown), mCursorByKey(other.mCursorByKey), mMouseIn(other.mMouseIn),
      mCrossX(other.mCrossX), mCrossIndex(other.mCrossIndex), mLeftAxisWidth(other.mLeftAxisWidth),
      mRightAxisWidth(other.mRightAxisWidth), mDayWidth(other.mDayWidth), mSessions(other.mSessions),
      mDataCount(other.mDataCount), mDayCount(other.mDayCount), mPointCount(other.mPointCount),
      mShowVolume(other.mShowVolume), mCanOverlaySector(other.mCanOverlaySector), mAddStocks(other.mAddStocks),
      mAddNoAxisStocks(other.mAddNoAxisStocks), mAddIndexes(copiesOf(other.mAddIndexes)),
      mSector(other.mSector), mAddStockColors(other.mAddStockColors), mStockColors(other.mStockColors),
      mRequestId(other.mRequestId), mGetTradeDateFunc(other.mGetTradeDateFunc), mLeftAxis(other.mLeftAxis),
      mRightAxis(other.mRightAxis), mStripScales(other.mStripScales), mLinkageFlags(other.mLinkageFlags),
      mLinkageShow(other.mLinkageShow), mLinkageAccounts(other.mLinkageAccounts),
      mLinkageStrategys(other.mLinkageStrategys), mLinkageStocks(other.mLinkageStocks),
      mLinkageBuys(other.mLinkageBuys), mLinkageSells(other.mLinkageSells),
      mLinkageAmounts(other.mLinkageAmounts), mLinkageProfits(other.mLinkageProfits),
      mLinkageBalances(other.mLinkageBalances), mStockAccounts(other.mStockAccounts),
      mFutureAccounts(other.mFutureAccounts), mFixedPriceLevel(other.mFixedPriceLevel),
      mFixedPriceRequest(other.mFixedPriceRequest), mPanelInfo(other.mPanelInfo),
      mAddSwBkzsLevel(other.mAddSwBkzsLevel), mAddBkzsCode(other.mAddBkzsCode),
      mFormulaAccount(other.mFormulaAccount), mAddStockFlags(other.mAddStockFlags),
      mAddConvertibleCodes(other.mAddConvertibleCodes), mValid(other.mValid), mStockDetail(other.mStockDetail),
      mIndexKey(other.mIndexKey), mPortfolioKey(other.mPortfolioKey),
      mNormalAxis(new CRealTimeNomalAxis(*other.mNormalAxis)),
      mIndexAxis(new CRealTimeCustomIndexAxis(*other.mIndexAxis)),
      mPortfolioAxis(new CRealTimePortfolioAxis(*other.mPortfolioAxis)),
      mShowFixedPriceDeal(other.mShowFixedPriceDeal) {
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
    CStockManager &stocks = CSingletonT<CStockManager>::instance();
    if (CSingletonT<CIndexManager>::instance().getIndex(key)) {
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
    if (CSingletonT<CTradeOpenCloseTimeManager>::instance().getTradeTime(
            getDetailQsMarket(mStockDetail), getDetailQsCode(mStockDetail), mSessions, mPointCount)) {
        return;
    }
    if (useUnderlying && hasUnderlyingAxis(mStockDetail)) {
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
    return key.compare(getStock(), Qt::CaseInsensitive) == 0;
}

int CRealtimeUiParam::getMainPanelID() const {
    return mPanelInfo ? mPanelInfo->mId : 0;
}

bool CRealtimeUiParam::isShowGroupIndexGraph() const {
    return isIndexEx(getDetailMarket(mStockDetail), getDetailCode(mStockDetail)) || mStockKind == eUserIndex;
}

void CRealtimeUiParam::setFormulaAccount(const QString &account) {
    mFormulaAccount = account;
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
            if (getDetailQsKey(overlay).compare(key, Qt::CaseInsensitive) == 0) {
                requestKey = getDetailQsCode(overlay);
            }
        }
    }
    CRealtimeBaseFormulaAxis *axis = axisOfKind(param.mStockKind);
    return axis && axis->fillRequestParam(param, requestKey, formula);
}

double CRealtimeUiParam::getLastClose() const {
    if (mStockKind == eInstrument) {
        return mGetTradeDateFunc ? CSingletonT<CStockManager>::instance().getCurrentDateLastClose(
                                       getDetailQsKey(mStockDetail), mGetTradeDateFunc())
                                 : getDetailLastClose(mStockDetail);
    }
    if (mStockKind != eUserIndex) {
        return 0.0;
    }
    const std::string key = mIndexKey.toStdString();
    double value = getUserdefineIndex(key);
    if (isZero(value)) {
        value = FormulaDispatch::getUserIndexLastClose(key);
    }
    return isZero(value) ? FormulaDispatch::getinitIndex(key) : value;
}

double CRealtimeUiParam::getLastClose(const QString &key) const {
    if (const CIndexDetail *index = CSingletonT<CIndexManager>::instance().getIndex(key)) {
        return index->mBaseValue;
    }
    return mGetTradeDateFunc
               ? CSingletonT<CStockManager>::instance().getCurrentDateLastClose(key, mGetTradeDateFunc())
               : 0.0;
}

} // namespace TC
