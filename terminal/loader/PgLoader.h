#pragma once

#include "terminal/history/PgConnection.h"
#include "terminal/loader/LoadBatch.h"

namespace terminal {

/// What has become of a batch.
struct LoadOutcome {
    int days = 0; ///< that are new, or have minutes more than before
    int bars = 0; ///< of those days
    int known = 0; ///< days that were there with all their minutes
};

/// Puts days into the tables of a server: a batch in one transaction, whole or not at all. Minutes that are there have to be the same;
/// others are added to their day. Several may do that at once.
class PgLoader {
public:
    explicit PgLoader(const HistoryAddress &address);

    /// Makes what of the tables is not there.
    HistoryFailure prepare();
    HistoryFailure put(const LoadBatch &batch, LoadOutcome &outcome);

private:
    /// A day on its way, in the order of rows and days of the server.
    struct Placed {
        int seen = 0; ///< bars that the server has of it
        LoadedDay day;
    };
    using PlacedDays = std::map<std::pair<int, int>, Placed>;

    HistoryFailure readRows(QMap<QString, int> &rows);
    HistoryFailure placeInstruments(const LoadBatch &batch, QMap<QString, int> &rows);
    HistoryFailure attempt(const LoadBatch &batch, const QMap<QString, int> &rows, bool isAlone,
                           bool &isOvertaken, LoadOutcome &outcome);
    HistoryFailure mergeKnown(const QMap<int, QString> &keys, PlacedDays &days, LoadOutcome &outcome);
    HistoryFailure mergeOf(int instrument, const QString &key, PlacedDays &days);
    HistoryFailure stage(const PlacedDays &days);
    HistoryFailure putInPlace(bool &isOvertaken);

    PgConnection mConnection;
};

} // namespace terminal
