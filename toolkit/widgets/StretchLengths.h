#pragma once

#include <vector>

namespace GZ {

/// What one entry of a row asks for.
struct LengthWish {
    int fixed = -1; ///< pixels, or below 0 to share the rest
    int stretch = 0; ///< share of the rest
};

/// Divides `length` pixels among entries. The fixed ones get what they ask for, in their order, until nothing is left;
/// the others share the rest by stretch, so that together they take exactly that rest. Nothing is given for a stretch
/// of 0 or less. Never answers a negative length, whatever is asked for.
std::vector<int> divideLength(int length, const std::vector<LengthWish> &wishes);

/// Moves `pixels` from the second of two neighbours to the first, or back when negative, and leaves each at least
/// `least` pixels, or what it had when that was less. Answers the new length of the first.
int movedLength(int first, int second, int pixels, int least);

} // namespace GZ
