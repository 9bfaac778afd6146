#pragma once

#include "terminal/formula/LuaFormula.h"

namespace terminal {

/// What the services of the host and the theme know of the instrument and the day of a request. Any thread.
FormulaInputs hostFormulaInputs(const TC::CFormulaParam &param);

} // namespace terminal
