#include "terminal/formula/LuaVectors.h"

#include "terminal/formula/LuaDrawings.h"
#include "terminal/formula/LuaSandbox.h"
#include "terminal/formula/LuaValues.h"
#include "terminal/formula/PointNodes.h"
#include "terminal/formula/VectorFunctions.h"

#include <QCoreApplication>

#include <cctype>
#include <cstring>

namespace terminal {
namespace {

struct LuaVectorsWords {
    Q_DECLARE_TR_FUNCTIONS(LuaVectors)
};

// Functions.

Operand argumentOf(lua_State *state, int index, const char *function, char kind) {
    switch (kind) {
    case 'n':
        return luaWhole(state, index, function, 1.0, kLongestWindow);
    case 't':
        return luaWhole(state, index, function, 2.0, kLongestWindow);
    case 'z':
        return luaWhole(state, index, function, 0.0, kLongestWindow);
    case 'm':
        return luaWhole(state, index, function, 1.0, lua_tonumber(state, index - 1));
    default:
        return luaOperand(state, index, function);
    }
}

/// Calls a function with what stands on the stack, all of it.
int callFunction(lua_State *state, const VectorFunction &function) {
    FormulaRun &run = luaRun(state);
    const auto named = static_cast<int>(std::strlen(function.arguments));
    const bool anyNumber = function.arguments[named - 1] == '+';
    const int wanted = anyNumber ? named - 1 : named;
    const int given = lua_gettop(state);
    if (given < wanted || (given > wanted && !anyNumber)) {
        LuaSandbox::raise(state, LuaVectorsWords::tr("%1 需要 %2 个参数，给出了 %3 个")
                                     .arg(QLatin1String(function.name))
                                     .arg(wanted)
                                     .arg(given));
    }
    std::vector<Operand> arguments;
    for (int i = 1; i <= given; ++i) {
        arguments.push_back(argumentOf(state, i, function.name, function.arguments[std::min(i, wanted) - 1]));
    }
    pushLuaOperand(state, function.make(run.graph, arguments));
    return 1;
}

const VectorFunction &functionOf(lua_State *state) {
    return *static_cast<const VectorFunction *>(lua_touserdata(state, lua_upvalueindex(2)));
}

int namedFunction(lua_State *state) {
    return callFunction(state, functionOf(state));
}

/// Lua gives every operator two operands, those of one the same twice.
int operatorFunction(lua_State *state) {
    const VectorFunction &function = functionOf(state);
    lua_settop(state, std::min(2, static_cast<int>(std::strlen(function.arguments))));
    return callFunction(state, function);
}

int comparison(lua_State *state) {
    LuaSandbox::raise(state, LuaVectorsWords::tr("向量不能用 < <= > >= == ~= 比较：请用 LT LE GT GE EQ NE"));
}

void setVectorFunction(lua_State *state, FormulaRun &run, const char *field, const VectorFunction &function,
                       lua_CFunction call) {
    lua_pushlightuserdata(state, &run);
    lua_pushlightuserdata(state, const_cast<VectorFunction *>(&function));
    lua_pushcclosure(state, call, 2);
    lua_setfield(state, -2, field);
}

// Single values.

int readLength(lua_State *state) {
    FormulaRun &run = luaRun(state);
    run.readsValues = true;
    lua_pushinteger(state, static_cast<lua_Integer>(run.graph.bars().size()));
    return 1;
}

int readValue(lua_State *state) {
    FormulaRun &run = luaRun(state);
    run.readsValues = true;
    int isWhole = 0;
    const lua_Integer place = lua_tointegerx(state, 2, &isWhole);
    if (isWhole == 0) {
        LuaSandbox::raise(state, LuaVectorsWords::tr("向量的下标应为整数"));
    }
    const std::vector<double> &values = run.graph.read(luaVector(state, 1));
    LuaSandbox::checkTime(state);
    const bool inside = place >= 1 && static_cast<std::size_t>(place) <= values.size();
    lua_pushnumber(state, inside ? values[static_cast<std::size_t>(place) - 1] : kNoValue);
    return 1;
}

int makeVector(lua_State *state) {
    FormulaRun &run = luaRun(state);
    if (lua_type(state, 1) != LUA_TTABLE) {
        raiseLuaArgument(state, "VECTOR", 1, LuaVectorsWords::tr("数的表"));
    }
    pushLuaOperand(state, luaTableVector(state, 1, run, "VECTOR"));
    return 1;
}

// What a file starts with.

struct Named {
    const char *name;
    double value;
};

void setNumbers(lua_State *state, const FormulaInputs &inputs) {
    const Named numbers[] = {
        {"NAN", kNoValue},
        {"PREVCLOSE", inputs.previousClose},
        {"PRICETICK", inputs.priceTick},
        {"FLOATSHARES", inputs.floatShares},
        {"PREVNAV", inputs.previousNetValue},
        {"UPREVCLOSE", inputs.underlyingClose},
        {"COLORDEFAULT", se::kDefaultColor},
        {"COLORRISE", static_cast<double>(inputs.riseColor)},
        {"COLORFALL", static_cast<double>(inputs.fallColor)},
        {"COLORBLACK", 0x000000},
        {"COLORRED", 0x0000ff},
        {"COLORGREEN", 0x00ff00},
        {"COLORBLUE", 0xff0000},
        {"COLORYELLOW", 0x00ffff},
        {"COLORCYAN", 0xffff00},
        {"COLORMAGENTA", 0xff00ff},
        {"COLORWHITE", 0xffffff},
        {"COLORGRAY", 0x808080},
    };
    for (const Named &each : numbers) {
        lua_pushnumber(state, each.value);
        lua_setfield(state, -2, each.name);
    }
}

void makeVectorType(lua_State *state, FormulaRun &run) {
    const std::pair<const char *, const char *> operators[] = {
        {"__add", "+"},   {"__sub", "-"},  {"__mul", "*"},    {"__div", "/"},  {"__mod", "MOD"},
        {"__pow", "POW"}, {"__unm", "-x"}, {"__band", "AND"}, {"__bor", "OR"}, {"__bnot", "NOT"},
    };
    luaL_newmetatable(state, kLuaVectorType);
    for (const auto &[field, name] : operators) {
        setVectorFunction(state, run, field, *vectorFunction(name), operatorFunction);
    }
    for (const char *field : {"__lt", "__le", "__eq"}) {
        setLuaFunction(state, run, field, comparison);
    }
    setLuaFunction(state, run, "__len", readLength);
    setLuaFunction(state, run, "__index", readValue);
    lua_pop(state, 1);
}

} // namespace

void openLuaVectors(lua_State *state, FormulaRun &run) {
    run.graph.setLimit(run.vectorLimit, [state, limit = run.vectorLimit] {
        LuaSandbox::raise(state, LuaVectorsWords::tr("向量过多（上限 %1 个）").arg(limit));
    });
    makeVectorType(state, run);
    lua_pushglobaltable(state);
    setNumbers(state, run.inputs);
    for (const VectorFunction &function : vectorFunctions()) {
        if (std::isalpha(static_cast<unsigned char>(function.name[0])) != 0) {
            setVectorFunction(state, run, function.name, function, namedFunction);
        }
    }
    setLuaFunction(state, run, "VECTOR", makeVector);
    setLuaDrawings(state, run);
    for (const BarSeries &series : barSeries()) {
        pushLuaOperand(state, series.make(run.graph));
        lua_setfield(state, -2, series.name);
    }
    run.underlying = run.graph.add<UnderlyingNode>(run.graph, run.inputs.underlyingBars);
    pushLuaOperand(state, run.underlying);
    lua_setfield(state, -2, "UCLOSE");
    lua_pop(state, 1);
}

} // namespace terminal
