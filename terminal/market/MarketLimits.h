#pragma once

namespace terminal {

// The largest figures that the market can have; what is above them in a file or in a store is none.
constexpr double kLargestPrice = 1e9;
constexpr double kLargestVolume = 1e15; ///< shares or contracts of a row
constexpr double kLargestAmount = 1e18; ///< money of a row

} // namespace terminal
