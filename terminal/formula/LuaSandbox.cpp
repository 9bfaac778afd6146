#include "terminal/formula/LuaSandbox.h"

#include "terminal/formula/ShortText.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <lua.hpp>
#include <vector>

namespace terminal {
namespace {

/// Instructions between two looks at the clock: few, since one of them can copy all the memory there is.
constexpr int kInstructionsPerCheck = 100;
constexpr char kChunkName[] = "=formula";

struct Library {
    const char *name; ///< of the table; empty for the globals themselves
    lua_CFunction open;
    std::vector<const char *> kept;
};

/// What is left of Lua's libraries: nothing that reaches out, nothing that catches errors, nothing whose single call
/// can take longer than its memory allows.
const std::vector<Library> &libraries() {
    static const std::vector<Library> all = {
        {LUA_STRLIBNAME, luaopen_string, {"byte", "char", "format", "len", "lower", "reverse", "sub", "upper"}},
        {LUA_TABLIBNAME, luaopen_table, {"concat", "insert", "remove", "unpack"}},
        {LUA_UTF8LIBNAME, luaopen_utf8, {"char", "codepoint", "len"}},
        {LUA_MATHLIBNAME, luaopen_math, {"abs",        "acos",       "asin", "atan", "ceil", "cos", "deg",
                                         "exp",        "floor",      "fmod", "huge", "log",  "max", "min",
                                         "maxinteger", "mininteger", "modf", "pi",   "rad",  "sin", "sqrt",
                                         "tan",        "tointeger",  "type", "ult"}},
    };
    return all;
}

const std::vector<const char *> kGlobals = {
    "assert",   "error", "ipairs",       "next",         "pairs",         "select",       "tonumber",
    "tostring", "type",  LUA_STRLIBNAME, LUA_TABLIBNAME, LUA_UTF8LIBNAME, LUA_MATHLIBNAME};

/// Takes all but the fields of these names out of the table on top of the stack.
void keepOnly(lua_State *state, const std::vector<const char *> &names) {
    lua_pushnil(state);
    while (lua_next(state, -2) != 0) {
        lua_pop(state, 1);
        const char *key = lua_tostring(state, -1);
        const bool kept = std::any_of(names.begin(), names.end(),
                                      [key](const char *name) { return std::strcmp(name, key) == 0; });
        if (!kept) {
            lua_pushvalue(state, -1);
            lua_pushnil(state);
            lua_rawset(state, -4);
        }
    }
}

/// The line that runs: of the innermost function that is written in Lua. 0 when there is none.
int currentLine(lua_State *state) {
    lua_Debug frame;
    for (int level = 0; lua_getstack(state, level, &frame) != 0; ++level) {
        lua_getinfo(state, "l", &frame);
        if (frame.currentline > 0) {
            return frame.currentline;
        }
    }
    return 0;
}

void openLibraries(lua_State *state) {
    luaL_requiref(state, LUA_GNAME, luaopen_base, 1);
    lua_pop(state, 1);
    for (const Library &library : libraries()) {
        luaL_requiref(state, library.name, library.open, 1);
        keepOnly(state, library.kept);
        lua_pop(state, 1);
    }
    lua_pushglobaltable(state);
    keepOnly(state, kGlobals);
    lua_pop(state, 1);
}

QString words(const char *text) {
    return QCoreApplication::translate("LuaSandbox", text);
}

} // namespace

void LuaSandbox::Closer::operator()(lua_State *state) const {
    lua_close(state);
}

LuaSandbox::LuaSandbox(std::size_t bytes) : mLimit(bytes) {
    mState.reset(lua_newstate(&LuaSandbox::allocate, this));
}

LuaSandbox::~LuaSandbox() = default;

LuaSandbox &LuaSandbox::of(lua_State *state) {
    void *self = nullptr;
    lua_getallocf(state, &self);
    return *static_cast<LuaSandbox *>(self);
}

void *LuaSandbox::allocate(void *self, void *block, std::size_t oldSize, std::size_t newSize) {
    auto &box = *static_cast<LuaSandbox *>(self);
    const std::size_t before = block ? oldSize : 0; // without a block it tells what is made
    if (newSize == 0) {
        std::free(block);
        box.mUsed -= before;
        return nullptr;
    }
    const bool allowed = newSize <= before || newSize - before <= box.mLimit - std::min(box.mLimit, box.mUsed);
    void *made = allowed ? std::realloc(block, newSize) : nullptr;
    if (made) {
        box.mUsed += newSize - before;
    } else if (box.mRunning) {
        // Lua collects garbage and tries once more; the line is asked for here, since the error itself finds no stack.
        box.mLine = currentLine(box.mState.get());
    }
    return made;
}

int LuaSandbox::callBody(lua_State *state) {
    openLibraries(state);
    (*of(state).mBody)(state);
    return 0;
}

int LuaSandbox::addLine(lua_State *state) {
    of(state).mLine = currentLine(state);
    return 1;
}

bool LuaSandbox::run(const Body &body, const TimeLimit &time, FormulaError &error) {
    lua_State *state = mState.get();
    if (!state) {
        error = {{}, 0, words(QT_TRANSLATE_NOOP("LuaSandbox", "内存超限"))};
        mOverLimit = true;
        return false;
    }
    mBody = &body;
    mTime = &time;
    mLine = 0;
    lua_sethook(
        state, [](lua_State *running, lua_Debug *) { checkTime(running); }, LUA_MASKCOUNT,
        kInstructionsPerCheck);
    lua_settop(state, 0);
    lua_pushcfunction(state, &LuaSandbox::addLine);
    lua_pushcfunction(state, &LuaSandbox::callBody);
    mRunning = true;
    const int status = lua_pcall(state, 0, 0, 1);
    mRunning = false;
    if (status == LUA_OK) {
        return true;
    }
    error = takeError(status);
    return false;
}

FormulaError LuaSandbox::takeError(int status) {
    FormulaError error;
    error.line = mLine;
    if (status == LUA_ERRMEM) {
        mOverLimit = true;
        error.text = words(QT_TRANSLATE_NOOP("LuaSandbox", "内存超限（上限 %1 KiB）")).arg(mLimit / 1024);
        return error;
    }
    lua_State *state = mState.get();
    std::size_t size = 0;
    const char *told = lua_type(state, -1) == LUA_TSTRING ? lua_tolstring(state, -1, &size) : nullptr;
    error.text =
        told ? shortenedUtf8(told, size) : words(QT_TRANSLATE_NOOP("LuaSandbox", "公式中止，未说明原因"));
    static const QRegularExpression place(QStringLiteral("^formula:(\\d+): "));
    const QRegularExpressionMatch match = place.match(error.text);
    if (match.hasMatch()) {
        error.line = match.captured(1).toInt();
        error.text.remove(0, match.capturedLength());
    }
    return error;
}

void LuaSandbox::callText(lua_State *state, const QByteArray &text) {
    const int status =
        luaL_loadbufferx(state, text.constData(), static_cast<size_t>(text.size()), kChunkName, "t");
    if (status != LUA_OK) {
        lua_error(state);
    }
    lua_call(state, 0, 0);
}

void LuaSandbox::raise(lua_State *state, const QString &text) {
    {
        const QByteArray bytes = shortened(text).toUtf8();
        lua_pushlstring(state, bytes.constData(), static_cast<size_t>(bytes.size()));
    }
    lua_error(state);
    std::abort(); // not reached
}

void LuaSandbox::checkTime(lua_State *state) {
    LuaSandbox &box = of(state);
    if (box.mTime->isOver()) {
        box.mOverLimit = true;
        raise(state, words(QT_TRANSLATE_NOOP("LuaSandbox", "运行超时")));
    }
}

} // namespace terminal
