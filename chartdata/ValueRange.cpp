#include "chartdata/ValueRange.h"

#include <algorithm>
#include <cmath>

namespace TC {

bool widen(double &max, double &min, const Extremes &found) {
    const bool maxChanged = isUnset(max) || exceeds(found.max, max);
    if (maxChanged) {
        max = found.max;
    }
    if (isUnset(min)) {
        min = found.min;
        return maxChanged;
    }
    const bool minChanged = liesBelow(found.min, min);
    if (minChanged) {
        min = found.min;
    }
    return maxChanged || minChanged;
}

bool storeRange(IndexBaseData::MaxMinMap &ranges, const CFormulaKey &key, const ValueRange &range) {
    const auto stored = ranges.constFind(key);
    if (stored != ranges.constEnd() && !exceeds(range.first, stored->first) &&
        !liesBelow(range.second, stored->second)) {
        return false;
    }
    ranges.insert(key, range);
    return true;
}

bool isOutgrown(const IndexBaseData::MaxMinMap &wanted, const IndexBaseData::MaxMinMap &drawn) {
    for (auto range = wanted.constBegin(); range != wanted.constEnd(); ++range) {
        const auto had = drawn.constFind(range.key());
        if (had == drawn.constEnd() || exceeds(range->first, had->first) ||
            liesBelow(range->second, had->second)) {
            return true;
        }
    }
    return false;
}

bool adoptRanges(IndexBaseData::MaxMinMap &drawn, const IndexBaseData::MaxMinMap &ranges, bool overwrite) {
    bool changed = false;
    for (auto range = ranges.constBegin(); range != ranges.constEnd(); ++range) {
        const auto had = drawn.find(range.key());
        if (overwrite || had == drawn.end()) {
            drawn.insert(range.key(), range.value());
            changed = true;
            continue;
        }
        if (exceeds(range->first, had->first)) {
            had->first = range->first;
            changed = true;
        }
        if (liesBelow(range->second, had->second)) {
            had->second = range->second;
            changed = true;
        }
    }
    return changed;
}

void gatherAmplitude(double &amplitude, const Extremes &series, double base) {
    if (!isUsable(base) || isZero(base)) {
        return;
    }
    if (isZero(series.max) && isZero(series.min)) {
        amplitude = 0.0;
        return;
    }
    const double distance = std::max(std::fabs(series.min - base), std::fabs(series.max - base)) / base;
    if (std::isfinite(distance)) {
        amplitude = std::max(amplitude, distance);
    }
}

ValueRange amplitudeRange(double base, double amplitude) {
    return {base + base * amplitude, base - base * amplitude};
}

ValueRange centredRange(const Extremes &extremes, double base, double minHalf) {
    const bool flat = isZero(extremes.max) && isZero(extremes.min);
    const double half = flat ? 0.0 : std::max(std::fabs(extremes.min - base), std::fabs(extremes.max - base));
    const double room = half > minHalf ? half : minHalf;
    return {base + room, base - room};
}

int rowOfValue(double value, const ValueRange &range, int height) {
    const double room = range.first - range.second;
    if (!isUsable(value) || !std::isfinite(room) || room == 0.0) {
        return -1;
    }
    const double row = height - (value - range.second) * (height / room);
    if (!std::isfinite(row)) {
        return -1;
    }
    constexpr double kFar = 1e9; // beyond any pane, and safe to convert
    return static_cast<int>(std::clamp(row, -kFar, kFar));
}

double valueOfRow(int row, const ValueRange &range, int height) {
    const double room = range.first - range.second;
    if (height <= 0 || !std::isfinite(room)) {
        return 0.0;
    }
    if (room == 0.0) {
        return range.second; // every row stands for the one value
    }
    return (static_cast<double>(height) - row) / (height / room) + range.second;
}

} // namespace TC
