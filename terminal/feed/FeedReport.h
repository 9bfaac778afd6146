#pragma once

#include "terminal/servers/LineState.h"

#include <QString>

namespace terminal {

/// How a feed is. Times are of the terminal's clock, in milliseconds since the epoch; 0 when it is not so.
struct FeedReport {
    LineState line = LineState::Connecting;
    qint64 lineSince = 0;
    qint64 silentSince = 0; ///< the server is there, and no beat has come since
    int behind = 0; ///< instruments of which changes are missing, or may be
    qint64 behindSince = 0; ///< the first of them
    qint64 newerSince = 0; ///< records of a later version than this program's came
    quint64 garbage = 0; ///< messages that were no records
};

/// What is missing and since when, for the status line; empty when nothing is.
QString feedText(const FeedReport &report);

} // namespace terminal
