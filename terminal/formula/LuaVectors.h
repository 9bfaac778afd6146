#pragma once

#include "terminal/formula/FormulaRun.h"

struct lua_State;

namespace terminal {

/// Gives Lua the vectors of a run: the series of the bars, the functions, operators and drawing instructions. In a body
/// of the sandbox, as all of these. The run outlives the state's use of it.
void openLuaVectors(lua_State *state, FormulaRun &run);
/// The line that a value returned by `run` stands for; ends the run with an error when it stands for none.
FormulaDrawing luaLine(lua_State *state, int index, FormulaRun &run, int line);
/// Lets Lua call `formula { ... }`, which fills the description of the run and sets the parameters.
void openLuaDescription(lua_State *state, FormulaRun &run);
/// The draw style at an index, by name or number; ends the run with an error when it is none.
int luaStyle(lua_State *state, int index);

} // namespace terminal
