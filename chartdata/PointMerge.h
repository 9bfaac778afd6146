#pragma once

#include "host/records/RPCFormulaResult.h"

#include <vector>

namespace TC {

/// \file
/// How single points get into a series. The time position of a point decides; a series never becomes shorter
/// and is never sorted.

/// Where a point belongs.
enum class EPointPlace {
    New, ///< behind the last point
    Newest, ///< it is the last point
    Older, ///< it is a stored point before the last one
    None, ///< between stored points or before the first one: it has no place
};

struct PointPlace {
    EPointPlace kind = EPointPlace::None;
    std::size_t index = 0; ///< of the point; the length of the series for a new one
};

/// Finds the place of a time position among ascending ones. Constant for a new and for the newest point,
/// logarithmic for older ones. Times that are not ascending give some place inside, or none.
PointPlace findPlace(const std::vector<se::TimePosition> &times, const se::TimePosition &time);

/// What of a point is taken over.
enum class EPointParts { Values, Everything };

/// Stores a point at its place, which is not None. Values, and with Everything also texts and further items,
/// are taken line by line; a line that the point does not have keeps what it had. The point becomes valid.
/// Lists that are too short are grown, missing values being unset. Answers whether anything is different now.
bool storePoint(se::RPCFormulaResult &series, const PointPlace &place, const se::RPCFormulaInstantResult &point,
                EPointParts parts);

/// What became of a whole series of which only the last point counts.
enum class EPushOutcome {
    Outdated, ///< the stored series reaches further: nothing changed
    Updated, ///< the last point was overwritten
    Nothing, ///< the same time as the start of the epoch, for which an empty series stands: nothing changed
    Appended,
};

/// Merges the last point of `incoming`, which has points, into a series. The last times are compared without
/// their sub-positions. A line that is empty in `incoming` is left alone.
EPushOutcome mergeLastPoint(se::RPCFormulaResult &series, const se::RPCFormulaResult &incoming,
                            EPointParts parts);

} // namespace TC
