#pragma once

/// \file
/// Arithmetic of a pane.

#include "host/drawing/IndexBaseData.h"
#include "host/records/ExchangeZone.h"

#include <QtGlobal>

#include <algorithm>

namespace TC {

constexpr int kNowhere = -1; ///< column, row or index of what is not shown
constexpr qint64 kSecondsOfDay = 86400;

/// The date to request of a time in seconds since the epoch. A midnight of the exchange stands as it is; any other
/// time gives the one 8 hours before the midnight at UTC that lies at or nearer to 1970 than it.
inline int requestDate(int time) {
    if (time % kSecondsOfDay == kSecondsOfDay - GZ::kExchangeOffset) {
        return time;
    }
    return static_cast<int>(time / kSecondsOfDay * kSecondsOfDay - GZ::kExchangeOffset);
}

/// Widens the ranges of a pane by those of one of its graphs.
inline void mergeRanges(IndexBaseData::MaxMinMap &ranges, const IndexBaseData::MaxMinMap &further) {
    for (auto one = further.constBegin(); one != further.constEnd(); ++one) {
        const auto found = ranges.find(one.key());
        if (found == ranges.end()) {
            ranges.insert(one.key(), one.value());
        } else {
            *found = {std::max(found->first, one->first), std::min(found->second, one->second)};
        }
    }
}

} // namespace TC
