#pragma once

#include "terminal/history/PgConnection.h"

namespace terminal {

/// The version of the tables that this program reads and writes.
constexpr int kPgVersion = 1;

/// The lock that everyone holds who changes the tables; see pg_advisory_xact_lock.
constexpr const char *kPgLock = "SELECT pg_advisory_xact_lock(1414746451)";

/// Nothing, or that the tables are not there or are of a later version.
HistoryFailure checkPgVersion(PgConnection &connection);
/// Makes the tables and the role that may read them, where they are not there yet; several may try at once.
HistoryFailure preparePgTables(PgConnection &connection);
/// Makes the partitions of the months of these days, where they are not there yet; several may try at once.
HistoryFailure preparePgMonths(PgConnection &connection, const QVector<int> &days);

} // namespace terminal
