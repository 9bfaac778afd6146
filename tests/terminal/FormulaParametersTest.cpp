#include "terminal/formula/FormulaParameters.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace terminal;

namespace {

FormulaDescription described() {
    FormulaDescription description;
    description.name = "MACD";
    description.type = 0;
    FormulaParameter number;
    number.name = "N";
    number.value = 12;
    number.min = 2;
    number.max = 60;
    FormulaParameter text;
    text.name = "KIND";
    text.isText = true;
    text.textValue = "close";
    description.parameters = {number, text};
    FormulaLine line;
    line.precision = 3;
    description.lines = {FormulaLine(), line};
    return description;
}

TC::CFormulaParameter number(const char *name, double value) {
    TC::CFormulaParameter made;
    made.mName = name;
    made.mValue = value;
    return made;
}

TC::CFormulaParameter text(const char *name, const char *value) {
    TC::CFormulaParameter made;
    made.mName = name;
    made.mIsText = true;
    made.mStrValue = value;
    return made;
}

TC::CFormulaDetail model() {
    TC::CFormulaDetail script;
    script.mName = "PAIR";
    script.mParamNames = {"WINDOW"};
    script.mParamValues = {20};
    script.mStrParamNames = {"group"};
    script.mStrParamValues = {"SH600000"};
    return script;
}

} // namespace

TEST(FormulaParameters, ARecordHasTheKeptValuesAndElseTheDefaults) {
    const TC::CFormulaDetailPtr record = recordOf(described(), true, {{"N", 30.0}});
    EXPECT_EQ(record->mParamNames, QVector<QString>({"N"}));
    EXPECT_EQ(record->mParamValues, QVector<double>({30.0}));
    EXPECT_EQ(record->mStrParamValues, QVector<QString>({"close"}));
    EXPECT_EQ(record->mPrecisions.value(1), 3);
    EXPECT_FALSE(record->mPrecisions.contains(0));
    EXPECT_TRUE(record->mVisible);
}

TEST(FormulaParameters, AKeptValueOutOfRangeIsTheDefault) {
    EXPECT_EQ(recordOf(described(), true, {{"N", 1.0}})->mParamValues.first(), 12.0);
    EXPECT_EQ(recordOf(described(), true, {{"N", "30"}})->mParamValues.first(), 12.0);
}

TEST(FormulaParameters, TheUserSeesValuesWithTheirDefaultsAndBounds) {
    const TC::CFormulaParameters seen =
        parametersOf(described(), *recordOf(described(), true, {{"N", 30.0}, {"KIND", "open"}}));
    ASSERT_EQ(seen.size(), 2);
    EXPECT_EQ(seen[0].mValue, 30.0);
    EXPECT_EQ(seen[0].mDefault, 12.0);
    EXPECT_EQ(seen[0].mMin, 2.0);
    EXPECT_EQ(seen[0].mMax, 60.0);
    EXPECT_EQ(seen[1].mStrValue, "open");
    EXPECT_EQ(seen[1].mStrDefault, "close");
}

TEST(FormulaParameters, AValueThatCannotBeIsRefused) {
    QJsonObject kept;
    EXPECT_FALSE(setValues(kept, described(), {number("N", 61)}).isEmpty());
    EXPECT_FALSE(setValues(kept, described(), {number("N", std::nan(""))}).isEmpty());
    EXPECT_FALSE(setValues(kept, described(), {text("N", "12")}).isEmpty());
    EXPECT_TRUE(kept.isEmpty());
    EXPECT_TRUE(setValues(kept, described(), {number("N", 60), text("KIND", "low"), number("X", 1)}).isEmpty());
    EXPECT_EQ(kept, QJsonObject({{"N", 60.0}, {"KIND", "low"}})) << "what is unknown is passed over";
}

TEST(FormulaParameters, AModelTakesAnyFiniteValueOfItsOwnNames) {
    QJsonObject kept;
    EXPECT_FALSE(setValues(kept, model(), {number("N", 61)}).isEmpty());
    EXPECT_FALSE(setValues(kept, model(), {number("WINDOW", std::nan(""))}).isEmpty());
    EXPECT_FALSE(setValues(kept, model(), {text("WINDOW", "7")}).isEmpty());
    EXPECT_TRUE(setValues(kept, model(), {number("WINDOW", -7)}).isEmpty());
    const TC::CFormulaParameters seen = parametersOf(model(), *recordOf(model(), kept));
    ASSERT_EQ(seen.size(), 2);
    EXPECT_EQ(seen[0].mValue, -7.0);
    EXPECT_EQ(seen[0].mDefault, 20.0);
    EXPECT_EQ(seen[1].mStrValue, "SH600000");
}

TEST(FormulaParameters, AFormulaFileTakesNumbersToTheLastDigit) {
    const QMap<QString, QString> arguments = argumentsOf(*recordOf(described(), true, {{"N", 12.1}}));
    EXPECT_EQ(arguments["N"].toDouble(), 12.1);
    EXPECT_EQ(arguments["KIND"], "close");
}
