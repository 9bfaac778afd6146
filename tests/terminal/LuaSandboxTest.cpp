// What a formula may not do, and what stops it.

#include "tests/terminal/FormulaBars.h"

#include <gtest/gtest.h>

#include <chrono>

namespace terminal {
namespace {

/// Runs a body over a few bars with tight limits; the first error.
FormulaError errorOf(const QString &body, int milliseconds = 100) {
    FormulaLimits limits;
    limits.milliseconds = milliseconds;
    limits.bytes = 4u << 20;
    ErrorLog log;
    const auto program = makeLuaFormula(formulaOf(body), {}, log.sink(), limits);
    const MinuteBars bars = barsOfPrices({1.0, 2.0, 3.0});
    EXPECT_EQ(program->evaluate(bars).mTimes.size(), bars.size());
    return log.errors.empty() ? FormulaError{"none", -1, "none"} : log.errors.front();
}

bool isTimeError(const FormulaError &error) {
    return error.text.contains(QStringLiteral("运行超时"));
}
bool isMemoryError(const FormulaError &error) {
    return error.text.contains(QStringLiteral("内存超限"));
}

TEST(LuaSandboxTest, AFormulaThatNeverEndsIsStopped) {
    const auto start = std::chrono::steady_clock::now();
    const FormulaError error = errorOf("\nwhile true do end");
    EXPECT_TRUE(isTimeError(error)) << error.text.toStdString();
    EXPECT_EQ(error.formula, "TEST");
    EXPECT_EQ(error.line, 4);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_TRUE(isTimeError(errorOf("::again:: goto again")));
    EXPECT_TRUE(isTimeError(errorOf("for i = 1, math.huge do local x = {} end")));
    EXPECT_TRUE(isTimeError(errorOf("while true do local a = CLOSE[1] end")));
    EXPECT_TRUE(isTimeError(errorOf("local function f() return f() end return f()")));
}

TEST(LuaSandboxTest, ManyVectorsOfAFormulaThatReadsValuesEndInTime) {
    FormulaLimits limits;
    limits.milliseconds = 50;
    ErrorLog log;
    const auto program =
        makeLuaFormula(formulaOf("local sum, first = CLOSE, CLOSE[1]\n"
                                 "for i = 2, 200 do sum = sum + AVEDEV(CLOSE, i) end return sum"),
                       {}, log.sink(), limits);
    MinuteBars bars;
    for (int i = 0; i < 5000; ++i) {
        bars.push_back(flatBar(i, 10.0 + i * 37 % 101 * 0.01));
    }
    program->evaluateLast(bars);
    ASSERT_EQ(log.errors.size(), 1u) << "a million of deviations take longer";
    EXPECT_TRUE(isTimeError(log.errors[0]));
}

TEST(LuaSandboxTest, AFileThatNeverEndsIsStoppedBeforeRun) {
    FormulaLimits limits;
    limits.milliseconds = 50;
    ErrorLog log;
    makeLuaFormula({"LOOP", "\n\nwhile true do end", {}}, {}, log.sink(), limits);
    ASSERT_EQ(log.errors.size(), 1u);
    EXPECT_TRUE(isTimeError(log.errors[0]));
    EXPECT_EQ(log.errors[0].line, 3);
}

TEST(LuaSandboxTest, AStoppedFormulaStaysStill) {
    FormulaLimits limits;
    limits.milliseconds = 50;
    ErrorLog log;
    const auto program =
        makeLuaFormula(formulaOf("while #CLOSE > 1 do end return CLOSE"), {}, log.sink(), limits);
    EXPECT_EQ(program->evaluate(barsOfPrices({1.0})).mValues[0][0], 1.0);
    program->evaluate(barsOfPrices({1.0, 2.0}));
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 100; ++i) {
        program->evaluateLast(barsOfPrices({1.0, 2.0}));
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(50 * 50));
    EXPECT_EQ(log.errors.size(), 1u);
}

TEST(LuaSandboxTest, AllocatingWithoutEndIsStopped) {
    constexpr int kLong = 60000; // milliseconds: the memory ends first
    const FormulaError table = errorOf("\nlocal t = {}\nwhile true do t[#t + 1] = {} end", kLong);
    EXPECT_TRUE(isMemoryError(table)) << table.text.toStdString();
    EXPECT_EQ(table.line, 5);
    const FormulaError text = errorOf("local s = \"x\"\nwhile true do s = s .. s end", kLong);
    EXPECT_TRUE(isMemoryError(text)) << text.text.toStdString();
    EXPECT_EQ(text.line, 4);
    EXPECT_TRUE(isMemoryError(errorOf("local t = {} for i = 1, 1e9 do t = {t} end", kLong)));
    EXPECT_TRUE(isMemoryError(errorOf("local s = {} for i = 1, 1e9 do s[i] = tostring(i) end", kLong)));
}

TEST(LuaSandboxTest, VectorsAndDrawingsWithoutEndAreStopped) {
    EXPECT_EQ(errorOf("local v = CLOSE\nwhile true do v = v + 1 end").line, 4);
    EXPECT_EQ(errorOf("local v = CLOSE\nwhile true do v = COLOR(v, 1) end").line, 4);
    EXPECT_EQ(errorOf("while true do COLOR(CLOSE, 1) end").line, 3);
    EXPECT_EQ(errorOf("while true do VECTOR({}) end").line, 3);
}

TEST(LuaSandboxTest, EndlessRecursionIsAnError) {
    EXPECT_EQ(errorOf("local function f() return 1 + f() end\nreturn f()").line, 3);
    const FormulaError deep = errorOf("local t = {} for i = 1, 100000 do t = {t} end return t");
    EXPECT_NE(deep.line, -1);
}

TEST(LuaSandboxTest, NothingReachesOutOfTheFormula) {
    const char *const absent[] = {"io",
                                  "os",
                                  "debug",
                                  "package",
                                  "require",
                                  "load",
                                  "loadstring",
                                  "loadfile",
                                  "dofile",
                                  "collectgarbage",
                                  "print",
                                  "warn",
                                  "rawget",
                                  "rawset",
                                  "rawequal",
                                  "rawlen",
                                  "getmetatable",
                                  "setmetatable",
                                  "pcall",
                                  "xpcall",
                                  "coroutine",
                                  "_G",
                                  "string.dump",
                                  "string.rep",
                                  "string.find",
                                  "string.match",
                                  "string.gmatch",
                                  "string.gsub",
                                  "string.pack",
                                  "string.unpack",
                                  "table.move",
                                  "table.sort",
                                  "table.pack",
                                  "math.random",
                                  "math.randomseed",
                                  "utf8.codes",
                                  "utf8.charpattern"};
    for (const char *name : absent) {
        const FormulaError error =
            errorOf(QStringLiteral("assert(%1 == nil) return CLOSE").arg(QLatin1String(name)));
        EXPECT_EQ(error.text, "none") << name;
    }
}

TEST(LuaSandboxTest, ATextOffersNoMoreThanTheLibrary) {
    EXPECT_EQ(errorOf("return (\"x\"):rep(1e9)").line, 3);
    EXPECT_EQ(errorOf("return (\"x\"):gsub(\"x*\", \"y\")").line, 3);
    EXPECT_EQ(errorOf("return (\"ab\"):len() + CLOSE").text, "none");
}

TEST(LuaSandboxTest, LongCallsOfTheLibraryEndInTime) {
    // Each of these is one call, or few, of as much work as memory allows.
    const char *const bodies[] = {
        "local s = (\"%99d\"):format(1) while true do s = s .. s:upper() end",
        "local t = {} for i = 1, 20000 do t[i] = i end while true do table.insert(t, 1, 0) table.remove(t, 1) "
        "end",
        "local t = {} for i = 1, 20000 do t[i] = \"x\" end while true do local s = table.concat(t) end",
        "local t = {} for i = 1, 20000 do t[i] = i end while true do local n = select(\"#\", table.unpack(t)) "
        "end",
        "return table.unpack({}, 1, 1e8)",
        "return table.concat({}, \"\", 1, 1e15)",
        "return select(-1, table.unpack({}, 1, 200000))",
    };
    for (const char *body : bodies) {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_NE(errorOf(body).line, -1) << body;
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5)) << body;
    }
}

TEST(LuaSandboxTest, BytecodeIsRefused) {
    const FormulaError error =
        checkLuaFormula({"BYTES", QByteArray("\x1bLua\x54\x00", 6), {}}).value_or(FormulaError());
    EXPECT_EQ(error.formula, "BYTES");
    EXPECT_FALSE(error.text.isEmpty());
}

TEST(LuaSandboxTest, AFileThatIsTooLongIsRefused) {
    const QByteArray text = formulaOf("return CLOSE").text + QByteArray(300 * 1024, '-');
    EXPECT_TRUE(checkLuaFormula({"LONG", text, {}}));
}

TEST(LuaSandboxTest, DeeplyNestedTextIsAnError) {
    const QString nested = QStringLiteral("return ") + QString(50000, '(') + "1" + QString(50000, ')');
    EXPECT_EQ(errorOf(nested).text, "C stack overflow"); // the reader has no place for it
    EXPECT_NE(errorOf("return " + QString(50000, '{') + QString(50000, '}')).line, -1);
}

TEST(LuaSandboxTest, VectorsOfWrongKindsAreErrors) {
    const char *const bodies[] = {"return CLOSE.x",
                                  "CLOSE[1] = 2",
                                  "return CLOSE[1.5]",
                                  "return CLOSE .. \"x\"",
                                  "return CLOSE()",
                                  "return CLOSE + {}",
                                  "return CLOSE + \"1\"",
                                  "return CLOSE == OPEN",
                                  "return MA({}, 2)",
                                  "return MA(COLOR(CLOSE, 1), 2)",
                                  "return DRAWTEXT(CLOSE, CLOSE, 5)",
                                  "return STYLE(CLOSE, 99)",
                                  "return RGB(1, 2, 256)",
                                  "return MAX(CLOSE)",
                                  "return ABS(CLOSE, CLOSE)",
                                  "return REF(CLOSE, nil)",
                                  "return HHV(CLOSE, -1)",
                                  "return MA(CLOSE, 100001)",
                                  "return MA(CLOSE, 0/0)",
                                  "return VECTOR(3)"};
    for (const char *body : bodies) {
        EXPECT_EQ(errorOf(body).line, 3) << body;
    }
}

} // namespace
} // namespace terminal
