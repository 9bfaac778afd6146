#include "host/toolkit/PriceDecimals.h"

#include "host/records/ValueComparison.h"

#include <cmath>

namespace TC {

int decimals(double tick) {
    if (isUnset(tick)) {
        return 2;
    }
    const double tolerance = tick > 1e-5 ? 1e-5 : 1e-6;
    constexpr int mostSteps = 10;
    double scaled = tick;
    int count = 0;
    // Written so that a step that is no number goes on to the end.
    while (!(std::fabs(scaled - std::trunc(scaled)) < tolerance) && count <= mostSteps) {
        scaled *= 10;
        ++count;
    }
    return count;
}

int volumeDecimals(double volume) {
    constexpr double tenThousand = 1e4;
    constexpr double hundredMillion = 1e8;
    constexpr double trillion = 1e12;
    const double size = std::fabs(volume);
    if (size < tenThousand - kValueTolerance) {
        return 0;
    }
    if (size < hundredMillion - kValueTolerance) {
        return volume / tenThousand >= 1000 ? 1 : 2;
    }
    if (size >= trillion - kValueTolerance) {
        return 2;
    }
    return volume / hundredMillion >= 1000 ? 1 : 2;
}

} // namespace TC
