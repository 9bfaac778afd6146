#pragma once

#include "terminal/formula/LuaFormula.h"
#include "terminal/market/Catalogue.h"

namespace terminal {

/// What the services of the host, the theme and the market store know of the instrument and the day of a request. Any
/// thread.
FormulaInputs hostFormulaInputs(const TC::CFormulaParam &param, const Catalogue &catalogue);

} // namespace terminal
