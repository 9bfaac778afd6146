#pragma once

#include "terminal/formula/FormulaProgram.h"

namespace terminal {

/// The two series that every chart starts from, by the file names that a request carries:
/// - "REALTIME": line 0 the price of the minute, line 1 the average price of the day up to it.
/// - "REALTIMEVOL": line 0 the volume of the minute, in shares or contracts, in the colour of rise or fall of the
///   price against the minute before, the first minute against its own opening price.
///
/// Null for any other name.
std::unique_ptr<FormulaProgram> makeNativeFormula(const TC::CFormulaParam &param);

} // namespace terminal
