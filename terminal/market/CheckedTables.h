#pragma once

#include "terminal/market/StoreFaults.h"

#include <QSqlQuery>

namespace terminal {

/// Makes every table hold its rows to the rule of StoreRules.h: it is built anew with a CHECK, and the rows that break the
/// rule are told and moved to the table "set_aside". Runs in an open transaction, with foreign keys off. False on an
/// error, which `query` knows.
bool checkTables(QSqlQuery &query, StoreFaults &faults);

} // namespace terminal
