#pragma once

namespace TC {

/// What a result changed; combined by or.
enum EChangeFlag : int {
    eNothingChanged = 0,
    ePointChanged = 1, ///< a point changed in place
    eRangeChanged = 2, ///< the wanted value range changed, or was reset
    eSeriesChanged = 4, ///< replaced, a point gained or an older point changed: the pixmap is redrawn
};

} // namespace TC
