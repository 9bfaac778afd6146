#include "terminal/formula/FormulaRun.h"

#include "terminal/formula/LuaDescription.h"
#include "terminal/formula/LuaDrawings.h"
#include "terminal/formula/LuaSandbox.h"
#include "terminal/formula/LuaVectors.h"

#include <QCoreApplication>

#include <lua.hpp>

namespace terminal {
namespace {

constexpr int kLongestFile = 256 * 1024; ///< bytes

struct FormulaRunWords {
    Q_DECLARE_TR_FUNCTIONS(FormulaRun)
};

/// Calls `run` and takes the lines that it returns.
void callRun(lua_State *state, FormulaRun &run) {
    if (lua_getglobal(state, "run") != LUA_TFUNCTION) {
        LuaSandbox::raise(state, FormulaRunWords::tr("没有函数 run"));
    }
    const int before = lua_gettop(state) - 1;
    lua_call(state, 0, LUA_MULTRET);
    const int count = lua_gettop(state) - before;
    if (count != run.description.lines.size()) {
        LuaSandbox::raise(state, FormulaRunWords::tr("run 返回 %1 个值，而 lines 有 %2 条线")
                                     .arg(count)
                                     .arg(run.description.lines.size()));
    }
    luaL_checkstack(state, LUA_MINSTACK, nullptr);
    std::vector<FormulaDrawing> lines;
    for (int i = 1; i <= count; ++i) {
        lines.push_back(luaLine(state, before + i, run, i));
        lines.back().use();
    }
    run.lines = std::move(lines);
}

void runBody(lua_State *state, FormulaRun &run, const QByteArray &text, RunDepth depth) {
    openLuaVectors(state, run);
    openLuaDescription(state, run);
    LuaSandbox::callText(state, text);
    if (!run.isDescribed) {
        LuaSandbox::raise(state, FormulaRunWords::tr("没有 formula { ... }"));
    }
    if (depth == RunDepth::Compute) {
        callRun(state, run);
    }
}

} // namespace

std::unique_ptr<FormulaRun> FormulaRun::of(const LuaFormulaFile &file, const FormulaInputs &inputs,
                                           const FormulaLimits &limits, const MinuteBars &bars,
                                           RunDepth depth) {
    auto run = std::make_unique<FormulaRun>();
    run->inputs = inputs;
    run->arguments = file.arguments;
    run->vectorLimit = limits.vectors;
    FormulaError error;
    if (file.text.size() > kLongestFile) {
        run->error =
            FormulaError{file.name, 0, FormulaRunWords::tr("文件过长（上限 %1 KiB）").arg(kLongestFile / 1024)};
        return run;
    }
    const TimeLimit time(limits.milliseconds);
    run->graph.open(bars);
    LuaSandbox sandbox(limits.bytes);
    const LuaSandbox::Body body = [&run, &file, depth](lua_State *state) {
        runBody(state, *run, file.text, depth);
    };
    if (!sandbox.run(body, time, error)) {
        error.formula = file.name;
        run->error = error;
        run->overLimit = sandbox.isOverLimit();
        run->lines.clear();
    }
    run->graph.close();
    return run;
}

} // namespace terminal
