#pragma once

#include "terminal/market/BarDays.h"
#include "terminal/market/ImportOptions.h"
#include "terminal/market/ImportTarget.h"

#include <functional>

namespace terminal {

/// Shares of a lot.
constexpr double kLot = 100.0;

/// Whether a market is one of mainland shares, in which a lot is 100 of them.
bool isShareMarket(const QString &market);
/// Shares or contracts in one unit of a file's volume: as the user says, else by the money of all trades and the sum
/// of their prices weighed by volume, which are near each other when the volume is in shares.
double volumeUnit(const ImportOptions &options, const QString &market, double money, double weighed);

/// Takes the days of an import to their target. Simulated days give way; minutes that were imported
/// before have to be the same.
class ImportedDays {
public:
    /// Tells the line of the file that a minute comes from, by its time.
    using LineOf = std::function<int(qint64 time)>;

    /// `sessionsFromFile` keeps with each day the sessions that its bars show.
    ImportedDays(ImportTarget &target, bool sessionsFromFile)
        : mTarget(target), mSessionsFromFile(sessionsFromFile) {}

    /// Adds the bars of a day of an instrument, of which `days` knows the sessions.
    BarFault put(const Instrument &instrument, const BarDays &days, const QDate &day, const LineOf &lineOf);
    /// Ends the days of an instrument: notes the dates that the bars have shown to be trading days, or none, and the
    /// closes before the days, and tells what was imported from when to when.
    void finish(const Instrument &instrument, const BarDays &days, ImportedBars &imported);

private:
    BarFault mergeStored(const Instrument &instrument, int day, const LineOf &lineOf, MinuteBars &bars);

    DaySessions keptSessions(const Instrument &instrument, const DaySessions &ofDay, const QDate &day,
                             const MinuteBars &bars) const;

    ImportTarget &mTarget;
    const bool mSessionsFromFile;
};

} // namespace terminal
