#pragma once

#include "terminal/market/DaySessions.h"

#include <QString>
#include <QStringList>

namespace terminal {

/// What the sessions of an instrument depend on.
struct SessionQuery {
    QString market;
    QString code;
    QString product; ///< of a future; letters in front of its code when empty
    QVector<int> types;
};

/// Market words that the terminal knows.
const QStringList &knownMarkets();
/// Whether a market word is that of an exchange for commodity or financial futures.
bool isFuturesMarket(const QString &market);
/// The name of an exchange that a market word stands for: "SF" is the short word of "SHFE". Any other word stays.
QString exchangeOf(const QString &market);
/// Whether futures of this market, by either word, tell the axis of a portfolio that holds them.
bool tellsPortfolioAxis(const QString &market);
/// Product of a futures code: its letters in front, in upper case ("au2612" is of "AU").
QString productOfCode(const QString &code);

/// When a commodity future's night session ends: a minute since midnight that its trading day has as its last
/// one of the night (1380 is 23:00, 60 is 01:00, 150 is 02:30), 0 for a product without one, and -1 for an unknown
/// product.
int nightEndOfProduct(const QString &product);
/// Sessions of a commodity future whose night ends at that minute; 0 for none.
DaySessions commoditySessions(int nightEnd);

/// The axis of a future in a portfolio, whose positions tell nothing of their products: that of its market, and with a
/// night session the longest one.
DaySessions portfolioSessions(const QString &market, bool hasNight);

/// Sessions of an instrument as its market trades it, after-hours trading included. A future of an unknown product has
/// no night session.
DaySessions marketSessions(const SessionQuery &query);

} // namespace terminal
