#pragma once

#include <QString>
#include <QVector>

namespace terminal {

/// A named list of instruments.
struct QuoteList {
    QString name;
    QVector<QString> keys;
};

/// The newest price of an instrument and its close of the day before.
struct InstrumentQuote {
    double price = 0.0; ///< 0 when it is not known
    double lastClose = 0.0;
    int decimals = 2;

    bool isKnown() const { return price > 0.0 && lastClose > 0.0; }
    /// As a ratio.
    double change() const { return price / lastClose - 1.0; }
};

} // namespace terminal
