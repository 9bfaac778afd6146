#pragma once

#include "host/records/Enumerations.h"

#include <cmath>

/// \file
/// Comparisons of prices and values, all with the tolerance kValueTolerance.

namespace TC {

/// Whether `a` is larger than `b` by more than the tolerance.
inline bool exceeds(double a, double b) {
    return a > b + kValueTolerance;
}

/// Whether `a` is smaller than `b` by more than the tolerance.
inline bool liesBelow(double a, double b) {
    return a < b - kValueTolerance;
}

inline bool isZero(double value) {
    return std::fabs(value) <= kValueTolerance;
}

/// Whether a value is the unset one.
inline bool isUnset(double value) {
    return std::fabs(value - kUnsetValue) <= kValueTolerance;
}

/// A value that can be computed with: neither unset nor infinite nor not a number.
inline bool isUsable(double value) {
    return std::isfinite(value) && !isUnset(value);
}

} // namespace TC
