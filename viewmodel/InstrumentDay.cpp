#include "viewmodel/InstrumentDay.h"

#include "host/services/CConfigService.h"
#include "host/services/CTradeOpenCloseTimeManager.h"
#include "host/services/StockTypeCenter.h"

#include <QStringList>

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

ETradingDay dayOfStockMarket(const CInstrumentDetailPtr &shown, const std::string &market,
                             const std::string &code, bool afterHours) {
    if (afterHours && isBoardStock(shown)) {
        return ETradingDay::AfterHours;
    }
    const bool isLong =
        StockTypeCenter::isTypedStock(126, market, code) || StockTypeCenter::isTypedStock(100017, market, code);
    return isLong ? ETradingDay::LongAfternoon : ETradingDay::Stock;
}

bool hasNightSession(const QString &market, const QString &code) {
    return CSingletonT<CTradeOpenCloseTimeManager>::instance().hasNightQuoter(market, code);
}

} // namespace

ETradingDay tradingDayOf(const std::string &market, const std::string &code, const CInstrumentDetailPtr &shown,
                         bool afterHours) {
    // The night session comes first: a commodity future that has one does not get the day of its market.
    if (hasNightSession(QString::fromStdString(market), QString::fromStdString(code))) {
        return ETradingDay::Night;
    }
    if (market == "SH" || market == "SZ") {
        return dayOfStockMarket(shown, market, code, afterHours);
    }
    return tradingDayOfMarket(market, code, shown ? shown->mProductId : std::string());
}

bool hasNightSession(const CInstrumentDetailPtr &detail) {
    return hasNightSession(getDetailQsMarket(detail), getDetailQsCode(detail));
}

bool hasUnderlyingDay(const CInstrumentDetailPtr &detail) {
    static const QStringList kStockMarkets{QStringLiteral("SH"), QStringLiteral("SZ"), QStringLiteral("SSE"),
                                           QStringLiteral("SZSE")};
    return detail && kStockMarkets.contains(getDetailQsMarket(detail)) && detail->mUnderlying &&
           !detail->mUnderlying->mMarket.empty() && !detail->mUnderlying->mCode.empty();
}

} // namespace TC
