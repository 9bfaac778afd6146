#include "terminal/formula/RequestDays.h"

#include "host/services/CStockManager.h"
#include "terminal/market/MarketDate.h"

namespace terminal {
namespace {

constexpr int kAfterHoursMode = 3; ///< mDataMode of a fixed-price request
const QString kIndexMarket = QStringLiteral("CD"); ///< of user-defined indexes

} // namespace

int requestDayOf(const TC::CFormulaParam &param) {
    if (isAfterHours(param) || param.mMarket == kIndexMarket) {
        return dayOf(dateAt(param.mStart.first));
    }
    auto &stocks = TC::CSingletonT<TC::CStockManager>::instance();
    const TC::CInstrumentDetailPtr detail = stocks.getInstrumentDetail(param.mMarket + param.mCode);
    const QDate end = dateAt(param.mEnd.first);
    const QPair<qint64, qint64> range(param.mStart.first, param.mEnd.first);
    // A day of an overseas market may end on the date that follows.
    for (const QDate &date : {end, end.addDays(-1)}) {
        int day = dayOf(date);
        if (detail && stocks.getStartEndTime(detail, day) == range) {
            return dayOf(date);
        }
    }
    return dayOf(end);
}

QString feedKeyOf(const TC::CFormulaParam &param) {
    return param.mMarket == kIndexMarket ? param.mCode : param.mMarket + param.mCode;
}

bool isAfterHours(const TC::CFormulaParam &param) {
    return param.mDataMode == kAfterHoursMode;
}

} // namespace terminal
