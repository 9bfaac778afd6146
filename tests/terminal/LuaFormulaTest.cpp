#include "terminal/formula/LuaFormula.h"
#include "chartdata/PointMerge.h"
#include "tests/terminal/FormulaBars.h"

#include <gtest/gtest.h>

namespace terminal {
namespace {

const char kMacd[] = R"(
formula {
  name = "MACD", type = 1, text = "平滑异同", source = "Gerald Appel",
  parameters = {
    {"SHORT", 12, min = 2, max = 200, text = "短期"},
    {"LONG", 26, min = 2, max = 200},
    {"TITLE", "close"},
  },
  lines = {
    {"DIF", color = RGB(1, 2, 3), fixed = true, precision = 3},
    {"DEA", axis = "OWN", style = 5},
    {"MACD", style = "COLORSTICK", axis = "HIDDEN"},
  },
}
function run()
  local dif = EMA(CLOSE, SHORT) - EMA(CLOSE, LONG)
  local dea = EMA(dif, 9)
  return dif, dea, 2 * (dif - dea)
end
)";

FormulaError checkOf(const QByteArray &text) {
    return checkLuaFormula({"NAME", text, {}}).value_or(FormulaError{"none", -1, "none"});
}

TEST(LuaFormulaTest, AFileTellsWhatItIs) {
    const auto description = describeLuaFormula({"MACD", kMacd, {}});
    ASSERT_TRUE(description);
    EXPECT_EQ(description->name, "MACD");
    EXPECT_EQ(description->type, 1);
    EXPECT_EQ(description->text, "平滑异同");
    EXPECT_EQ(description->source, "Gerald Appel");
    ASSERT_EQ(description->parameters.size(), 3);
    EXPECT_EQ(description->parameters[0].name, "SHORT");
    EXPECT_EQ(description->parameters[0].value, 12.0);
    EXPECT_EQ(description->parameters[0].min, 2.0);
    EXPECT_EQ(description->parameters[0].max, 200.0);
    EXPECT_EQ(description->parameters[0].text, "短期");
    EXPECT_TRUE(description->parameters[2].isText);
    EXPECT_EQ(description->parameters[2].textValue, "close");
    ASSERT_EQ(description->lines.size(), 3);
    EXPECT_EQ(description->lines[0].precision, 3);
    EXPECT_EQ(description->lines[1].precision, -1);
}

TEST(LuaFormulaTest, TheChartReadsLinesAsTheFileDescribesThem) {
    const se::RPCFormulaMetaResult meta = makeLuaFormula({"MACD", kMacd, {}})->describe();
    EXPECT_EQ(meta.mLineCount, 3);
    EXPECT_EQ(meta.mLineNames, (std::vector<std::string>{"DIF", "DEA", "MACD"}));
    EXPECT_EQ(meta.mLineStyles, (std::vector<qint32>{0, 5, 2}));
    EXPECT_EQ(meta.mLineColors, (std::vector<qint32>{0x030201, se::kDefaultColor, se::kDefaultColor}));
    EXPECT_EQ(meta.mLineFlags, (std::vector<qint32>{se::kLineFixedColor, 0, 0}));
    EXPECT_EQ(meta.mLineAxis, (std::vector<qint32>{se::eLineShared, se::eLineOwn, se::eLineHidden}));
}

TEST(LuaFormulaTest, ASeriesHasAPointForEachBar) {
    const MinuteBars bars = barsOfPrices({1.0, 2.0, 4.0});
    const se::RPCFormulaResult result = makeLuaFormula(formulaOf("return MA(CLOSE, 2)"))->evaluate(bars);
    EXPECT_EQ(result.mTimes,
              (std::vector<se::TimePosition>{{bars[0].time, 0}, {bars[1].time, 0}, {bars[2].time, 0}}));
    EXPECT_EQ(result.mValid, (std::vector<qint32>{1, 1, 1}));
    EXPECT_EQ(result.mValues[0], (std::vector<double>{TC::kUnsetValue, 1.5, 3.0}));
    EXPECT_EQ(result.mExtra1, (std::vector<std::vector<qint32>>{{}})) << "a line without colours has no list";
    EXPECT_EQ(result.mTexts, (std::vector<std::vector<std::string>>{{}}));
    EXPECT_EQ(result.mExtra2, (std::vector<std::vector<double>>{{}}));
    EXPECT_TRUE(result.mPointTags.empty());
}

TEST(LuaFormulaTest, ANumberAndATableAreLinesToo) {
    const auto program = makeLuaFormula(formulaOf("return 7, {1, nil, 3}", "{\"A\"}, {\"B\"}"));
    const se::RPCFormulaResult result = program->evaluate(barsOfPrices({1.0, 2.0, 4.0}));
    EXPECT_EQ(result.mValues[0], (std::vector<double>{7.0, 7.0, 7.0}));
    EXPECT_EQ(result.mValues[1], (std::vector<double>{1.0, TC::kUnsetValue, 3.0}));
}

TEST(LuaFormulaTest, ParametersTakeTheValuesOfTheUser) {
    LuaFormulaFile file{
        "P",
        "formula { name = \"P\", lines = {{\"A\"}},\n"
        "  parameters = {{\"N\", 2, max = 9}, {\"KIND\", \"sum\"}} }\n"
        "function run() if KIND == \"last\" then return REF(CLOSE, N) end return SUM(CLOSE, N) end\n",
        {}};
    const MinuteBars bars = barsOfPrices({1.0, 2.0, 4.0, 8.0});
    EXPECT_EQ(makeLuaFormula(file)->evaluate(bars).mValues[0].back(), 12.0);
    file.arguments = {{"N", "3"}, {"KIND", "last"}, {"__sys__account", "A1"}};
    EXPECT_EQ(makeLuaFormula(file)->evaluate(bars).mValues[0].back(), 1.0);
    file.arguments = {{"N", "10"}};
    ErrorLog log;
    EXPECT_EQ(makeLuaFormula(file, {}, log.sink())->evaluate(bars).mValues[0].back(), TC::kUnsetValue);
    ASSERT_EQ(log.errors.size(), 1u);
    EXPECT_TRUE(log.errors[0].text.contains("N"));
    file.arguments = {{"N", "x"}};
    EXPECT_TRUE(checkLuaFormula(file));
}

TEST(LuaFormulaTest, WhatIsKnownOfTheInstrumentIsANumber) {
    FormulaInputs inputs;
    inputs.previousClose = 8.0;
    inputs.floatShares = 1000.0;
    const LuaFormulaFile file =
        formulaOf("return (CLOSE - PREVCLOSE) / PREVCLOSE, VOL / FLOATSHARES, VALID(PRICETICK)",
                  "{\"A\"}, {\"B\"}, {\"C\"}");
    const se::RPCFormulaResult result = makeLuaFormula(file, inputs)->evaluate(barsOfPrices({10.0}));
    EXPECT_EQ(result.mValues[0][0], 0.25);
    EXPECT_EQ(result.mValues[1][0], 0.1);
    EXPECT_EQ(result.mValues[2][0], 0.0);
}

TEST(LuaFormulaTest, DrawingsSetStyleColourTextAndNumberOfAPoint) {
    FormulaInputs inputs;
    inputs.riseColor = 0x1122;
    const LuaFormulaFile file = formulaOf("local up = GT(CLOSE, REF(CLOSE, 1))\n"
                                          "local line = COLOR(COLOR(CLOSE, COLORBLUE), COLORRISE, up)\n"
                                          "return STYLE(NUMBER(TEXT(line, \"up\", up), VOL * 2), \"DOTLINE\")");
    const auto program = makeLuaFormula(file, inputs);
    EXPECT_EQ(program->describe().mLineStyles, std::vector<qint32>{4});
    const se::RPCFormulaResult result = program->evaluate(barsOfPrices({1.0, 2.0, 1.5}));
    EXPECT_EQ(result.mValues[0], (std::vector<double>{1.0, 2.0, 1.5}));
    EXPECT_EQ(result.mExtra1[0], (std::vector<qint32>{0xff0000, 0x1122, 0xff0000}));
    EXPECT_EQ(result.mTexts[0], (std::vector<std::string>{"", "up", ""}));
    EXPECT_EQ(result.mExtra2[0], (std::vector<double>{200.0, 200.0, 200.0}));
}

TEST(LuaFormulaTest, TextsComeFromFilesThatDrawThemOrMayYetDrawThem) {
    const MinuteBars two = barsOfPrices({1.0, 2.0});
    const auto without = makeLuaFormula(formulaOf("return CLOSE"));
    EXPECT_TRUE(without->evaluate(two).mTexts[0].empty());
    EXPECT_TRUE(without->evaluateLast(two).mTexts.empty());
    const auto with = makeLuaFormula(formulaOf("return TEXT(CLOSE, \"x\", 0), CLOSE", "{\"A\"}, {\"B\"}"));
    EXPECT_EQ(with->evaluate(two).mTexts, (std::vector<std::vector<std::string>>{{"", ""}, {}}));
    EXPECT_EQ(with->evaluateLast(two).mTexts, (std::vector<std::string>{"", ""}));
    // Its text is taken back with a later bar.
    const auto reading =
        makeLuaFormula(formulaOf("if #CLOSE == 2 then return TEXT(CLOSE, \"x\", 1) end return CLOSE"));
    EXPECT_EQ(reading->evaluate(two).mTexts, (std::vector<std::vector<std::string>>{{"x", "x"}}));
    const MinuteBars three = barsOfPrices({1.0, 2.0, 3.0});
    EXPECT_EQ(reading->evaluateLast(three).mTexts, (std::vector<std::string>{""}));
    EXPECT_EQ(reading->evaluate(three).mTexts, (std::vector<std::vector<std::string>>{{"", "", ""}}));
}

TEST(LuaFormulaTest, AllLinesHaveColoursAndSecondValuesOrNone) {
    const MinuteBars two = barsOfPrices({1.0, 2.0});
    const auto without = makeLuaFormula(formulaOf("return CLOSE, VOL", "{\"A\"}, {\"B\"}"));
    EXPECT_EQ(without->evaluate(two).mExtra1, (std::vector<std::vector<qint32>>{{}, {}}));
    EXPECT_EQ(without->evaluate(two).mExtra2, (std::vector<std::vector<double>>{{}, {}}));
    EXPECT_TRUE(without->evaluateLast(two).mExtra1.empty());
    EXPECT_TRUE(without->evaluateLast(two).mExtra2.empty());
    const auto with =
        makeLuaFormula(formulaOf("return NUMBER(COLOR(CLOSE, COLORBLUE), 3), CLOSE", "{\"A\"}, {\"B\"}"));
    constexpr double kNone = TC::kUnsetValue;
    EXPECT_EQ(with->evaluate(two).mExtra1, (std::vector<std::vector<qint32>>{{0xff0000, 0xff0000}, {-1, -1}}));
    EXPECT_EQ(with->evaluate(two).mExtra2, (std::vector<std::vector<double>>{{3.0, 3.0}, {kNone, kNone}}));
    EXPECT_EQ(with->evaluateLast(two).mExtra1, (std::vector<qint32>{0xff0000, -1}));
    EXPECT_EQ(with->evaluateLast(two).mExtra2, (std::vector<double>{3.0, kNone}));
    // A later bar brings a second value.
    const auto reading =
        makeLuaFormula(formulaOf("if #CLOSE == 3 then return NUMBER(CLOSE, 9) end return CLOSE"));
    EXPECT_EQ(reading->evaluate(two).mExtra2, (std::vector<std::vector<double>>{{kNone, kNone}}));
    EXPECT_EQ(reading->evaluateLast(barsOfPrices({1.0, 2.0, 3.0})).mExtra2, (std::vector<double>{9.0}));
}

TEST(LuaFormulaTest, PointsOfLinesWithoutSecondValuesBringNone) {
    const auto program = makeLuaFormula(formulaOf("return CLOSE"));
    se::RPCFormulaResult series = program->evaluate(barsOfPrices({1.0, 2.0}));
    const se::RPCFormulaInstantResult point = program->evaluateLast(barsOfPrices({1.0, 2.0, 3.0}));
    TC::storePoint(series, TC::findPlace(series.mTimes, point.mTime), point, TC::EPointParts::Everything);
    EXPECT_EQ(series.mValues[0], (std::vector<double>{1.0, 2.0, 3.0}));
    EXPECT_TRUE(series.mExtra2[0].empty()) << "a second value of 0 would colour the points before";
}

TEST(LuaFormulaTest, VectorsOverTheirTimeDrawNothingFromThenOn) {
    FormulaLimits limits;
    limits.milliseconds = 20;
    ErrorLog log;
    const auto program = makeLuaFormula(formulaOf("return AVEDEV(CLOSE, 700)"), {}, log.sink(), limits);
    MinuteBars bars;
    for (int i = 0; i < 200000; ++i) {
        bars.push_back(flatBar(i, 10.0 + i * 7 % 13));
    }
    const se::RPCFormulaResult result = program->evaluate(bars);
    EXPECT_EQ(result.mTimes.size(), bars.size());
    EXPECT_EQ(result.mValues[0], std::vector<double>(bars.size(), TC::kUnsetValue));
    EXPECT_EQ(program->evaluate(barsOfPrices({1.0})).mValues[0], std::vector<double>{TC::kUnsetValue});
    EXPECT_EQ(program->evaluateLast(barsOfPrices({1.0})).mValues, std::vector<double>{TC::kUnsetValue});
    ASSERT_EQ(log.errors.size(), 1u);
    EXPECT_TRUE(log.errors[0].text.contains(QStringLiteral("运行超时")));
}

TEST(LuaFormulaTest, InstructionsPutTheUsualDrawingsTogether) {
    const LuaFormulaFile file =
        formulaOf("local c = GT(CLOSE, 1)\n"
                  "return DRAWTEXT(c, HIGH, \"高\"), DRAWTEXTFIX(c, 0.5, \"x\"), DRAWICON(c, LOW), "
                  "DRAWNUMBER(c, CLOSE, VOL),\n"
                  "  STICKLINE(c, CLOSE, 0.5), VERTLINE(c), PARTLINE(c, CLOSE)",
                  "{\"1\"}, {\"2\"}, {\"3\"}, {\"4\"}, {\"5\"}, {\"6\"}, {\"7\", style = \"DOTLINE\"}");
    const auto program = makeLuaFormula(file);
    EXPECT_EQ(program->describe().mLineStyles, (std::vector<qint32>{13, 31, 26, 28, 36, 14, 4}));
    const se::RPCFormulaResult result = program->evaluate(barsOfPrices({1.0, 2.0}));
    const std::vector<double> atSecond{2.0, 0.5, 2.0, 2.0, 2.0, 1.0, 2.0};
    for (std::size_t line = 0; line < atSecond.size(); ++line) {
        EXPECT_EQ(result.mValues[line], (std::vector<double>{TC::kUnsetValue, atSecond[line]})) << line;
    }
    EXPECT_EQ(result.mTexts[0][1], "高");
    EXPECT_EQ(result.mTexts[1][1], "x");
    EXPECT_EQ(result.mExtra2[3][1], 100.0);
    EXPECT_EQ(result.mExtra2[4][1], 0.5);
}

TEST(LuaFormulaTest, TheCheckTellsTheLineOfAnError) {
    EXPECT_EQ(checkOf(kMacd).line, -1);
    const FormulaError syntax =
        checkOf("formula { name = \"A\", lines = {{\"A\"}} }\nfunction run()\n  return (\nend");
    EXPECT_EQ(syntax.formula, "NAME");
    EXPECT_EQ(syntax.line, 4);
    EXPECT_EQ(checkOf(formulaOf("\n\n  return CLOSE + nosuch").text).line, 5);
    EXPECT_EQ(checkOf(formulaOf("  return MA(CLOSE)").text).line, 3);
    EXPECT_EQ(checkOf(formulaOf("  return MA(CLOSE, 2.5)").text).line, 3);
    EXPECT_EQ(checkOf(formulaOf("\n  return MA(CLOSE, 0)").text).line, 4);
    EXPECT_EQ(checkOf(formulaOf("  return SMA(CLOSE, 3, 4)").text).line, 3);
    EXPECT_EQ(checkOf(formulaOf("  if CLOSE > OPEN then return CLOSE end").text).line, 3);
    EXPECT_EQ(checkOf(formulaOf("  error(\"so\")").text), (FormulaError{"NAME", 3, "so"}));
    EXPECT_EQ(checkOf(formulaOf("  error({})").text).line, 3);
    EXPECT_EQ(checkOf(formulaOf("  return CLOSE[1] + nosuch").text).line, 3);
}

TEST(LuaFormulaTest, ADescriptionThatMakesNoSenseIsRefused) {
    const char *const refused[] = {
        "",
        "formula()",
        "formula {}",
        "formula { name = \"A\" }",
        "formula { name = \" \", lines = {{\"A\"}} }",
        "formula { name = {}, lines = {{\"A\"}} }",
        "formula { name = \"A\", lines = {\"A\"} }",
        "formula { name = \"A\", lines = {{}} }",
        "formula { name = \"A\", type = 3, lines = {{\"A\"}} }",
        "formula { name = \"A\", type = 0.5, lines = {{\"A\"}} }",
        "formula { name = \"A\", lines = {{\"A\", style = \"NOSUCH\"}} }",
        "formula { name = \"A\", lines = {{\"A\", style = 43}} }",
        "formula { name = \"A\", lines = {{\"A\", axis = \"LEFT\"}} }",
        "formula { name = \"A\", lines = {{\"A\", precision = 9}} }",
        "formula { name = \"A\", lines = {{\"A\", color = -5}} }",
        "formula { name = \"A\", lines = {{\"A\"}}, parameters = {{\"1N\", 2}} }",
        "formula { name = \"A\", lines = {{\"A\"}}, parameters = {{\"end\", 2}} }",
        "formula { name = \"A\", lines = {{\"A\"}}, parameters = {{\"MA\", 2}} }",
        "formula { name = \"A\", lines = {{\"A\"}}, parameters = {{\"N\", 2}, {\"N\", 3}} }",
        "formula { name = \"A\", lines = {{\"A\"}}, parameters = {{\"N\", 2, min = 3}} }",
        "formula { name = \"A\", lines = {{\"A\"}}, parameters = {{\"N\", 0/0}} }",
        "formula { name = \"A\", lines = {{\"A\"}} } formula { name = \"A\", lines = {{\"A\"}} }",
    };
    for (const char *text : refused) {
        FormulaError error;
        EXPECT_FALSE(describeLuaFormula({"NAME", text, {}}, &error)) << text;
        EXPECT_FALSE(error.text.isEmpty()) << text;
        EXPECT_EQ(error.formula, "NAME") << text;
    }
}

TEST(LuaFormulaTest, WhatRunReturnsFitsTheLines) {
    EXPECT_EQ(checkOf(formulaOf("return CLOSE, OPEN").text).formula, "NAME");
    EXPECT_EQ(checkOf(formulaOf("").text).formula, "NAME");
    EXPECT_EQ(checkOf(formulaOf("return \"x\"").text).formula, "NAME");
    EXPECT_EQ(checkOf(formulaOf("return {\"x\"}").text).formula, "NAME");
    EXPECT_EQ(checkOf("formula { name = \"A\", lines = {{\"A\"}} }").formula, "NAME");
}

TEST(LuaFormulaTest, AfterAnErrorTheSeriesIsThereAndEmpty) {
    ErrorLog log;
    const auto program = makeLuaFormula(formulaOf("return CLOSE + nosuch"), {}, log.sink());
    const MinuteBars bars = barsOfPrices({1.0, 2.0});
    EXPECT_EQ(program->evaluate(bars).mValues[0], std::vector<double>(2, TC::kUnsetValue));
    EXPECT_EQ(program->evaluateLast(bars).mValues, std::vector<double>{TC::kUnsetValue});
    EXPECT_EQ(program->describe().mLineNames, std::vector<std::string>{"LINE"});
    ASSERT_EQ(log.errors.size(), 1u); // told once
    EXPECT_EQ(log.errors[0].formula, "TEST");
    EXPECT_EQ(log.errors[0].line, 3);
}

TEST(LuaFormulaTest, AnErrorThatPassesIsToldEachTimeItComesBack) {
    // Fails at every third bar.
    const LuaFormulaFile file =
        formulaOf("if #CLOSE > 0 and #CLOSE % 3 == 0 then error(\"three\") end return CLOSE");
    ErrorLog log;
    const auto program = makeLuaFormula(file, {}, log.sink());
    MinuteBars bars;
    for (int i = 1; i <= 7; ++i) {
        bars.push_back(flatBar(i, i));
        const double expected = i % 3 == 0 ? TC::kUnsetValue : i;
        EXPECT_EQ(program->evaluateLast(bars).mValues[0], expected);
        program->evaluateLast(bars);
    }
    EXPECT_EQ(log.errors.size(), 2u);
}

TEST(LuaFormulaTest, AMakerAsksForTheFileOfARequest) {
    const LuaFormulaLookup lookup = [](const TC::CFormulaParam &param) -> std::optional<LuaFormulaFile> {
        if (param.mFormulaName != QLatin1String("KNOWN")) {
            return std::nullopt;
        }
        return LuaFormulaFile{"KNOWN",
                              "formula { name = \"KNOWN\", lines = {{\"A\"}}, parameters = {{\"N\", 1}} }\n"
                              "function run() return N + PREVCLOSE end",
                              {{"N", "2"}}};
    };
    const FormulaInputsOf inputs = [](const TC::CFormulaParam &param) {
        FormulaInputs known;
        known.previousClose = param.mCode == QLatin1String("600000") ? 10.0 : 20.0;
        return known;
    };
    const FormulaProgramMaker maker = luaFormulaMaker(lookup, inputs);
    TC::CFormulaParam param;
    EXPECT_EQ(maker(param), nullptr);
    param.mFormulaName = "KNOWN";
    param.mCode = "600000";
    const MinuteBars bars = barsOfPrices({1.0});
    EXPECT_EQ(maker(param)->evaluate(bars).mValues[0][0], 12.0);
    param.mArguments = {{"N", "5"}};
    EXPECT_EQ(maker(param)->evaluate(bars).mValues[0][0], 15.0);
}

} // namespace
} // namespace terminal
