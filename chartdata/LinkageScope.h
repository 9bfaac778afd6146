#pragma once

#include <QSet>
#include <QString>

#include <cstddef>
#include <set>
#include <string>

namespace TC {

/// Views of CRealtimeUiParam::mLinkageFlags: none of them alone, or any of the others.
enum ELinkageView : int { eNoLinkage = 1, eAccountView = 2, eSelectedDataView = 4 };
/// Places of CRealtimeUiParam::mLinkageShow.
enum ELinkageShow : std::size_t {
    eShowOrders,
    eShowDeals,
    eShowTasks,
    eShowTotals,
    eShowNet,
    eShowProfit,
    eShowBalance,
    eFilterStrategies
};

/// Whether the market word is that of a futures market, whose accounts are kept apart from those for stocks.
inline bool isFuturesMarket(const QString &market) {
    static const QSet<QString> kMarkets = {
        QStringLiteral("DF"),   QStringLiteral("DCE"),   QStringLiteral("ZF"),
        QStringLiteral("CZCE"), QStringLiteral("SF"),    QStringLiteral("SHFE"),
        QStringLiteral("IF"),   QStringLiteral("CFFEX"), QStringLiteral("INE")};
    return kMarkets.contains(market);
}

/// Whose trading a chart shows, and what its prices are placed against.
struct LinkageScope {
    std::set<std::string> accounts;
    std::set<std::string> instruments; ///< keys
    std::set<std::string> strategies;
    bool filter = false; ///< only records of the strategies
    std::string key; ///< of the main instrument; empty for a user-defined index
    double close = 0.0; ///< reference price of the chart

    /// Whether a record of this strategy is shown.
    bool admits(const std::string &strategy) const {
        return !filter || (!strategy.empty() && strategies.count(strategy) > 0);
    }
};

} // namespace TC
