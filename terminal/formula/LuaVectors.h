#pragma once

#include "terminal/formula/FormulaRun.h"

struct lua_State;

namespace terminal {

/// Gives Lua the vectors of a run: the series of the bars, the functions, operators and drawing instructions. In a body
/// of the sandbox. The run outlives the state's use of it.
void openLuaVectors(lua_State *state, FormulaRun &run);

} // namespace terminal
