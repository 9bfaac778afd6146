#include "terminal/formula/LuaDrawings.h"

#include "terminal/formula/LuaSandbox.h"
#include "terminal/formula/LuaValues.h"
#include "terminal/formula/PointNodes.h"
#include "terminal/formula/ShortText.h"
#include "terminal/formula/VectorFunctions.h"

#include <QCoreApplication>

namespace terminal {
namespace {

constexpr char kDrawingType[] = "terminal.Drawing";
constexpr std::size_t kMostDrawings = 500; ///< in one run
constexpr std::size_t kMostLayers = 32; ///< colours or texts of one drawing

/// What Lua holds of a drawing.
struct DrawingHandle {
    const FormulaDrawing *drawing;
};

struct LuaDrawingsWords {
    Q_DECLARE_TR_FUNCTIONS(LuaDrawings)
};

int pushDrawing(lua_State *state, FormulaRun &run, FormulaDrawing drawing) {
    if (run.drawings.size() >= kMostDrawings || drawing.colors.size() > kMostLayers ||
        drawing.texts.size() > kMostLayers) {
        LuaSandbox::raise(state, LuaDrawingsWords::tr("绘图指令过多"));
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
    return FormulaDrawing(luaOperand(state, index, function));
}

/// A condition that may be left out: true everywhere.
Operand conditionAt(lua_State *state, int index, const char *function) {
    return lua_isnoneornil(state, index) ? Operand(1.0) : luaOperand(state, index, function);
}

/// `value` where `condition` is true, no value elsewhere.
Operand valueWhere(FormulaRun &run, const Operand &condition, const Operand &value) {
    static const VectorFunction &choose = *vectorFunction("IF");
    return choose.make(run.graph, {condition, value, kNoValue});
}

int setStyle(lua_State *state) {
    FormulaDrawing drawing = lineAt(state, 1, "STYLE");
    drawing.style = luaStyle(state, 2);
    return pushDrawing(state, luaRun(state), std::move(drawing));
}

int setColor(lua_State *state) {
    FormulaDrawing drawing = lineAt(state, 1, "COLOR");
    drawing.colors.push_back({luaOperand(state, 2, "COLOR"), conditionAt(state, 3, "COLOR")});
    return pushDrawing(state, luaRun(state), std::move(drawing));
}

int setText(lua_State *state) {
    FormulaDrawing drawing = lineAt(state, 1, "TEXT");
    drawing.texts.push_back({luaText(state, 2, "TEXT"), conditionAt(state, 3, "TEXT")});
    return pushDrawing(state, luaRun(state), std::move(drawing));
}

int setNumber(lua_State *state) {
    FormulaDrawing drawing = lineAt(state, 1, "NUMBER");
    drawing.second = luaOperand(state, 2, "NUMBER");
    return pushDrawing(state, luaRun(state), std::move(drawing));
}

/// The second argument where the first is true, in a draw style.
FormulaDrawing conditional(lua_State *state, const char *function, const char *style) {
    FormulaDrawing drawing(
        valueWhere(luaRun(state), luaOperand(state, 1, function), luaOperand(state, 2, function)));
    drawing.style = style ? drawStyleOf(QLatin1String(style)) : -1;
    return drawing;
}

int drawText(lua_State *state) {
    FormulaDrawing drawing = conditional(state, "DRAWTEXT", "TEXT");
    drawing.texts.push_back({luaText(state, 3, "DRAWTEXT"), 1.0});
    return pushDrawing(state, luaRun(state), std::move(drawing));
}

int drawTextFix(lua_State *state) {
    FormulaDrawing drawing = conditional(state, "DRAWTEXTFIX", "TEXTFIX");
    drawing.texts.push_back({luaText(state, 3, "DRAWTEXTFIX"), 1.0});
    return pushDrawing(state, luaRun(state), std::move(drawing));
}

int drawIcon(lua_State *state) {
    return pushDrawing(state, luaRun(state), conditional(state, "DRAWICON", "ICON"));
}

int drawNumber(lua_State *state) {
    FormulaDrawing drawing = conditional(state, "DRAWNUMBER", "NUMBER");
    drawing.second = luaOperand(state, 3, "DRAWNUMBER");
    return pushDrawing(state, luaRun(state), std::move(drawing));
}

int stickLine(lua_State *state) {
    FormulaDrawing drawing = conditional(state, "STICKLINE", "STICKLINE");
    drawing.second = luaOperand(state, 3, "STICKLINE");
    return pushDrawing(state, luaRun(state), std::move(drawing));
}

int vertLine(lua_State *state) {
    FormulaDrawing drawing(valueWhere(luaRun(state), luaOperand(state, 1, "VERTLINE"), 1.0));
    drawing.style = drawStyleOf(QStringLiteral("VERTLINE"));
    return pushDrawing(state, luaRun(state), std::move(drawing));
}

int partLine(lua_State *state) {
    return pushDrawing(state, luaRun(state), conditional(state, "PARTLINE", nullptr));
}

int rgb(lua_State *state) {
    int color = 0;
    for (int i = 1; i <= 3; ++i) {
        color |= static_cast<int>(luaWhole(state, i, "RGB", 0.0, 255.0)) << (8 * (i - 1));
    }
    lua_pushinteger(state, color);
    return 1;
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
    std::size_t size = 0;
    const char *utf8 = lua_type(state, index) == LUA_TSTRING ? lua_tolstring(state, index, &size) : nullptr;
    const QString name = shortenedUtf8(utf8, size);
    const int style = drawStyleOf(name);
    if (style < 0) {
        LuaSandbox::raise(state, LuaDrawingsWords::tr("没有这种线型：%1").arg(name));
    }
    return style;
}

FormulaDrawing luaLine(lua_State *state, int index, FormulaRun &run, int line) {
    if (const FormulaDrawing *drawing = drawingAt(state, index)) {
        return *drawing;
    }
    if (VectorNode *node = luaVector(state, index)) {
        return FormulaDrawing(node);
    }
    if (lua_type(state, index) == LUA_TNUMBER) {
        return FormulaDrawing(finite(lua_tonumber(state, index)));
    }
    if (lua_type(state, index) != LUA_TTABLE) {
        LuaSandbox::raise(state, LuaDrawingsWords::tr("run 的第 %1 个返回值应为向量、绘图或数").arg(line));
    }
    return FormulaDrawing(luaTableVector(state, index, run, "run"));
}

void setLuaDrawings(lua_State *state, FormulaRun &run) {
    luaL_newmetatable(state, kDrawingType);
    lua_pop(state, 1);
    const std::pair<const char *, lua_CFunction> instructions[] = {
        {"STYLE", setStyle},    {"COLOR", setColor},        {"TEXT", setText},
        {"NUMBER", setNumber},  {"DRAWTEXT", drawText},     {"DRAWTEXTFIX", drawTextFix},
        {"DRAWICON", drawIcon}, {"DRAWNUMBER", drawNumber}, {"STICKLINE", stickLine},
        {"VERTLINE", vertLine}, {"PARTLINE", partLine},     {"RGB", rgb},
    };
    for (const auto &[name, function] : instructions) {
        setLuaFunction(state, run, name, function);
    }
}

} // namespace terminal
