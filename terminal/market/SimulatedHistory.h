#pragma once

#include "terminal/market/CMarketStore.h"
#include "terminal/market/HistorySource.h"
#include "terminal/market/SimulatedInstruments.h"

namespace terminal {

/// The past of the made-up market: any day before the running one, of its own instruments. A day starts from the close
/// of the stored day before it; one in front of all stored days leads up to the close that the first of them starts
/// from.
class SimulatedHistory : public HistorySource {
public:
    explicit SimulatedHistory(CMarketStore &store) : mStore(store) {}

    QVector<int> missingDays(const QString &key, qint64 start, qint64 end) override;
    QString fetchDay(const QString &key, int day) override;

private:
    double closeInFrontOf(const SimulatedInstrument &simulated, qint64 row, int firstDay);

    CMarketStore &mStore;
};

/// The bars of a day with all prices multiplied so that it closes at a price; volumes stay, and prices are on the tick.
MinuteBars closingAt(MinuteBars bars, double close, double tick);

} // namespace terminal
