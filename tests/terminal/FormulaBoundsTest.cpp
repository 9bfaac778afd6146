// What formulas may tell, and how much of it is kept.

#include "terminal/formula/ShortText.h"
#include "tests/terminal/FormulaBars.h"

#include <gtest/gtest.h>

namespace terminal {
namespace {

constexpr int kShort = kLongestShortText + 1; // with the sign that something is missing

FormulaError errorOfText(const QByteArray &text, const FormulaLimits &limits = {}) {
    ErrorLog log;
    makeLuaFormula({"TEST", text, {}}, {}, log.sink(), limits)->evaluate(barsOfPrices({1.0, 2.0}));
    return log.errors.empty() ? FormulaError{"none", -1, "none"} : log.errors.front();
}

TEST(FormulaBoundsTest, AnErrorIsCutWhereItEnters) {
    const FormulaError large =
        errorOfText("local t = {} for i = 1, 20000 do t[i] = 'xy长' end error(table.concat(t))");
    EXPECT_LE(large.text.size(), kShort);
    EXPECT_TRUE(large.text.endsWith("…")) << large.text.toStdString();
    EXPECT_TRUE(large.text.startsWith("xy长xy")) << large.text.toStdString();
    EXPECT_EQ(large.line, 1);
}

TEST(FormulaBoundsTest, NamesAndDescriptionsAreCut) {
    const QByteArray head = "local t = {} for i = 1, 20000 do t[i] = 'abcd' end local long = table.concat(t)\n";
    const auto described =
        describeLuaFormula({"TEST",
                            head + "formula { name = long, text = long, source = long, lines = {{long}},"
                                   " parameters = {{'N', 1, text = long}} }\n",
                            {}});
    ASSERT_TRUE(described);
    for (const QString &text : {described->name, described->text, described->source, described->lines[0].name,
                                described->parameters[0].text}) {
        EXPECT_EQ(text.size(), kShort);
    }
    const FormulaError error = errorOfText(head + "formula { name = 'A', lines = {{'X', style = long}} }\n");
    EXPECT_LE(error.text.size(), kShort);
    EXPECT_FALSE(error.text.isEmpty());
    EXPECT_NE(errorOfText(head + "formula { name = 'A', lines = {{'X'}}, parameters = {{'P', long}} }").line,
              -1)
        << "the value of a parameter is refused rather than changed";
}

TEST(FormulaBoundsTest, TheLimitOfVectorsHoldsWhileTheyAreMade) {
    FormulaLimits limits;
    limits.vectors = 60;
    const QByteArray head = "formula { name = 'TEST', lines = {{'X'}} }\nfunction run()\n";
    // What draws makes vectors that Lua never sees.
    const FormulaError error =
        errorOfText(head + "for i = 1, 400 do DRAWICON(GT(CLOSE, i), CLOSE) end return CLOSE end", limits);
    EXPECT_TRUE(error.text.contains("60")) << error.text.toStdString();
    EXPECT_EQ(errorOfText(head + "local x = CLOSE for i = 1, 5 do x = x + 1 end return x end", limits).line,
              -1);
}

TEST(ShortText, ACutNeverSplitsACharacter) {
    EXPECT_EQ(shortened(QStringLiteral("abc"), 3), QStringLiteral("abc"));
    EXPECT_EQ(shortened(QStringLiteral("abcd"), 3), QStringLiteral("abc…"));
    const QString twice = QString::fromUtf8("a\xF0\x9D\x84\x9E"
                                            "b"); // a sign of two units
    EXPECT_EQ(shortened(twice, 2), QStringLiteral("a…"));
    EXPECT_EQ(shortenedUtf8("abc", 2), QStringLiteral("ab"));
    EXPECT_EQ(shortenedUtf8(nullptr, 0), QString());
}

} // namespace
} // namespace terminal
