#pragma once

#include "terminal/formula/FormulaRun.h"

struct lua_State;

namespace terminal {

/// Sets the drawing instructions of a run in the table on top. In a body of the sandbox, as all of these.
void setLuaDrawings(lua_State *state, FormulaRun &run);
/// The line that a value returned by `run` stands for; ends the run with an error when it stands for none.
FormulaDrawing luaLine(lua_State *state, int index, FormulaRun &run, int line);
/// The draw style at an index, by name or number; ends the run with an error when it is none.
int luaStyle(lua_State *state, int index);

} // namespace terminal
