// What a tick computes anew is what computing everything anew gives.

#include "terminal/formula/FormulaRun.h"
#include "terminal/formula/VectorFunctions.h"
#include "tests/terminal/FormulaBars.h"

#include <gtest/gtest.h>

#include <random>

namespace terminal {
namespace {

/// A walk of the bars of a running day.
class BarWalk {
public:
    explicit BarWalk(unsigned seed) : mDraw(seed) {}

    const MinuteBars &bars() const { return mBars; }
    /// A trade: the last bar changes, or a new one comes.
    void tick() {
        if (mBars.empty() || mDraw() % 3 == 0) {
            mBars.push_back(changed(flatBar(static_cast<int>(mBars.size()), last())));
        } else {
            mBars.back() = changed(mBars.back());
        }
    }
    /// An earlier bar comes once more, changed.
    void revise() {
        MinuteBar &bar = mBars[mDraw() % mBars.size()];
        bar = changed(bar);
    }

private:
    double last() const { return mBars.empty() ? 10.0 : mBars.back().price; }
    MinuteBar changed(MinuteBar bar) {
        const int step = static_cast<int>(mDraw() % 7) - 3;
        bar.price += step * 0.01;
        bar.high = std::max(bar.high, bar.price);
        bar.low = std::min(bar.low, bar.price);
        bar.open = mDraw() % 9 == 0 ? 0.0 : bar.open; // not known
        bar.volume += static_cast<double>(mDraw() % 5) * 100.0;
        bar.amount = bar.volume * bar.price;
        return bar;
    }

    std::mt19937 mDraw;
    MinuteBars mBars;
};

/// A call of a function with arguments of the kinds that it takes, vectors with points without a value among them.
QString callOf(const VectorFunction &function, int length) {
    const QStringList vectors{"CLOSE - AVERAGE", "IF(EQ(MOD(BARPOS, 5), 2), NAN, REF(OPEN, 1))",
                              "GT(CLOSE, OPEN)"};
    QStringList arguments;
    for (const char *kind = function.arguments; *kind != '\0'; ++kind) {
        const bool isVector = *kind == 'v';
        arguments += isVector ? vectors[arguments.size() % 3] : QString::number(*kind == 'm' ? 1 : length);
    }
    return QStringLiteral("%1(%2)").arg(QLatin1String(function.name), arguments.join(", "));
}

LuaFormulaFile everyFunction(int length) {
    QStringList calls;
    QStringList lines;
    for (const VectorFunction &function : vectorFunctions()) {
        if (QChar(function.name[0]).isLetter() && !QByteArray(function.arguments).contains('+')) {
            calls += callOf(function, length);
            lines += QStringLiteral("{\"%1\"}").arg(QLatin1String(function.name));
        }
    }
    calls += "MAX(CLOSE, OPEN, AVERAGE)";
    calls += "COLOR(NUMBER(TEXT(VOL, \"up\", GT(CLOSE, OPEN)), MA(VOL, 3)), COLORRISE, GT(CLOSE, OPEN))";
    lines += "{\"MAX\"}, {\"DRAWN\"}";
    return formulaOf("return " + calls.join(",\n"), lines.join(", "));
}

/// Expects the last point of a whole series.
void expectLast(const se::RPCFormulaResult &whole, const se::RPCFormulaInstantResult &point) {
    ASSERT_EQ(point.mTime, whole.mTimes.back());
    ASSERT_EQ(point.mValues.size(), whole.mValues.size());
    for (std::size_t line = 0; line < point.mValues.size(); ++line) {
        ASSERT_EQ(point.mValues[line], whole.mValues[line].back()) << "line " << line;
        ASSERT_EQ(point.mExtra1[line], whole.mExtra1[line].back()) << "line " << line;
        ASSERT_EQ(point.mExtra2[line], whole.mExtra2[line].back()) << "line " << line;
        ASSERT_EQ(line < point.mTexts.size() ? point.mTexts[line] : "",
                  whole.mTexts[line].empty() ? "" : whole.mTexts[line].back())
            << "line " << line;
    }
}

void expectSame(const se::RPCFormulaResult &a, const se::RPCFormulaResult &b) {
    ASSERT_EQ(a.mTimes, b.mTimes);
    for (std::size_t line = 0; line < a.mValues.size(); ++line) {
        ASSERT_EQ(a.mValues[line], b.mValues[line]) << "line " << line;
    }
    ASSERT_EQ(a.mExtra1, b.mExtra1);
    ASSERT_EQ(a.mExtra2, b.mExtra2);
    ASSERT_EQ(a.mTexts, b.mTexts);
}

class LuaFormulaTicksTest : public testing::TestWithParam<int> {};

TEST_P(LuaFormulaTicksTest, EveryFunctionGivesTheSameAfterTicksAsAfterAWholeRun) {
    const LuaFormulaFile file = everyFunction(GetParam());
    ErrorLog log;
    for (unsigned seed = 1; seed <= 3; ++seed) {
        BarWalk walk(seed);
        const auto program = makeLuaFormula(file, {}, log.sink());
        for (int i = 0; i < 150; ++i) {
            walk.tick();
            const se::RPCFormulaInstantResult point = program->evaluateLast(walk.bars());
            ASSERT_NO_FATAL_FAILURE(expectLast(makeLuaFormula(file)->evaluate(walk.bars()), point)) << i;
            if (i % 10 == 9) {
                walk.revise();
                const se::RPCFormulaResult anew = makeLuaFormula(file)->evaluate(walk.bars());
                ASSERT_NO_FATAL_FAILURE(expectSame(program->evaluate(walk.bars()), anew)) << i;
            }
        }
    }
    EXPECT_TRUE(log.errors.empty()) << log.errors[0].text.toStdString();
}

TEST_P(LuaFormulaTicksTest, SeveralTicksMayComeBetweenTwoPoints) {
    const LuaFormulaFile file = everyFunction(GetParam());
    BarWalk walk(11);
    const auto program = makeLuaFormula(file, {}, {});
    for (int i = 0; i < 60; ++i) {
        for (int ticks = 0; ticks <= i % 5; ++ticks) {
            walk.tick();
        }
        const se::RPCFormulaInstantResult point = program->evaluateLast(walk.bars());
        ASSERT_NO_FATAL_FAILURE(expectLast(makeLuaFormula(file)->evaluate(walk.bars()), point)) << i;
    }
}

TEST_P(LuaFormulaTicksTest, ALongSeriesIsTheSameHoweverItGrew) {
    const LuaFormulaFile file = everyFunction(GetParam());
    BarWalk walk(5);
    const auto grown = makeLuaFormula(file, {}, {});
    while (walk.bars().size() < 9000) {
        for (int ticks = 0; ticks < 2000; ++ticks) {
            walk.tick();
        }
        grown->evaluate(walk.bars());
        for (int ticks = 0; ticks < 40; ++ticks) { // some points one by one
            walk.tick();
            grown->evaluateLast(walk.bars());
        }
        walk.revise();
        const se::RPCFormulaResult anew = makeLuaFormula(file)->evaluate(walk.bars());
        ASSERT_NO_FATAL_FAILURE(expectSame(grown->evaluate(walk.bars()), anew)) << walk.bars().size();
    }
}

INSTANTIATE_TEST_SUITE_P(Lengths, LuaFormulaTicksTest, testing::Values(2, 3, 7, 20, 700));

TEST(LuaFormulaTicksTest, ARunThatReadsSingleValuesGivesTheSameAfterTicks) {
    const LuaFormulaFile file =
        formulaOf("local total, out = 0, {}\n"
                  "for i = 1, #CLOSE do total = total + CLOSE[i] * VOL[i]; out[i] = total end\n"
                  "return MA(VECTOR(out), 2)");
    ErrorLog log;
    BarWalk walk(7);
    const auto program = makeLuaFormula(file, {}, log.sink());
    for (int i = 0; i < 60; ++i) {
        walk.tick();
        ASSERT_NO_FATAL_FAILURE(
            expectLast(makeLuaFormula(file)->evaluate(walk.bars()), program->evaluateLast(walk.bars())));
    }
    EXPECT_TRUE(log.errors.empty());
}

TEST(LuaFormulaTicksTest, ADayThatStartsOverIsComputedAnew) {
    const LuaFormulaFile file = formulaOf("return EMA(CLOSE, 3)");
    const auto program = makeLuaFormula(file);
    program->evaluate(barsOfPrices({1.0, 2.0, 3.0, 4.0}));
    expectSame(program->evaluate(barsOfPrices({5.0, 6.0})),
               makeLuaFormula(file)->evaluate(barsOfPrices({5.0, 6.0})));
    expectSame(program->evaluate({}), makeLuaFormula(file)->evaluate({}));
}

TEST(LuaFormulaTicksTest, ABarOfAnotherTimeIsAnotherOneToWhatReadsTheUnderlying) {
    MinuteBars bars = barsOfPrices({1.0, 2.0, 3.0});
    FormulaInputs inputs;
    inputs.underlying = "X";
    inputs.underlyingBars = {flatBar(1, 70.0), flatBar(9, 90.0)};
    const auto program = makeLuaFormula(formulaOf("return UCLOSE"), inputs);
    constexpr double kNone = TC::kUnsetValue;
    EXPECT_EQ(program->evaluate(bars).mValues[0], (std::vector<double>{kNone, 70.0, 70.0}));
    bars[2] = flatBar(9, 3.0);
    EXPECT_EQ(program->evaluate(bars).mValues[0], (std::vector<double>{kNone, 70.0, 90.0}));
    bars[0] = flatBar(-1, 1.0);
    bars[1] = flatBar(0, 2.0);
    EXPECT_EQ(program->evaluate(bars).mValues[0], (std::vector<double>{kNone, kNone, 90.0}));
}

TEST(LuaFormulaTicksTest, OnlyARunThatReadsSingleValuesIsToBeRunAgain) {
    const auto readsValues = [](const char *body) {
        const MinuteBars bars = barsOfPrices({1.0, 2.0});
        return FormulaRun::of(formulaOf(body), {}, {}, bars, RunDepth::Compute)->readsValues;
    };
    EXPECT_FALSE(readsValues("return MA(CLOSE, 2) + 1"));
    EXPECT_FALSE(readsValues("local sum = 0 for i = 1, 3 do sum = sum + REF(CLOSE, i) end return sum"));
    EXPECT_TRUE(readsValues("return CLOSE[1]"));
    EXPECT_TRUE(readsValues("return #CLOSE"));
    EXPECT_TRUE(readsValues("return VECTOR({1, 2})"));
    EXPECT_TRUE(readsValues("return {1, 2}"));
}

} // namespace
} // namespace terminal
