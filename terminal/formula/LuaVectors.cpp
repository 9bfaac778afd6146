#include "terminal/formula/LuaVectors.h"

#include "terminal/formula/LuaSandbox.h"
#include "terminal/formula/PointNodes.h"
#include "terminal/formula/VectorFunctions.h"

#include <QCoreApplication>

#include <cctype>
#include <cstring>
#include <lua.hpp>

namespace terminal {
namespace {

constexpr char kVectorType[] = "terminal.Vector";
constexpr char kDrawingType[] = "terminal.Drawing";
constexpr std::size_t kMostDrawings = 500; ///< in one run
constexpr std::size_t kMostLayers = 32; ///< colours or texts of one drawing
constexpr std::size_t kLongestText = 256; ///< bytes of a text of a point

/// What Lua holds of a vector.
struct VectorHandle {
    VectorNode *node;
};
/// What Lua holds of a drawing.
struct DrawingHandle {
    const FormulaDrawing *drawing;
};

QString tr(const char *text) {
    return QCoreApplication::translate("LuaVectors", text);
}

FormulaRun &runOf(lua_State *state) {
    return *static_cast<FormulaRun *>(lua_touserdata(state, lua_upvalueindex(1)));
}

void setFunction(lua_State *state, FormulaRun &run, const char *name, lua_CFunction function) {
    lua_pushlightuserdata(state, &run);
    lua_pushcclosure(state, function, 1);
    lua_setfield(state, -2, name);
}

// Values.

void pushOperand(lua_State *state, const FormulaRun &run, const Operand &operand) {
    if (operand.isNumber()) {
        lua_pushnumber(state, operand.number);
        return;
    }
    if (run.graph.size() > run.vectorLimit) {
        LuaSandbox::raise(state, tr("向量过多（上限 %1 个）").arg(run.vectorLimit));
    }
    static_cast<VectorHandle *>(lua_newuserdatauv(state, sizeof(VectorHandle), 0))->node = operand.node;
    luaL_setmetatable(state, kVectorType);
}

VectorNode *vectorAt(lua_State *state, int index) {
    void *found = luaL_testudata(state, index, kVectorType);
    return found ? static_cast<VectorHandle *>(found)->node : nullptr;
}

[[noreturn]] void raiseArgument(lua_State *state, const char *function, int index, const QString &wanted) {
    LuaSandbox::raise(state, tr("%1 的第 %2 个参数应为%3").arg(QLatin1String(function)).arg(index).arg(wanted));
}

/// A vector or a number.
Operand operandAt(lua_State *state, int index, const char *function) {
    if (VectorNode *node = vectorAt(state, index)) {
        return node;
    }
    if (lua_type(state, index) != LUA_TNUMBER) {
        raiseArgument(state, function, index, tr("向量或数"));
    }
    return finite(lua_tonumber(state, index));
}

/// A whole number of a range.
double wholeAt(lua_State *state, int index, const char *function, double least, double most) {
    const bool isNumber = lua_type(state, index) == LUA_TNUMBER;
    const double number = isNumber ? lua_tonumber(state, index) : kNoValue;
    if (!(number >= least && number <= most) || number != std::floor(number)) {
        raiseArgument(state, function, index, tr("%1 到 %2 的整数").arg(least).arg(most, 0, 'f', 0));
    }
    return number;
}

std::string textAt(lua_State *state, int index, const char *function) {
    std::size_t size = 0;
    const char *text = lua_type(state, index) == LUA_TSTRING ? lua_tolstring(state, index, &size) : nullptr;
    if (!text || size > kLongestText) {
        raiseArgument(state, function, index, tr("不超过 %1 字节的文字").arg(kLongestText));
    }
    return std::string(text, size);
}

// Functions.

Operand argumentOf(lua_State *state, int index, const char *function, char kind) {
    switch (kind) {
    case 'n':
        return wholeAt(state, index, function, 1.0, kLongestWindow);
    case 't':
        return wholeAt(state, index, function, 2.0, kLongestWindow);
    case 'z':
        return wholeAt(state, index, function, 0.0, kLongestWindow);
    case 'm':
        return wholeAt(state, index, function, 1.0, lua_tonumber(state, index - 1));
    default:
        return operandAt(state, index, function);
    }
}

/// Calls a function with what stands on the stack, all of it.
int callFunction(lua_State *state, const VectorFunction &function) {
    FormulaRun &run = runOf(state);
    const auto named = static_cast<int>(std::strlen(function.arguments));
    const bool anyNumber = function.arguments[named - 1] == '+';
    const int wanted = anyNumber ? named - 1 : named;
    const int given = lua_gettop(state);
    if (given < wanted || (given > wanted && !anyNumber)) {
        LuaSandbox::raise(
            state,
            tr("%1 需要 %2 个参数，给出了 %3 个").arg(QLatin1String(function.name)).arg(wanted).arg(given));
    }
    std::vector<Operand> arguments;
    for (int i = 1; i <= given; ++i) {
        arguments.push_back(argumentOf(state, i, function.name, function.arguments[std::min(i, wanted) - 1]));
    }
    pushOperand(state, run, function.make(run.graph, arguments));
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
    LuaSandbox::raise(state, tr("向量不能用 < <= > >= == ~= 比较：请用 LT LE GT GE EQ NE"));
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
    FormulaRun &run = runOf(state);
    run.readsValues = true;
    lua_pushinteger(state, static_cast<lua_Integer>(run.graph.bars().size()));
    return 1;
}

int readValue(lua_State *state) {
    FormulaRun &run = runOf(state);
    run.readsValues = true;
    int isWhole = 0;
    const lua_Integer place = lua_tointegerx(state, 2, &isWhole);
    if (isWhole == 0) {
        LuaSandbox::raise(state, tr("向量的下标应为整数"));
    }
    const std::vector<double> &values = run.graph.read(vectorAt(state, 1));
    LuaSandbox::checkTime(state);
    const bool inside = place >= 1 && static_cast<std::size_t>(place) <= values.size();
    lua_pushnumber(state, inside ? values[static_cast<std::size_t>(place) - 1] : kNoValue);
    return 1;
}

/// A vector of a table of numbers, one for each point.
Operand vectorOfTable(lua_State *state, int index, FormulaRun &run, const char *function) {
    run.readsValues = true;
    std::vector<double> values(run.graph.bars().size(), kNoValue);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const int type = lua_rawgeti(state, index, static_cast<lua_Integer>(i) + 1);
        if (type != LUA_TNUMBER && type != LUA_TNIL) {
            raiseArgument(state, function, 1, tr("数的表：第 %1 个不是数").arg(i + 1));
        }
        values[i] = type == LUA_TNUMBER ? finite(lua_tonumber(state, -1)) : kNoValue;
        lua_pop(state, 1);
    }
    return run.graph.add<DataNode>(std::move(values));
}

int makeVector(lua_State *state) {
    FormulaRun &run = runOf(state);
    if (lua_type(state, 1) != LUA_TTABLE) {
        raiseArgument(state, "VECTOR", 1, tr("数的表"));
    }
    pushOperand(state, run, vectorOfTable(state, 1, run, "VECTOR"));
    return 1;
}

// Drawings.

int pushDrawing(lua_State *state, FormulaRun &run, FormulaDrawing drawing) {
    if (run.drawings.size() >= kMostDrawings || drawing.colors.size() > kMostLayers ||
        drawing.texts.size() > kMostLayers) {
        LuaSandbox::raise(state, tr("绘图指令过多"));
    }
    run.drawings.push_back(std::move(drawing));
    void *place = lua_newuserdatauv(state, sizeof(DrawingHandle), 0);
    static_cast<DrawingHandle *>(place)->drawing = &run.drawings.back();
    luaL_setmetatable(state, kDrawingType);
    return 1;
}

const FormulaDrawing *drawingAt(lua_State *state, int index) {
    void *found = luaL_testudata(state, index, kDrawingType);
    return found ? static_cast<DrawingHandle *>(found)->drawing : nullptr;
}

FormulaDrawing lineAt(lua_State *state, int index, const char *function) {
    if (const FormulaDrawing *drawing = drawingAt(state, index)) {
        return *drawing;
    }
    return FormulaDrawing(operandAt(state, index, function));
}

/// A condition that may be left out: true everywhere.
Operand conditionAt(lua_State *state, int index, const char *function) {
    return lua_isnoneornil(state, index) ? Operand(1.0) : operandAt(state, index, function);
}

/// `value` where `condition` is true, no value elsewhere.
Operand valueWhere(FormulaRun &run, const Operand &condition, const Operand &value) {
    static const VectorFunction &choose = *vectorFunction("IF");
    return choose.make(run.graph, {condition, value, kNoValue});
}

int setStyle(lua_State *state) {
    FormulaDrawing drawing = lineAt(state, 1, "STYLE");
    drawing.style = luaStyle(state, 2);
    return pushDrawing(state, runOf(state), std::move(drawing));
}

int setColor(lua_State *state) {
    FormulaDrawing drawing = lineAt(state, 1, "COLOR");
    drawing.colors.push_back({operandAt(state, 2, "COLOR"), conditionAt(state, 3, "COLOR")});
    return pushDrawing(state, runOf(state), std::move(drawing));
}

int setText(lua_State *state) {
    FormulaDrawing drawing = lineAt(state, 1, "TEXT");
    drawing.texts.push_back({textAt(state, 2, "TEXT"), conditionAt(state, 3, "TEXT")});
    return pushDrawing(state, runOf(state), std::move(drawing));
}

int setNumber(lua_State *state) {
    FormulaDrawing drawing = lineAt(state, 1, "NUMBER");
    drawing.second = operandAt(state, 2, "NUMBER");
    return pushDrawing(state, runOf(state), std::move(drawing));
}

/// The second argument where the first is true, in a draw style.
FormulaDrawing conditional(lua_State *state, const char *function, const char *style) {
    FormulaDrawing drawing(
        valueWhere(runOf(state), operandAt(state, 1, function), operandAt(state, 2, function)));
    drawing.style = style ? drawStyleOf(QLatin1String(style)) : -1;
    return drawing;
}

int drawText(lua_State *state) {
    FormulaDrawing drawing = conditional(state, "DRAWTEXT", "TEXT");
    drawing.texts.push_back({textAt(state, 3, "DRAWTEXT"), 1.0});
    return pushDrawing(state, runOf(state), std::move(drawing));
}

int drawTextFix(lua_State *state) {
    FormulaDrawing drawing = conditional(state, "DRAWTEXTFIX", "TEXTFIX");
    drawing.texts.push_back({textAt(state, 3, "DRAWTEXTFIX"), 1.0});
    return pushDrawing(state, runOf(state), std::move(drawing));
}

int drawIcon(lua_State *state) {
    return pushDrawing(state, runOf(state), conditional(state, "DRAWICON", "ICON"));
}

int drawNumber(lua_State *state) {
    FormulaDrawing drawing = conditional(state, "DRAWNUMBER", "NUMBER");
    drawing.second = operandAt(state, 3, "DRAWNUMBER");
    return pushDrawing(state, runOf(state), std::move(drawing));
}

int stickLine(lua_State *state) {
    FormulaDrawing drawing = conditional(state, "STICKLINE", "STICKLINE");
    drawing.second = operandAt(state, 3, "STICKLINE");
    return pushDrawing(state, runOf(state), std::move(drawing));
}

int vertLine(lua_State *state) {
    FormulaDrawing drawing(valueWhere(runOf(state), operandAt(state, 1, "VERTLINE"), 1.0));
    drawing.style = drawStyleOf(QStringLiteral("VERTLINE"));
    return pushDrawing(state, runOf(state), std::move(drawing));
}

int partLine(lua_State *state) {
    return pushDrawing(state, runOf(state), conditional(state, "PARTLINE", nullptr));
}

int rgb(lua_State *state) {
    int color = 0;
    for (int i = 1; i <= 3; ++i) {
        color |= static_cast<int>(wholeAt(state, i, "RGB", 0.0, 255.0)) << (8 * (i - 1));
    }
    lua_pushinteger(state, color);
    return 1;
}

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

void makeTypes(lua_State *state, FormulaRun &run) {
    const std::pair<const char *, const char *> operators[] = {
        {"__add", "+"},   {"__sub", "-"},  {"__mul", "*"},    {"__div", "/"},  {"__mod", "MOD"},
        {"__pow", "POW"}, {"__unm", "-x"}, {"__band", "AND"}, {"__bor", "OR"}, {"__bnot", "NOT"},
    };
    luaL_newmetatable(state, kVectorType);
    for (const auto &[field, name] : operators) {
        setVectorFunction(state, run, field, *vectorFunction(name), operatorFunction);
    }
    for (const char *field : {"__lt", "__le", "__eq"}) {
        setFunction(state, run, field, comparison);
    }
    setFunction(state, run, "__len", readLength);
    setFunction(state, run, "__index", readValue);
    luaL_newmetatable(state, kDrawingType);
    lua_pop(state, 2);
}

} // namespace

int luaStyle(lua_State *state, int index) {
    constexpr double kLastStyle = 42.0;
    if (lua_type(state, index) == LUA_TNUMBER) {
        const double number = lua_tonumber(state, index);
        if (number >= 0.0 && number <= kLastStyle && number == std::floor(number)) {
            return static_cast<int>(number);
        }
    }
    const char *name = lua_type(state, index) == LUA_TSTRING ? lua_tostring(state, index) : "";
    const int style = drawStyleOf(QString::fromUtf8(name));
    if (style < 0) {
        LuaSandbox::raise(state, tr("没有这种线型：%1").arg(QString::fromUtf8(name)));
    }
    return style;
}

FormulaDrawing luaLine(lua_State *state, int index, FormulaRun &run, int line) {
    if (const FormulaDrawing *drawing = drawingAt(state, index)) {
        return *drawing;
    }
    if (VectorNode *node = vectorAt(state, index)) {
        return FormulaDrawing(node);
    }
    if (lua_type(state, index) == LUA_TNUMBER) {
        return FormulaDrawing(finite(lua_tonumber(state, index)));
    }
    if (lua_type(state, index) != LUA_TTABLE) {
        LuaSandbox::raise(state, tr("run 的第 %1 个返回值应为向量、绘图或数").arg(line));
    }
    return FormulaDrawing(vectorOfTable(state, index, run, "run"));
}

void openLuaVectors(lua_State *state, FormulaRun &run) {
    makeTypes(state, run);
    lua_pushglobaltable(state);
    setNumbers(state, run.inputs);
    for (const VectorFunction &function : vectorFunctions()) {
        if (std::isalpha(static_cast<unsigned char>(function.name[0])) != 0) {
            setVectorFunction(state, run, function.name, function, namedFunction);
        }
    }
    const std::pair<const char *, lua_CFunction> instructions[] = {
        {"VECTOR", makeVector},
        {"STYLE", setStyle},
        {"COLOR", setColor},
        {"TEXT", setText},
        {"NUMBER", setNumber},
        {"DRAWTEXT", drawText},
        {"DRAWTEXTFIX", drawTextFix},
        {"DRAWICON", drawIcon},
        {"DRAWNUMBER", drawNumber},
        {"STICKLINE", stickLine},
        {"VERTLINE", vertLine},
        {"PARTLINE", partLine},
        {"RGB", rgb},
    };
    for (const auto &[name, function] : instructions) {
        setFunction(state, run, name, function);
    }
    for (const BarSeries &series : barSeries()) {
        pushOperand(state, run, series.make(run.graph));
        lua_setfield(state, -2, series.name);
    }
    run.underlying = run.graph.add<UnderlyingNode>(run.graph, run.inputs.underlyingBars);
    pushOperand(state, run, run.underlying);
    lua_setfield(state, -2, "UCLOSE");
    lua_pop(state, 1);
}

} // namespace terminal
