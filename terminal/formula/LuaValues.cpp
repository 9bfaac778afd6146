#include "terminal/formula/LuaValues.h"

#include "terminal/formula/LuaSandbox.h"
#include "terminal/formula/PointNodes.h"

#include <QCoreApplication>

namespace terminal {
namespace {

constexpr std::size_t kLongestPointText = 256; ///< bytes of a text of a point

/// What Lua holds of a vector.
struct VectorHandle {
    VectorNode *node;
};
struct LuaValuesWords {
    Q_DECLARE_TR_FUNCTIONS(LuaValues)
};

} // namespace

FormulaRun &luaRun(lua_State *state) {
    return *static_cast<FormulaRun *>(lua_touserdata(state, lua_upvalueindex(1)));
}

void setLuaFunction(lua_State *state, FormulaRun &run, const char *name, lua_CFunction function) {
    lua_pushlightuserdata(state, &run);
    lua_pushcclosure(state, function, 1);
    lua_setfield(state, -2, name);
}

void pushLuaOperand(lua_State *state, const Operand &operand) {
    if (operand.isNumber()) {
        lua_pushnumber(state, operand.number);
        return;
    }
    static_cast<VectorHandle *>(lua_newuserdatauv(state, sizeof(VectorHandle), 0))->node = operand.node;
    luaL_setmetatable(state, kLuaVectorType);
}

VectorNode *luaVector(lua_State *state, int index) {
    void *found = luaL_testudata(state, index, kLuaVectorType);
    return found ? static_cast<VectorHandle *>(found)->node : nullptr;
}

void raiseLuaArgument(lua_State *state, const char *function, int index, const QString &wanted) {
    LuaSandbox::raise(
        state,
        LuaValuesWords::tr("%1 的第 %2 个参数应为%3").arg(QLatin1String(function)).arg(index).arg(wanted));
}

Operand luaOperand(lua_State *state, int index, const char *function) {
    if (VectorNode *node = luaVector(state, index)) {
        return node;
    }
    if (lua_type(state, index) != LUA_TNUMBER) {
        raiseLuaArgument(state, function, index, LuaValuesWords::tr("向量或数"));
    }
    return finite(lua_tonumber(state, index));
}

double luaWhole(lua_State *state, int index, const char *function, double least, double most) {
    const bool isNumber = lua_type(state, index) == LUA_TNUMBER;
    const double number = isNumber ? lua_tonumber(state, index) : kNoValue;
    if (!(number >= least && number <= most) || number != std::floor(number)) {
        raiseLuaArgument(state, function, index,
                         LuaValuesWords::tr("%1 到 %2 的整数").arg(least).arg(most, 0, 'f', 0));
    }
    return number;
}

std::string luaText(lua_State *state, int index, const char *function) {
    std::size_t size = 0;
    const char *text = lua_type(state, index) == LUA_TSTRING ? lua_tolstring(state, index, &size) : nullptr;
    if (!text || size > kLongestPointText) {
        raiseLuaArgument(state, function, index,
                         LuaValuesWords::tr("不超过 %1 字节的文字").arg(kLongestPointText));
    }
    return std::string(text, size);
}

Operand luaTableVector(lua_State *state, int index, FormulaRun &run, const char *function) {
    run.readsValues = true;
    std::vector<double> values(run.graph.bars().size(), kNoValue);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const int type = lua_rawgeti(state, index, static_cast<lua_Integer>(i) + 1);
        if (type != LUA_TNUMBER && type != LUA_TNIL) {
            raiseLuaArgument(state, function, 1, LuaValuesWords::tr("数的表：第 %1 个不是数").arg(i + 1));
        }
        values[i] = type == LUA_TNUMBER ? finite(lua_tonumber(state, -1)) : kNoValue;
        lua_pop(state, 1);
    }
    return run.graph.add<DataNode>(std::move(values));
}

} // namespace terminal
