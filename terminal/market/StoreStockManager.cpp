#include "terminal/market/StoreStockManager.h"

#include "host/services/CHostClock.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketSessions.h"

namespace terminal {
namespace {

const QString kDefaultKey = QStringLiteral("SH600000");
const QString kPortfolioMarket = QStringLiteral("TZZH");

qint64 nowMilliseconds() {
    return TC::hostNow().toMSecsSinceEpoch();
}

} // namespace

TC::CInstrumentDetailPtr StoreStockManager::makeDetail(const Instrument &instrument, int day) {
    auto detail = std::make_shared<TC::CInstrumentDetail>();
    detail->mMarket = instrument.market.toStdString();
    detail->mCode = instrument.code.toStdString();
    detail->mName = instrument.name.toStdString();
    detail->mProductId = instrument.product.toStdString();
    detail->mFloatShares = instrument.floatShares;
    detail->mPriceTick = instrument.priceTick;
    // Kept for long, so not a close that is remembered.
    detail->mLastClose = previousCloseOf(mStore, instrument.key(), day).price;
    // The index that a fund tracks lends it no trading hours.
    if (!instrument.underlyingCode.isEmpty() && instrument.kind != InstrumentKind::Fund) {
        detail->mUnderlying = std::make_shared<TC::CUnderlyingInfo>();
        detail->mUnderlying->mCode = instrument.underlyingCode.toStdString();
        detail->mUnderlying->mMarket = instrument.underlyingMarket.toStdString();
    }
    return detail;
}

TC::CInstrumentDetailPtr StoreStockManager::getInstrumentDetail(const QString &key) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *instrument = catalogue->find(key);
    if (!instrument) {
        return nullptr;
    }
    const int day = getLastTradingDay(instrument->market);
    {
        std::lock_guard<std::mutex> hold(mLock);
        if (mKnown.lock() != catalogue) {
            mDetails.clear();
            mKnown = catalogue;
        }
        const auto found = mDetails.constFind(key);
        if (found != mDetails.constEnd() && found->first == day) {
            return found->second;
        }
    }
    const TC::CInstrumentDetailPtr detail = makeDetail(*instrument, day);
    std::lock_guard<std::mutex> hold(mLock);
    mDetails[key] = {day, detail};
    return detail;
}

bool StoreStockManager::isExist(const QString &key) {
    return mStore.catalogue()->find(key) != nullptr;
}

bool StoreStockManager::isPortfolio(const QString &key) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    return catalogue->portfolios.contains(key) || catalogue->portfolios.contains(kPortfolioMarket + key);
}

TC::CInstrumentDetailPtr StoreStockManager::getDefaultDetail() {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    if (catalogue->find(kDefaultKey) || catalogue->instruments.isEmpty()) {
        return getInstrumentDetail(kDefaultKey);
    }
    return getInstrumentDetail(catalogue->instruments.firstKey());
}

double StoreStockManager::getCurrentDateLastClose(const QString &key, int date) {
    if (date == 0) {
        const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
        const Instrument *instrument = catalogue->find(key);
        date = instrument ? getLastTradingDay(instrument->market) : 0;
    }
    return mCloses.of(key, date).price;
}

double StoreStockManager::getCurrentDateLastClose(const TC::CInstrumentDetailPtr &detail, int date) {
    return getCurrentDateLastClose(TC::getDetailQsKey(detail), date);
}

int StoreStockManager::getLastTradingDay(const QString &market) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    return dayOf(
        catalogue->calendar(market).dayAt(nowMilliseconds(), catalogue->nightMarkets.contains(market)));
}

int StoreStockManager::getShiftTradeDate(const QString &market, int date, int shift) {
    return dayOf(mStore.catalogue()->calendar(market).shifted(dateOf(date), shift));
}

QPair<qint64, qint64> StoreStockManager::getStartEndTime(const TC::CInstrumentDetailPtr &detail, int &date) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *instrument = catalogue->find(TC::getDetailQsKey(detail));
    const QDate day = dateOf(date);
    DaySessions sessions = instrument ? mStore.daySessions(instrument->id, date) : DaySessions();
    if (sessions.isEmpty()) {
        sessions = instrument && !instrument->sessions.isEmpty()
                       ? instrument->sessions
                       : marketSessions({QStringLiteral("SH"), QString(), QString(), {}});
    }
    const QString market = instrument ? instrument->market : TC::getDetailQsMarket(detail);
    const QDate evening = sessions.hasNight() ? catalogue->calendar(market).eveningBefore(day) : QDate();
    const qint64 start = evening.isNull() ? timeOf(day, 0) : timeOf(evening, sessions.table().first().first);
    return {start, sessions.endTime(day, evening)};
}

} // namespace terminal
