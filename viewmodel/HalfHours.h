#pragma once

#include "viewmodel/TradingSessions.h"

namespace TC {

/// What a stop of the half-hour walk is.
enum class EHalfHour {
    Inside, ///< a half hour of a session that goes on behind it
    EndOfSession, ///< and another session follows
    EndOfDay, ///< end of the last session
};

/// Where the time of an axis is marked.
struct HalfHour {
    int index = 0; ///< on the axis
    int minutes = 0; ///< since the stop before it, or since the start of its session; 1 to 30
    EHalfHour place = EHalfHour::Inside;
};

/// The stops of a day: every 30 minutes from the start of each session, and the end of each. The end of a session and
/// the start of the next are one index, since the break between them takes no room. A session without minutes has
/// no stop, and none is longer than a day.
QVector<HalfHour> halfHours(const Sessions &sessions);

} // namespace TC
