#pragma once

#include "terminal/market/MinuteBar.h"

#include <QString>
#include <QVector>

#include <functional>

namespace terminal {

class CMarketStore;
class SimulatedExchange;

/// What instruments are ranked by over a span, by the numbers of the ranking dialog.
enum EStageCriterion : int {
    eStageHigh = 0,
    eStageLow = 1,
    eStageVolume = 2,
    eStageChange = 3, ///< last price less first price
    eStageChangeRatio = 4, ///< that over the first price
    eStageAmount = 5,
    eStageAmplitude = 6, ///< highest less lowest price, over the first one
    eStageAverage = 7, ///< of the prices of the minutes
    kStageCriteria = 8,
};

/// The numbers of one instrument over a span, those of the minutes in it and of the last price in front of it when no
/// minute stands at its start.
struct StageFigures {
    double first = 0.0; ///< price at the start
    double last = 0.0;
    double high = 0.0;
    double low = 0.0;
    double average = 0.0;
    double volume = 0.0; ///< shares or contracts
    double amount =
        0.0; ///< in money; where the source does not know it, price times volume, of an index nothing

    /// The number of an EStageCriterion; 0 of any other, and of a ratio to a price of 0.
    double value(int criterion) const;
};

/// An instrument and its numbers.
struct StageRow {
    QString key;
    QString name;
    int decimals = 2; ///< of its prices
    StageFigures figures;
};

/// The figures of the bars of a day from `start` up to and with `end`, in milliseconds since the epoch. False when none
/// lies there.
bool stageFigures(const MinuteBars &day, qint64 start, qint64 end, bool isIndex, StageFigures &figures);

/// What a ranking asks now and then: instruments done and in all. False stops it.
using StageProgress = std::function<bool(int done, int total)>;

/// The figures of every instrument that was traded on the trading day of `start` between `start` and `end`, in
/// milliseconds since the epoch, in the order of keys; simulated instruments' running day up to now. On any thread;
/// stopped, what was done so far.
QVector<StageRow> stageRows(CMarketStore &store, SimulatedExchange &exchange, qint64 start, qint64 end,
                            const StageProgress &progress = {});

/// Puts the largest number of a criterion first, in the order of keys where they are equal.
void rankStage(QVector<StageRow> &rows, int criterion);

} // namespace terminal
