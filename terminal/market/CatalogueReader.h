#pragma once

#include "terminal/market/Catalogue.h"

#include <QHash>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <functional>

namespace terminal {

/// Reads the tables of a market store into a catalogue, one after the other; the first error ends the reading.
///
/// The instruments come first: what is read later refers to them by their rows.
class CatalogueReader {
public:
    /// `catalogue` is empty, and outlives the reader.
    CatalogueReader(const QSqlDatabase &database, Catalogue &catalogue);

    /// False when a table could not be read, for the reason that error() tells.
    bool read();
    QSqlError error() const { return mQuery.lastError(); }

private:
    using Sessions = QMap<qint64, DaySessions::Table>; ///< by the row of the instrument

    bool eachRow(const QString &statement, const std::function<void(const QSqlQuery &)> &take);
    Instrument *byId(const QVariant &id);
    QString keyOf(const QVariant &id) const { return mKeys.value(id.toLongLong()); }
    bool readInstruments();
    void takeInstrument(const QSqlQuery &row);
    void takeSessions(const Sessions &sessions);
    bool readCalendars();
    MarketCalendar &calendarOf(const QString &market);
    bool readSectors();
    bool readLinks();
    bool readIndexes();
    bool readPortfolios();

    QSqlQuery mQuery;
    Catalogue &mCatalogue;
    QHash<qint64, QString> mKeys; ///< of instruments, by row
};

} // namespace terminal
