// The trading-time axis of the instrument shown: the table of a day, times, positions and pixels.

#include "host/services/CConfigService.h"
#include "host/services/CHostClock.h"
#include "host/services/CTradeOpenCloseTimeManager.h"
#include "host/services/StockTypeCenter.h"
#include "viewmodel/CRealtimeUiParam.h"
#include "viewmodel/TradingSessions.h"

namespace TC {
namespace {

using kvservice::StockTypeCenter;

/// Whether the instrument is of the growth board, whose after-hours session the user's board rules govern.
bool isBoardStock(const CInstrumentDetailPtr &detail) {
    if (!detail) {
        return false;
    }
    const CUserConfig *config = getUserConfig();
    return (config && config->isBoardNewRules() &&
            StockTypeCenter::isTypedStock(277, detail->mMarket, detail->mCode)) ||
           StockTypeCenter::isTypedStock(10006, "SZ", detail->mCode);
}

ETradingDay dayOfStockMarket(const CInstrumentDetailPtr &detail, const std::string &market,
                             const std::string &code, bool showFixedPriceDeal) {
    if (showFixedPriceDeal && isBoardStock(detail)) {
        return ETradingDay::AfterHours;
    }
    if (StockTypeCenter::isTypedStock(126, market, code) ||
        StockTypeCenter::isTypedStock(100017, market, code)) {
        return ETradingDay::LongAfternoon;
    }
    return ETradingDay::Stock;
}

bool hasNightSession(const QString &market, const QString &code) {
    return CSingletonT<CTradeOpenCloseTimeManager>::instance().hasNightQuoter(market, code);
}

} // namespace

void CRealtimeUiParam::setTradingDay(const TradingDay &day) {
    mSessions = day.sessions;
    mPointCount = day.pointCount;
}

void CRealtimeUiParam::resetAxis(const std::string &market, const std::string &code) {
    // The night session comes first: a commodity future that has one does not get the day of its market.
    if (hasNightSession(QString::fromStdString(market), QString::fromStdString(code))) {
        setTradingDay(tradingDay(ETradingDay::Night));
    } else if (market == "SH" || market == "SZ") {
        setTradingDay(tradingDay(dayOfStockMarket(mStockDetail, market, code, mShowFixedPriceDeal)));
    } else {
        const std::string productId = mStockDetail ? mStockDetail->mProductId : std::string();
        setTradingDay(tradingDay(tradingDayOfMarket(market, code, productId)));
    }
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
    const bool night = hasNightSession(getDetailQsMarket(mStockDetail), getDetailQsCode(mStockDetail));
    return indexOfMinute(mSessions, minute, night);
}

QDateTime CRealtimeUiParam::getDateTimeByIndex(int index) const {
    const QDateTime now = hostNow();
    if (index < 0) {
        return QDateTime(now.date(), QTime(0, 0));
    }
    const int minute = minuteOfIndex({mSessions, mPointCount}, index);
    const QTime time = minute == -1 ? QTime(0, 0) : QTime(minute / 60, minute % 60);
    if (!time.isValid()) {
        // The hour 24 of a night session. A QDateTime with a date would turn it into the morning's midnight.
        return QDateTime();
    }
    QDateTime dateTime = mGetTradeDateFunc ? QDateTime::fromTime_t(uint(mGetTradeDateFunc())) : now;
    dateTime.setTime(time);
    return dateTime;
}

int CRealtimeUiParam::getXAxisByIndex(int index) const {
    return pixelOfIndex(mDayWidth, mPointCount, index);
}

int CRealtimeUiParam::getIndexByXAxis(int x) const {
    return indexOfPixel(mDayWidth, mPointCount, x);
}

} // namespace TC
