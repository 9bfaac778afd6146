#pragma once

#include "terminal/formula/FormulaError.h"
#include "terminal/formula/TimeLimit.h"

#include <QByteArray>

#include <cstddef>
#include <functional>
#include <memory>

struct lua_State;

namespace terminal {

/// A Lua state that a file from outside can do no harm in: without files, system, debugging, loading of code, catching
/// of errors, coroutines, metatables and whatever else could run for long in one call; with limits on time and memory.
///
/// One thread at a time.
class LuaSandbox {
public:
    using Body = std::function<void(lua_State *)>;

    /// `bytes` of memory for the state.
    explicit LuaSandbox(std::size_t bytes);
    ~LuaSandbox();
    LuaSandbox(const LuaSandbox &) = delete;
    LuaSandbox &operator=(const LuaSandbox &) = delete;

    /// Runs `body`, from which Lua may be called and errors raised, until the time is over. False after an error, which is
    /// then told with its line; its formula is left empty.
    bool run(const Body &body, const TimeLimit &time, FormulaError &error);
    /// Whether a run ended for its time or memory.
    bool isOverLimit() const { return mOverLimit; }

    /// In a body: makes the chunk of a text and calls it.
    static void callText(lua_State *state, const QByteArray &text);
    /// Ends the run with an error in words; does not return.
    [[noreturn]] static void raise(lua_State *state, const QString &text);
    /// In a body: ends the run when its time is over. For work of which Lua sees nothing.
    static void checkTime(lua_State *state);

private:
    struct Closer {
        void operator()(lua_State *state) const;
    };

    static void *allocate(void *self, void *block, std::size_t oldSize, std::size_t newSize);
    static int callBody(lua_State *state);
    static int addLine(lua_State *state);
    static LuaSandbox &of(lua_State *state);
    FormulaError takeError(int status);

    const std::size_t mLimit;
    std::size_t mUsed = 0;
    bool mRunning = false;
    bool mOverLimit = false;
    int mLine = 0; ///< of the error under way
    const TimeLimit *mTime = nullptr;
    const Body *mBody = nullptr;
    std::unique_ptr<lua_State, Closer> mState; ///< last: its end frees through this object
};

} // namespace terminal
