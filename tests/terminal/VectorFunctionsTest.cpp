#include "terminal/formula/VectorFunctions.h"
#include "tests/terminal/FormulaBars.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

namespace terminal {
namespace {

QByteArray contentOf(const char *path) {
    QFile file(QStringLiteral(TIMESHARE_SOURCE_DIR "/") + QLatin1String(path));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path;
    return file.readAll();
}

/// Values that another program has computed: tests/terminal/reference_formulas.py.
QJsonObject reference() {
    static const QJsonObject all =
        QJsonDocument::fromJson(contentOf("tests/terminal/data/reference_formulas.json")).object();
    return all;
}

MinuteBars referenceBars() {
    MinuteBars bars;
    for (const QJsonValue &value : reference().value("bars").toArray()) {
        const QJsonArray bar = value.toArray();
        bars.push_back({kFormulaMorning + bar[0].toInt() * 60000, bar[1].toDouble(), bar[2].toDouble(),
                        bar[3].toDouble(), bar[4].toDouble(), bar[5].toDouble(), bar[6].toDouble(),
                        bar[7].toDouble()});
    }
    return bars;
}

/// Empty when a value is what is expected, up to rounding; else both.
std::string difference(const QJsonValue &expected, double value) {
    const bool missing = value == TC::kUnsetValue;
    const double wanted = expected.toDouble();
    const double tolerance = 1e-9 * std::max(1.0, std::abs(wanted));
    if (expected.isNull() == missing && (missing || std::abs(value - wanted) <= tolerance)) {
        return {};
    }
    return "expected " + (expected.isNull() ? "no value" : std::to_string(wanted)) + ", got " +
           (missing ? "no value" : std::to_string(value));
}

TEST(VectorFunctionsTest, ValuesAreThoseOfTheReferenceProgram) {
    const MinuteBars bars = referenceBars();
    const QJsonArray cases = reference().value("cases").toArray();
    ASSERT_EQ(bars.size(), 150u);
    ASSERT_GT(cases.size(), 200);
    for (const QJsonValue &each : cases) {
        const QString expression = each.toObject().value("formula").toString();
        const QJsonArray expected = each.toObject().value("values").toArray();
        ErrorLog log;
        const auto program = makeLuaFormula(formulaOf("return " + expression), {}, log.sink());
        const se::RPCFormulaResult result = program->evaluate(bars);
        ASSERT_TRUE(log.errors.empty()) << expression.toStdString() << ": " << log.errors[0].text.toStdString();
        ASSERT_EQ(result.mValues[0].size(), bars.size());
        ASSERT_EQ(static_cast<std::size_t>(expected.size()), bars.size());
        for (std::size_t i = 0; i < bars.size(); ++i) {
            const std::string wrong = difference(expected[static_cast<int>(i)], result.mValues[0][i]);
            ASSERT_EQ(wrong, "") << expression.toStdString() << " at point " << i;
        }
    }
}

TEST(VectorFunctionsTest, EveryFunctionAndSeriesHasReferenceValues) {
    QSet<QString> tried;
    static const QRegularExpression word(QStringLiteral("[A-Z]+"));
    for (const QJsonValue &each : reference().value("cases").toArray()) {
        const QString expression = each.toObject().value("formula").toString();
        for (auto match = word.globalMatch(expression); match.hasNext();) {
            tried.insert(match.next().captured());
        }
    }
    for (const VectorFunction &function : vectorFunctions()) {
        const QString name = QLatin1String(function.name);
        EXPECT_TRUE(!name[0].isLetter() || tried.contains(name)) << function.name;
    }
    for (const BarSeries &series : barSeries()) {
        EXPECT_TRUE(tried.contains(QLatin1String(series.name))) << series.name;
    }
}

TEST(VectorFunctionsTest, EveryFunctionAndSeriesIsDocumented) {
    const QString text = QString::fromUtf8(contentOf("docs/formulas.md"));
    for (const VectorFunction &function : vectorFunctions()) {
        const QString name = QLatin1String(function.name);
        const QRegularExpression mention(QStringLiteral("`%1[`(]").arg(name));
        EXPECT_TRUE(!name[0].isLetter() || text.contains(mention)) << function.name;
    }
    for (const BarSeries &series : barSeries()) {
        EXPECT_TRUE(text.contains(QStringLiteral("`%1`").arg(QLatin1String(series.name)))) << series.name;
    }
}

TEST(VectorFunctionsTest, NumbersAloneGiveANumber) {
    VectorGraph graph;
    const Operand most = vectorFunction("MAX")->make(graph, {3.0, 5.0, 4.0});
    ASSERT_TRUE(most.isNumber());
    EXPECT_EQ(most.number, 5.0);
    EXPECT_EQ(graph.size(), 0u);
    EXPECT_EQ(vectorFunction("NOSUCH"), nullptr);
}

TEST(VectorFunctionsTest, ADeviationOfNearlyEqualLargeValuesKeepsItsDigits) {
    MinuteBars bars;
    for (int i = 0; i < 40; ++i) {
        bars.push_back(flatBar(i, 1e9 + (i % 2)));
    }
    const auto program = makeLuaFormula(formulaOf("return STDP(CLOSE, 10)"));
    // Half of the values lie 0.5 below the mean, half 0.5 above it. The squares of the values have no digit left of it.
    EXPECT_NEAR(program->evaluate(bars).mValues[0].back(), 0.5, 1e-7);
    const auto mean = makeLuaFormula(formulaOf("return AVEDEV(CLOSE, 10)"));
    EXPECT_NEAR(mean->evaluate(bars).mValues[0].back(), 0.5, 1e-7);
}

TEST(VectorFunctionsTest, ALargeValueLeavesNoTraceWhenItHasLeftTheWindow) {
    MinuteBars bars = barsOfPrices({1e300, 1.0, 2.0, 3.0, 4.0, 5.0});
    const auto program = makeLuaFormula(formulaOf("return MA(CLOSE, 2), SUM(CLOSE, 3)", "{\"A\"}, {\"B\"}"));
    const se::RPCFormulaResult result = program->evaluate(bars);
    EXPECT_EQ(result.mValues[0][5], 4.5);
    EXPECT_EQ(result.mValues[1][3], 6.0);
}

TEST(VectorFunctionsTest, TheClockIsThatOfTheExchange) {
    MinuteBars bars{flatBar(0, 1.0), flatBar(29, 1.0), flatBar(329, 1.0)};
    const auto result = makeLuaFormula(formulaOf("return TIME"))->evaluate(bars);
    EXPECT_EQ(result.mValues[0], (std::vector<double>{931.0, 1000.0, 1500.0}));
}

} // namespace
} // namespace terminal
