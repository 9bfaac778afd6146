#pragma once

#include "terminal/market/MinuteBar.h"

#include <QByteArray>

namespace terminal {

/// Rows for a COPY of minute_bars WITH (FORMAT binary).
class PgCopyRows {
public:
    PgCopyRows();

    void add(int instrument, int day, const MinuteBar &bar);
    /// Ends the rows.
    void finish();
    int size() const { return mBytes.size(); }
    /// What there is so far; the next bytes follow it.
    QByteArray take();

private:
    template <class Number> void put(Number value);
    template <class Number> void putField(Number value);

    QByteArray mBytes;
};

} // namespace terminal
