#include "terminal/formula/FormulaTrials.h"

#include <QTest>
#include <QThread>

#include <gtest/gtest.h>

using namespace terminal;

namespace {

FormulaFile formulaFileOf(const QString &name, const QByteArray &body) {
    return {name + ".lua",
            {},
            "formula { name = '" + name.toUtf8() + "', lines = {{'X'}} }\nfunction run() " + body + " end\n"};
}

} // namespace

TEST(FormulaTrials, OneThatNeverEndsHoldsNoOtherUp) {
    QVector<FormulaFile> files;
    files.append(formulaFileOf("LOOP0", "while true do end"));
    files.append(formulaFileOf("GOOD", "return CLOSE"));
    files.append(formulaFileOf("BAD", "return nil .. 1"));
    QStringList taken;
    FormulaTrials trials(files, [&](const FormulaFile &file, const LuaFormulaTrial &trial) {
        EXPECT_EQ(QThread::currentThread(), qApp->thread());
        taken.append(file.path + (trial.description ? "" : "!"));
    });
    EXPECT_FALSE(trials.wait(0)) << "it is not done here";
    ASSERT_TRUE(QTest::qWaitFor([&] { return taken.size() >= 2; }, 20000)) << "from the event loop";
    EXPECT_EQ(taken.mid(0, 2), (QStringList{"GOOD.lua", "BAD.lua!"}));
    ASSERT_TRUE(trials.wait(60000));
    EXPECT_EQ(taken.mid(2), QStringList("LOOP0.lua!")) << "tried again, in full";
}

TEST(FormulaTrials, TheyEndWithTheirOwner) {
    QVector<FormulaFile> files;
    for (int i = 0; i < 100; ++i) {
        files.append(formulaFileOf(QStringLiteral("LOOP%1").arg(i), "while true do end"));
    }
    int taken = 0;
    {
        const FormulaTrials trials(files, [&](const FormulaFile &, const LuaFormulaTrial &) { ++taken; });
    }
    EXPECT_EQ(taken, 0);
    QCoreApplication::processEvents(); // nothing of them comes any more
    EXPECT_EQ(taken, 0);
}

TEST(FormulaTrials, NoFilesAreDoneAtOnce) {
    FormulaTrials trials({}, [](const FormulaFile &, const LuaFormulaTrial &) { FAIL(); });
    EXPECT_TRUE(trials.wait(0));
}
