#pragma once

#include "terminal/formula/FormulaRun.h"

struct lua_State;

namespace terminal {

/// Lets Lua call `formula { ... }`, which fills the description of the run and sets the parameters.
void openLuaDescription(lua_State *state, FormulaRun &run);

} // namespace terminal
