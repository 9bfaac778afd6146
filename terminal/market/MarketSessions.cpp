#include "terminal/market/MarketSessions.h"

#include <QHash>

#include <algorithm>

namespace terminal {
namespace {

const DaySessions::Table kStockSessions{{570, 690}, {781, 900}};
const DaySessions::Table kAfterHoursSessions{{570, 690}, {781, 900}, {905, 930}};
const DaySessions::Table kLongAfternoonSessions{{570, 690}, {781, 930}};
const DaySessions::Table kTreasurySessions{{555, 690}, {781, 915}};
const DaySessions::Table kCommoditySessions{{540, 615}, {631, 690}, {811, 900}};
const DaySessions::Table kAfterNightSessions{{541, 615}, {631, 690}, {811, 900}};
const DaySessions::Table kHongKongSessions{{570, 720}, {781, 970}};
const DaySessions::Table kOverseasSessions{{540, 955}, {1001, 1440}, {1, 120}};

const QStringList kCommodityMarkets{QStringLiteral("DF"),   QStringLiteral("DCE"), QStringLiteral("ZF"),
                                    QStringLiteral("CZCE"), QStringLiteral("SF"),  QStringLiteral("SHFE"),
                                    QStringLiteral("INE"),  QStringLiteral("GFEX")};
const QStringList kFinancialMarkets{QStringLiteral("IF"), QStringLiteral("CFFEX")};
const QStringList kHongKongMarkets{QStringLiteral("HK"), QStringLiteral("HGT"), QStringLiteral("SSEHKEX"),
                                   QStringLiteral("SGT"), QStringLiteral("SZSEHKEX")};
const QStringList kOtherMarkets{QStringLiteral("SH"), QStringLiteral("SZ"), QStringLiteral("BJ"),
                                QStringLiteral("YSWP"), QStringLiteral("BKZS")};

/// Short words of exchanges.
const QHash<QString, QString> kExchanges{{QStringLiteral("SF"), QStringLiteral("SHFE")},
                                         {QStringLiteral("DF"), QStringLiteral("DCE")},
                                         {QStringLiteral("ZF"), QStringLiteral("CZCE")},
                                         {QStringLiteral("IF"), QStringLiteral("CFFEX")}};
constexpr int kLatestNightEnd = 150; ///< 02:30

/// Products by the end of their night session.
struct NightProducts {
    int end;
    const char *products;
};
constexpr NightProducts kNightProducts[] = {
    {150, "AU AG SC"},
    {60, "CU AL ZN PB NI SN SS AO AD BC"},
    {1380, "RB HC BU RU BR FU SP OP LU NR "
           "I J JM A B M Y P C CS L V PP EG EB PG RR BZ "
           "MA TA SR CF RM FG SA OI ZC CY PF PX SH PR PL"},
    {0, "WR EC JD LH LG BB FB SM SF AP CJ JR RI LR PM WH RS UR PK SI LC PS PT PD"},
};

QHash<QString, int> nightEnds() {
    QHash<QString, int> ends;
    for (const NightProducts &group : kNightProducts) {
        for (const QString &product : QString::fromLatin1(group.products).split(QLatin1Char(' '))) {
            ends.insert(product, group.end);
        }
    }
    return ends;
}

DaySessions shareSessions(const QVector<int> &types) {
    if (types.contains(277) || types.contains(10006)) {
        return DaySessions(kAfterHoursSessions);
    }
    return DaySessions(types.contains(126) || types.contains(100017) ? kLongAfternoonSessions : kStockSessions);
}

} // namespace

const QStringList &knownMarkets() {
    static const QStringList all = kOtherMarkets + kFinancialMarkets + kCommodityMarkets + kHongKongMarkets;
    return all;
}

bool isFuturesMarket(const QString &market) {
    return kCommodityMarkets.contains(market) || kFinancialMarkets.contains(market);
}

QString exchangeOf(const QString &market) {
    return kExchanges.value(market, market);
}

bool tellsPortfolioAxis(const QString &market) {
    const QString exchange = exchangeOf(market);
    return std::find(kExchanges.begin(), kExchanges.end(), exchange) != kExchanges.end();
}

QString productOfCode(const QString &code) {
    const auto end = std::find_if(code.begin(), code.end(), [](QChar c) { return !c.isLetter(); });
    return code.left(static_cast<int>(end - code.begin())).toUpper();
}

int nightEndOfProduct(const QString &product) {
    static const QHash<QString, int> ends = nightEnds();
    return ends.value(product, -1);
}

DaySessions commoditySessions(int nightEnd) {
    if (nightEnd <= 0) {
        return DaySessions(kCommoditySessions);
    }
    DaySessions::Table table{{1260, std::max(nightEnd, 1260)}};
    if (nightEnd < 1260) { // past midnight
        table = {{1260, 1440}, {1, nightEnd}};
    }
    return DaySessions(table + kAfterNightSessions);
}

DaySessions portfolioSessions(const QString &market, bool hasNight) {
    if (hasNight) {
        return commoditySessions(kLatestNightEnd);
    }
    return DaySessions(kFinancialMarkets.contains(market) ? kStockSessions : kCommoditySessions);
}

DaySessions marketSessions(const SessionQuery &query) {
    const QString product = query.product.isEmpty() ? productOfCode(query.code) : query.product;
    if (query.market == QLatin1String("SH") || query.market == QLatin1String("SZ")) {
        return shareSessions(query.types);
    }
    if (kFinancialMarkets.contains(query.market)) {
        const bool treasury =
            QStringList{QStringLiteral("TS"), QStringLiteral("TF"), QStringLiteral("T")}.contains(product);
        return DaySessions(treasury ? kTreasurySessions : kStockSessions);
    }
    if (kCommodityMarkets.contains(query.market)) {
        return commoditySessions(nightEndOfProduct(product));
    }
    if (kHongKongMarkets.contains(query.market)) {
        return DaySessions(kHongKongSessions);
    }
    const bool overseas = query.market == QLatin1String("YSWP") && query.code != QLatin1String("CNINDEX");
    return DaySessions(overseas ? kOverseasSessions : kStockSessions);
}

} // namespace terminal
