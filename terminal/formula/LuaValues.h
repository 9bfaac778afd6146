#pragma once

#include "terminal/formula/FormulaRun.h"

#include <lua.hpp>

/// \file
/// How values of formulas pass between Lua and a run, in a body of the sandbox: whatever is not what it should be ends
/// the run with an error. A function that Lua calls has its run as the first value that it carries.

namespace terminal {

/// The type of what Lua holds of a vector.
constexpr char kLuaVectorType[] = "terminal.Vector";

/// The run of the function that Lua calls.
FormulaRun &luaRun(lua_State *state);
/// Puts a function of a run into a field of the table on top.
void setLuaFunction(lua_State *state, FormulaRun &run, const char *name, lua_CFunction function);

void pushLuaOperand(lua_State *state, const Operand &operand);
/// The vector at an index; null when there is none.
VectorNode *luaVector(lua_State *state, int index);

// Arguments of a named function.
[[noreturn]] void raiseLuaArgument(lua_State *state, const char *function, int index, const QString &wanted);
/// A vector or a number.
Operand luaOperand(lua_State *state, int index, const char *function);
/// A whole number of a range.
double luaWhole(lua_State *state, int index, const char *function, double least, double most);
std::string luaText(lua_State *state, int index, const char *function);
/// A vector of a table of numbers, one for each point.
Operand luaTableVector(lua_State *state, int index, FormulaRun &run, const char *function);

} // namespace terminal
