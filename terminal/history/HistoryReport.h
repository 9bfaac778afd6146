#pragma once

#include "terminal/history/HistoryServer.h"

#include <QString>

namespace terminal {

/// How the history of a server is. Times are of the terminal's clock, in milliseconds since the epoch.
struct HistoryReport {
    HistoryFailure failure; ///< what keeps it from coming just now
    qint64 since = 0; ///< when that began
    int waiting = 0; ///< instruments whose history is asked for and has not come
    int badDays = 0; ///< days that were not taken, since they hold what is no bar
};

/// What is missing and since when, for the status line; empty when nothing is.
QString historyText(const HistoryReport &report);

} // namespace terminal
