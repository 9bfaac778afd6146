#pragma once

#include "host/records/Enumerations.h"
#include "terminal/market/DaySessions.h"

#include <QString>
#include <QVector>

namespace terminal {

/// What an instrument is. Stored as these numbers.
enum class InstrumentKind : int {
    Stock = 0,
    Index = 1,
    Fund = 2,
    ConvertibleBond = 3,
    Future = 4,
    SectorIndex = 5,
};

/// One instrument of the store.
struct Instrument {
    qint64 id = 0; ///< row of the store
    QString market;
    QString code;
    QString name;
    QString initials; ///< first letters of the name's pinyin, for typing
    QString product; ///< product of a futures contract, such as "TF"
    InstrumentKind kind = InstrumentKind::Stock;
    QVector<int> types; ///< type numbers, such as 277 for the growth board
    double priceTick = 0.01; ///< smallest price step
    double lastClose = TC::kUnsetValue; ///< issue or reference price, where no earlier day is stored
    double floatShares = 0.0;
    QString underlyingMarket; ///< of what a bond converts to, a future delivers, or a fund tracks
    QString underlyingCode;
    DaySessions sessions;
    bool ownSessions = false; ///< the sessions are not those that the market has as a rule
    bool simulated = false; ///< the simulated exchange runs it

    QString key() const { return market + code; }
    QString underlyingKey() const { return underlyingMarket + underlyingCode; }
    /// Kinds whose volume has no money of its own.
    bool isIndex() const { return kind == InstrumentKind::Index || kind == InstrumentKind::SectorIndex; }
    /// Trades at the closing price after the close, outside the ordinary day.
    bool hasAfterHours() const { return types.contains(277) || types.contains(10006); }
};

} // namespace terminal
