#include "terminal/formula/LuaDescription.h"

#include "terminal/formula/FormulaDrawing.h"
#include "terminal/formula/LuaDrawings.h"
#include "terminal/formula/LuaSandbox.h"
#include "terminal/formula/ShortText.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <cmath>
#include <lua.hpp>

namespace terminal {
namespace {

constexpr int kMostEntries = 64; ///< parameters, and lines
constexpr int kMostPrecision = 8;

struct LuaDescriptionWords {
    Q_DECLARE_TR_FUNCTIONS(LuaDescription)
};

[[noreturn]] void raiseField(lua_State *state, const QString &field, const QString &wanted) {
    LuaSandbox::raise(state, LuaDescriptionWords::tr("formula 的 %1 应为%2").arg(field, wanted));
}

/// Takes a text off the stack, cut where it is too long to show; empty when there is none.
QString takeText(lua_State *state, const QString &field) {
    const int type = lua_type(state, -1);
    if (type != LUA_TSTRING && type != LUA_TNIL) {
        raiseField(state, field, LuaDescriptionWords::tr("文字"));
    }
    std::size_t size = 0;
    const char *utf8 = type == LUA_TSTRING ? lua_tolstring(state, -1, &size) : nullptr;
    const QString text = shortenedUtf8(utf8, size);
    lua_pop(state, 1);
    return text;
}

/// Takes a number off the stack; `missing` when there is none.
double takeNumber(lua_State *state, const QString &field, double missing) {
    const int type = lua_type(state, -1);
    if (type != LUA_TNUMBER && type != LUA_TNIL) {
        raiseField(state, field, LuaDescriptionWords::tr("数"));
    }
    const double number = type == LUA_TNUMBER ? lua_tonumber(state, -1) : missing;
    if (!std::isfinite(number)) {
        raiseField(state, field, LuaDescriptionWords::tr("数"));
    }
    lua_pop(state, 1);
    return number;
}

int takeWhole(lua_State *state, const QString &field, int missing, int least, int most) {
    const double number = takeNumber(state, field, missing);
    if (number != missing && (number < least || number > most || number != std::floor(number))) {
        raiseField(state, field, LuaDescriptionWords::tr("%1 到 %2 的整数").arg(least).arg(most));
    }
    return static_cast<int>(number);
}

QString textField(lua_State *state, const char *field) {
    lua_getfield(state, -1, field);
    return takeText(state, QLatin1String(field));
}

double numberField(lua_State *state, const char *field, double missing) {
    lua_getfield(state, -1, field);
    return takeNumber(state, QLatin1String(field), missing);
}

int wholeField(lua_State *state, const char *field, int missing, int least, int most) {
    lua_getfield(state, -1, field);
    return takeWhole(state, QLatin1String(field), missing, least, most);
}

/// Calls `read` with each entry of a list of tables on top of the stack.
template <class Read> void readList(lua_State *state, const char *field, Read read) {
    const int type = lua_getfield(state, -1, field);
    if (type != LUA_TTABLE && type != LUA_TNIL) {
        raiseField(state, QLatin1String(field), LuaDescriptionWords::tr("列表"));
    }
    const lua_Unsigned count = type == LUA_TTABLE ? lua_rawlen(state, -1) : 0;
    if (count > kMostEntries) {
        raiseField(state, QLatin1String(field),
                   LuaDescriptionWords::tr("不超过 %1 项的列表").arg(kMostEntries));
    }
    for (lua_Unsigned i = 1; i <= count; ++i) {
        if (lua_rawgeti(state, -1, static_cast<lua_Integer>(i)) != LUA_TTABLE) {
            raiseField(state, QLatin1String(field), LuaDescriptionWords::tr("表的列表"));
        }
        read();
        lua_pop(state, 1);
    }
    lua_pop(state, 1);
}

bool isVariableName(const QString &name) {
    static const QRegularExpression shape(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]{0,31}$"));
    static const QRegularExpression keyword(QStringLiteral(
        "^(and|break|do|else|elseif|end|false|for|function|goto|if|in|local|nil|not|or|repeat|return|"
        "then|true|until|while)$"));
    return shape.match(name).hasMatch() && !keyword.match(name).hasMatch();
}

/// The number that a user has given, or the default.
double valueOf(lua_State *state, const FormulaRun &run, const FormulaParameter &parameter) {
    bool isNumber = true;
    const auto given = run.arguments.constFind(parameter.name);
    const double number = given == run.arguments.constEnd() ? parameter.value : given->toDouble(&isNumber);
    if (!isNumber || !(number >= parameter.min && number <= parameter.max)) {
        LuaSandbox::raise(state, LuaDescriptionWords::tr("参数 %1 应为 %2 到 %3 的数")
                                     .arg(parameter.name)
                                     .arg(parameter.min)
                                     .arg(parameter.max));
    }
    return number;
}

void setParameter(lua_State *state, const FormulaRun &run, const FormulaParameter &parameter) {
    const QByteArray name = parameter.name.toUtf8();
    if (!isVariableName(parameter.name) || lua_getglobal(state, name.constData()) != LUA_TNIL) {
        LuaSandbox::raise(state, LuaDescriptionWords::tr("参数不能名为 %1").arg(parameter.name));
    }
    lua_pop(state, 1);
    if (parameter.isText) {
        lua_pushstring(state, run.arguments.value(parameter.name, parameter.textValue).toUtf8().constData());
    } else {
        const double number = valueOf(state, run, parameter);
        // A whole number is one to Lua too: it prints without a fraction.
        lua_Integer whole = 0;
        if (lua_numbertointeger(number, &whole) && static_cast<double>(whole) == number) {
            lua_pushinteger(state, whole);
        } else {
            lua_pushnumber(state, number);
        }
    }
    lua_setglobal(state, name.constData());
}

/// Of the table on top of the stack.
FormulaParameter readParameter(lua_State *state) {
    FormulaParameter parameter;
    lua_rawgeti(state, -1, 1);
    parameter.name = takeText(state, QStringLiteral("parameters"));
    parameter.isText = lua_rawgeti(state, -1, 2) == LUA_TSTRING;
    if (parameter.isText) {
        if (lua_rawlen(state, -1) > kLongestShortText) {
            raiseField(state, parameter.name,
                       LuaDescriptionWords::tr("不超过 %1 字节的文字").arg(kLongestShortText));
        }
        parameter.textValue = takeText(state, parameter.name);
    } else {
        parameter.value = takeNumber(state, parameter.name, 0.0);
    }
    parameter.min = numberField(state, "min", parameter.min);
    parameter.max = numberField(state, "max", parameter.max);
    parameter.text = textField(state, "text");
    return parameter;
}

se::ELineAxis describedAxis(lua_State *state) {
    const QString axis = textField(state, "axis").toUpper();
    if (axis.isEmpty() || axis == QLatin1String("SHARED")) {
        return se::eLineShared;
    }
    if (axis == QLatin1String("OWN")) {
        return se::eLineOwn;
    }
    if (axis != QLatin1String("HIDDEN")) {
        raiseField(state, QStringLiteral("axis"), QStringLiteral("\"SHARED\", \"OWN\", \"HIDDEN\""));
    }
    return se::eLineHidden;
}

FormulaLine describedLine(lua_State *state) {
    FormulaLine line;
    lua_rawgeti(state, -1, 1);
    line.name = takeText(state, QStringLiteral("lines"));
    if (line.name.isEmpty()) {
        raiseField(state, QStringLiteral("lines"), LuaDescriptionWords::tr("有名称的线"));
    }
    if (lua_getfield(state, -1, "style") != LUA_TNIL) {
        line.style = luaStyle(state, -1);
    }
    lua_pop(state, 1);
    line.color = wholeField(state, "color", se::kDefaultColor, 0, kLargestColor);
    lua_getfield(state, -1, "fixed");
    line.fixedColor = lua_toboolean(state, -1) != 0;
    lua_pop(state, 1);
    line.axis = describedAxis(state);
    line.precision = wholeField(state, "precision", -1, 0, kMostPrecision);
    return line;
}

int describe(lua_State *state) {
    FormulaRun &run = *static_cast<FormulaRun *>(lua_touserdata(state, lua_upvalueindex(1)));
    if (run.isDescribed || lua_type(state, 1) != LUA_TTABLE) {
        LuaSandbox::raise(state, LuaDescriptionWords::tr("formula { ... } 应调用一次，参数为一个表"));
    }
    lua_settop(state, 1);
    FormulaDescription &description = run.description;
    description.name = textField(state, "name").toUpper(); // a chart keeps names so
    if (description.name.trimmed().isEmpty()) {
        raiseField(state, QStringLiteral("name"), LuaDescriptionWords::tr("公式的名称"));
    }
    description.type = wholeField(state, "type", 0, 0, 2);
    description.text = textField(state, "text");
    description.source = textField(state, "source");
    readList(state, "lines", [&] { description.lines.append(describedLine(state)); });
    if (description.lines.isEmpty()) {
        raiseField(state, QStringLiteral("lines"), LuaDescriptionWords::tr("至少一条线的列表"));
    }
    readList(state, "parameters", [&] {
        description.parameters.append(readParameter(state));
        setParameter(state, run, description.parameters.constLast());
    });
    run.isDescribed = true;
    return 0;
}

} // namespace

void openLuaDescription(lua_State *state, FormulaRun &run) {
    lua_pushlightuserdata(state, &run);
    lua_pushcclosure(state, describe, 1);
    lua_setglobal(state, "formula");
}

} // namespace terminal
