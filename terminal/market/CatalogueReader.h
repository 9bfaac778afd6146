#pragma once

#include "terminal/market/Catalogue.h"
#include "terminal/market/StoreRows.h"

#include <QHash>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace terminal {

/// Reads the tables of a market store into a catalogue, one after the other; the first error ends the reading.
///
/// The instruments come first: what is read later refers to them by their rows.
class CatalogueReader {
public:
    /// `catalogue` is empty, and outlives the reader as `faults` does, which hears of the rows that are set aside.
    CatalogueReader(const QSqlDatabase &database, StoreFaults &faults, Catalogue &catalogue);

    /// False when a table could not be read, for the reason that error() tells.
    bool read();
    QSqlError error() const { return mError; }

private:
    using Sessions = QMap<qint64, DaySessions::Table>; ///< by the row of the instrument

    bool eachRow(const char *table, const char *columns, const StoreRows::Take &take, const char *rest = "");
    Instrument *byId(const QVariant &id);
    QString keyOf(const QVariant &id) const { return mKeys.value(id.toLongLong()); }
    bool readInstruments();
    bool takeInstrument(const QSqlQuery &row);
    bool readSessions();
    void takeSessions(const Sessions &sessions);
    bool readCalendars();
    MarketCalendar &calendarOf(const QString &market);
    bool readSectors();
    bool readSectorMembers(QMap<qint64, Sector> &sectors);
    bool readLinks();
    bool readIndexes();
    bool readPortfolios();

    StoreRows mRows;
    StoreFaults &mFaults;
    QSqlError mError;
    Catalogue &mCatalogue;
    QHash<qint64, QString> mKeys; ///< of instruments, by row
};

} // namespace terminal
