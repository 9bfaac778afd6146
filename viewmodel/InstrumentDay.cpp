#include "viewmodel/InstrumentDay.h"

#include "host/services/CConfigService.h"
#include "host/services/CTradeOpenCloseTimeManager.h"
#include "host/services/ServiceContext.h"
#include "host/services/StockTypeCenter.h"

#include <QStringList>

namespace TC {
namespace {

using kvservice::StockTypeCenter;

/// Whether the instrument is of the growth board, whose after-hours session the user's board rules govern.
bool isBoardStock(const CInstrumentDetailPtr &detail, const ServiceContext &services) {
    if (!detail) {
        return false;
    }
    const CUserConfig *config = services.get<CConfigService>().userConfig();
    StockTypeCenter &types = services.get<StockTypeCenter>();
    return (config && config->isBoardNewRules() && types.isOfType(277, detail->mMarket, detail->mCode)) ||
           types.isOfType(10006, "SZ", detail->mCode);
}

ETradingDay dayOfStockMarket(const CInstrumentDetailPtr &shown, const std::string &market,
                             const std::string &code, bool afterHours, const ServiceContext &services) {
    if (afterHours && isBoardStock(shown, services)) {
        return ETradingDay::AfterHours;
    }
    StockTypeCenter &types = services.get<StockTypeCenter>();
    const bool isLong = types.isOfType(126, market, code) || types.isOfType(100017, market, code);
    return isLong ? ETradingDay::LongAfternoon : ETradingDay::Stock;
}

bool hasNightSession(const QString &market, const QString &code, const ServiceContext &services) {
    return services.get<CTradeOpenCloseTimeManager>().hasNightQuoter(market, code);
}

} // namespace

ETradingDay tradingDayOf(const std::string &market, const std::string &code, const CInstrumentDetailPtr &shown,
                         bool afterHours, const ServiceContext &services) {
    // The night session comes first: a commodity future that has one does not get the day of its market.
    if (hasNightSession(QString::fromStdString(market), QString::fromStdString(code), services)) {
        return ETradingDay::Night;
    }
    if (market == "SH" || market == "SZ") {
        return dayOfStockMarket(shown, market, code, afterHours, services);
    }
    return tradingDayOfMarket(market, code, shown ? shown->mProductId : std::string());
}

bool hasNightSession(const CInstrumentDetailPtr &detail, const ServiceContext &services) {
    return hasNightSession(getDetailQsMarket(detail), getDetailQsCode(detail), services);
}

bool hasUnderlyingDay(const CInstrumentDetailPtr &detail) {
    static const QStringList kStockMarkets{QStringLiteral("SH"), QStringLiteral("SZ"), QStringLiteral("SSE"),
                                           QStringLiteral("SZSE")};
    return detail && kStockMarkets.contains(getDetailQsMarket(detail)) && detail->mUnderlying &&
           !detail->mUnderlying->mMarket.empty() && !detail->mUnderlying->mCode.empty();
}

} // namespace TC
