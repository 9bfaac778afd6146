#pragma once

#include "terminal/market/StoreFaults.h"

#include <QSqlDatabase>
#include <QSqlError>

namespace terminal {

/// Version of the tables that this program reads and writes.
int currentSchemaVersion();

/// What became of a store's tables.
struct SchemaOutcome {
    enum class State { Ready, Foreign, Newer, Failed };
    State state = State::Ready;
    QSqlError error; ///< when it failed
};

/// Creates the tables of an empty file, or takes those of an earlier version forward, one version after the other in
/// one transaction. A file of another program, or of a newer version, is left as it is. Rows that break the rules of
/// their tables are told, and moved to the table "set_aside" when the tables come to hold the rules themselves.
SchemaOutcome migrateSchema(QSqlDatabase database, StoreFaults &faults);

} // namespace terminal
