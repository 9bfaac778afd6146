#include "terminal/formula/ScriptModelReader.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace terminal;

namespace {

ScriptModelLine lineOf(const QByteArray &text, int points) {
    const ScriptModelMessage message = readScriptModelMessage(text, points);
    const auto *line = std::get_if<ScriptModelLine>(&message);
    EXPECT_NE(line, nullptr) << text.constData();
    return line ? *line : ScriptModelLine();
}

QString failureOf(const QByteArray &text, int points = 2) {
    const ScriptModelMessage message = readScriptModelMessage(text, points);
    const auto *failure = std::get_if<ScriptModelFailure>(&message);
    EXPECT_NE(failure, nullptr) << text.constData();
    return failure ? failure->text : QString();
}

} // namespace

TEST(ScriptModelReader, ALineHasAValueOrNothingForEveryPoint) {
    const ScriptModelLine line = lineOf(R"({"line": "中轨", "values": [1.5, null, -2e3]})", 3);
    EXPECT_EQ(line.name, "中轨");
    EXPECT_EQ(line.values, (std::vector<double>{1.5, TC::kUnsetValue, -2000.0}));
    EXPECT_EQ(line.style, 0);
    EXPECT_EQ(line.color, se::kDefaultColor);
    EXPECT_EQ(line.axis, se::eLineShared);
}

TEST(ScriptModelReader, ALineTellsItsLooks) {
    const ScriptModelLine line =
        lineOf(R"({"line":"a","values":[1],"style":10,"color":"#0102fF","axis":"own"})", 1);
    EXPECT_EQ(line.style, 10);
    EXPECT_EQ(line.color, 0x01 | 0x02 << 8 | 0xff << 16);
    EXPECT_EQ(line.axis, se::eLineOwn);
    EXPECT_EQ(lineOf(R"({"line":"a","values":[1],"axis":"hidden"})", 1).axis, se::eLineHidden);
}

TEST(ScriptModelReader, WhatIsNoResultIsToldInWords) {
    EXPECT_TRUE(failureOf("hello").contains("hello"));
    EXPECT_TRUE(failureOf("[1, 2]").contains("[1, 2]"));
    EXPECT_TRUE(failureOf(R"({"lines": 3})").contains("lines"));
    EXPECT_TRUE(failureOf(R"({"line":"a","values":[1]})").contains("有 1 个值"));
    EXPECT_TRUE(failureOf(R"({"line":"a","values":[1,2,3]})").contains("有 3 个值"));
    EXPECT_TRUE(failureOf(R"({"line":"a","values":[1,2,3]})").contains("共 2 个"));
    EXPECT_TRUE(failureOf(R"({"line":"a","values":"no"})").contains("a"));
    EXPECT_TRUE(failureOf(R"({"line":"a","values":[1,"x"]})").contains("第 2 个值"));
    EXPECT_TRUE(failureOf(R"({"line":"","values":[1,2]})").contains("名称"));
    EXPECT_TRUE(failureOf(R"({"line":"a","values":[1,2],"style":-1})").contains("style"));
    EXPECT_TRUE(failureOf(R"({"line":"a","values":[1,2],"style":1.5})").contains("style"));
    EXPECT_TRUE(failureOf(R"({"line":"a","values":[1,2],"color":"red"})").contains("color"));
    EXPECT_TRUE(failureOf(R"({"line":"a","values":[1,2],"axis":"left"})").contains("axis"));
    EXPECT_TRUE(failureOf(R"({"progress":3,"total":2})").contains("total"));
    EXPECT_TRUE(failureOf(R"({"progress":"x","total":2})").contains("total"));
    EXPECT_EQ(failureOf(R"({"error":"没有数据"})"), "没有数据");
}

TEST(ScriptModelReader, TakesItsInputInPiecesOfAnySize) {
    const QByteArray whole = "{\"progress\":1,\"total\":4,\"text\":\"SH600000\"}\n\n"
                             "{\"line\":\"a\",\"values\":[1,2]}\n{\"line\":\"b\",\"values\":[3,4]}";
    for (int size = 1; size <= whole.size(); ++size) {
        ScriptModelReader reader(2);
        for (int start = 0; start < whole.size(); start += size) {
            ASSERT_TRUE(reader.take(whole.mid(start, size)));
        }
        ASSERT_TRUE(reader.finish());
        ASSERT_EQ(reader.lines().size(), 2u);
        EXPECT_EQ(reader.lines()[1].values, (std::vector<double>{3, 4}));
        EXPECT_EQ(reader.progress().done, 1);
        EXPECT_EQ(reader.progress().total, 4);
        EXPECT_EQ(reader.progress().text, "SH600000");
    }
}

TEST(ScriptModelReader, ALineOfTheSameNameTakesItsPlace) {
    ScriptModelReader reader(1);
    ASSERT_TRUE(reader.take("{\"line\":\"a\",\"values\":[1]}\n{\"line\":\"b\",\"values\":[2]}\n"
                            "{\"line\":\"a\",\"values\":[9]}\n"));
    ASSERT_EQ(reader.lines().size(), 2u);
    EXPECT_EQ(reader.lines()[0].values, (std::vector<double>{9}));
}

TEST(ScriptModelReader, TheFirstFailureEndsTheReading) {
    ScriptModelReader reader(1);
    EXPECT_FALSE(reader.take("oops\n{\"line\":\"a\",\"values\":[1]}\n"));
    EXPECT_TRUE(reader.lines().empty());
    EXPECT_FALSE(reader.take("{\"line\":\"a\",\"values\":[1]}\n"));
    EXPECT_FALSE(reader.finish());
    EXPECT_TRUE(reader.failure()->text.contains("oops"));
}

TEST(ScriptModelReader, TooManyLinesAndALineWithoutEndAreFailures) {
    ScriptModelReader lines(0);
    bool good = true;
    for (int i = 0; i <= ScriptModelReader::kMostLines; ++i) {
        good = lines.take("{\"line\":\"" + QByteArray::number(i) + "\",\"values\":[]}\n");
        EXPECT_EQ(good, i < ScriptModelReader::kMostLines) << i;
    }
    ScriptModelReader endless(0);
    const QByteArray piece(1 << 20, 'x');
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(endless.take(piece));
    }
    EXPECT_FALSE(endless.take("x"));
}

TEST(ScriptModelReader, TheSeriesIsAsLongAsTheDay) {
    ScriptModelReader reader(2);
    ASSERT_TRUE(reader.take("{\"line\":\"a\",\"values\":[1,null],\"color\":\"#000001\"}\n"));
    const se::RPCFormulaMetaResult meta = reader.meta();
    EXPECT_EQ(meta.mLineCount, 1);
    EXPECT_EQ(meta.mLineNames, (std::vector<std::string>{"a"}));
    const se::RPCFormulaResult result = reader.result({{60000, 0}, {120000, 0}});
    EXPECT_EQ(result.mTimes.size(), 2u);
    EXPECT_EQ(result.mValid, (std::vector<qint32>{1, 1}));
    EXPECT_EQ(result.mValues, (std::vector<std::vector<double>>{{1, TC::kUnsetValue}}));
    EXPECT_EQ(result.mExtra1, (std::vector<std::vector<qint32>>{{1 << 16, 1 << 16}}));
    EXPECT_EQ(result.mTexts[0].size(), 2u);
    EXPECT_EQ(result.mExtra2[0].size(), 2u);
}

TEST(PythonError, TellsTheLastLineAndThePlaceInTheFile) {
    const QByteArray text = "Traceback (most recent call last):\n"
                            "  File \"/models/A.py\", line 31, in <module>\n    main()\n"
                            "  File \"/models/A.py\", line 7, in main\n    json.loads('')\n"
                            "  File \"/usr/lib/python3/json/__init__.py\", line 346, in loads\n"
                            "ValueError: 参数 N 不是数：x\n\n";
    const FormulaError error = readPythonError(text, "A.py");
    EXPECT_EQ(error.line, 7);
    EXPECT_EQ(error.text, "ValueError: 参数 N 不是数：x");
}

TEST(PythonError, AFileOfALongerNameIsNotTheFile) {
    EXPECT_EQ(readPythonError("  File \"/m/BA.py\", line 3, in x\nE: e", "A.py").line, 0);
    EXPECT_EQ(readPythonError("  File \"A.py\", line 3\nSyntaxError: bad", "A.py").line, 3);
}

TEST(PythonError, NoTextTellsNothing) {
    EXPECT_EQ(readPythonError("", "A.py").text, "");
    EXPECT_EQ(readPythonError("Killed", "A.py").text, "Killed");
    EXPECT_EQ(readPythonError(QByteArray(5000, 'x'), "A.py").text.size(), 201);
}
