#pragma once

#include "host/records/CIndexDetail.h"
#include "terminal/market/Instrument.h"
#include "terminal/market/MarketCalendar.h"

#include <QHash>
#include <QMap>
#include <QSet>
#include <QString>
#include <QVector>

namespace terminal {

/// A sector of one classification level.
struct Sector {
    int level = 1; ///< 1 the coarsest, 3 the finest
    QString name;
    QString indexKey; ///< key of its index, or empty
    QVector<QString> members;
};

/// A user-defined index and its stored last value.
struct UserIndex {
    QString key; ///< "CD" and a code
    TC::CIndexDetail detail;
    double lastValue = 0.0;
};

/// A position of a portfolio.
struct PortfolioPosition {
    QString key;
    double quantity = 0.0; ///< shares or contracts, negative when short
};

/// A portfolio; its key is "TZZH" and its number.
struct Portfolio {
    int number = 0;
    QString name;
    QVector<PortfolioPosition> positions;

    QString key() const { return QStringLiteral("TZZH%1").arg(number); }
};

/// Everything of the store but the bars, as it stood when it was read. Never changed once it is shared.
struct Catalogue {
    QMap<QString, Instrument> instruments; ///< by key
    QMap<QString, MarketCalendar> calendars; ///< by market, those with exceptions or instruments
    QVector<Sector> sectors;
    QHash<QString, QSet<QString>> convertibles; ///< bonds of a share, and shares of a bond
    QHash<QString, QString> hShareOf; ///< by the key of the mainland share
    QHash<QString, QString> aShareOf; ///< by the key of the Hong Kong share
    QMap<QString, UserIndex> indexes; ///< by key
    QMap<QString, Portfolio> portfolios; ///< by key
    QSet<QString> nightMarkets; ///< markets with an instrument that trades at night

    const Instrument *find(const QString &key) const {
        const auto found = instruments.constFind(key);
        return found == instruments.constEnd() ? nullptr : &*found;
    }
    MarketCalendar calendar(const QString &market) const {
        const auto found = calendars.constFind(market);
        return found == calendars.constEnd() ? MarketCalendar::ofMarket(market) : *found;
    }
};

} // namespace terminal
