// What the user's own formulas and models do wrong, in the window.

#include "containers/CRealtimeMainWidget.h"
#include "terminal/app/MessagePanel.h"
#include "tests/integration/TerminalFixture.h"
#include "toolkit/windows/CodeEdit.h"
#include "toolkit/windows/FormulaEditorWindow.h"

#include <QMap>
#include <QTextBlock>
#include <QTreeWidget>

using namespace terminal;

namespace {

// They pass the check of a file, whose close of the day before is 10.
const QMap<QString, QByteArray> kFormulas{
    {"ENDLESS",
     "function run()\n  if PREVCLOSE ~= 10 then\n    while true do end\n  end\n  return CLOSE\nend\n"},
    {"GREEDY", "function run()\n  local t = {}\n  while PREVCLOSE ~= 10 do\n    t[#t + 1] = {}\n  end\n"
               "  return CLOSE\nend\n"},
    {"RAISING", "function run()\n  if PREVCLOSE ~= 10 then error(\"没有数据\") end\n  return CLOSE\nend\n"}};

const QMap<QString, QByteArray> kModels{
    {"FOREVER", "while True:\n    pass\n"},
    {"TALKING", "import sys\nwhile True:\n    sys.stdout.write('a' * 65536)\n"}};

void writeFile(const QString &path, const QByteArray &text) {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
}

/// The terminal of a user who has all of them.
class FormulaFailuresTest : public tests::TerminalFixture {
protected:
    void SetUp() override {
        for (auto formula = kFormulas.cbegin(); formula != kFormulas.cend(); ++formula) {
            writeFile(mFolder.path() + "/formulas/" + formula.key() + ".lua",
                      "formula { name = \"" + formula.key().toUtf8() + "\", lines = {{\"A\"}} }\n" +
                          formula.value());
        }
        writeFile(mFolder.path() + "/formulas/UNREADABLE.lua",
                  "formula { name = \"UNREADABLE\",\n lines = {{\"A\"} }\n");
        for (auto model = kModels.cbegin(); model != kModels.cend(); ++model) {
            writeFile(scriptFolder() + '/' + model.key() + ".py", model.value());
        }
        writeFile(scriptFolder() + "/MISSING.py", "");
        TerminalFixture::SetUp();
        QFile::remove(scriptFolder() + "/MISSING.py");
        limitModels(60000);
        ASSERT_TRUE(mWindow->showInstrument("SH600000"));
        ASSERT_TRUE(waitUntilComplete());
    }
    QString scriptFolder() const { return mFolder.path() + "/scripts"; }
    /// Models may run that long, and print a megabyte.
    void limitModels(int milliseconds) {
        ScriptModelSettings settings;
        settings.limits.milliseconds = milliseconds;
        settings.limits.outputBytes = 1 << 20;
        mServices->formulas().setScriptModels(settings, mServices->messages().sink());
    }
    /// Puts a formula into the selected pane and waits for what the panel says of it: "line text".
    QString showAndWait(const QString &formula) {
        view().main()->handleDoubleClickedFormula(formula);
        QTreeWidgetItem *row = nullptr;
        if (!QTest::qWaitFor([&] { return (row = rowOf(formula)) != nullptr; }, 30000)) {
            return "nothing was told";
        }
        EXPECT_TRUE(mWindow->messages()->isVisible());
        return row->text(2) + ' ' + row->text(3);
    }
    QTreeWidgetItem *rowOf(const QString &formula) {
        QTreeWidget *rows = mWindow->messages()->rows();
        for (int i = 0; i < rows->topLevelItemCount(); ++i) {
            if (rows->topLevelItem(i)->text(1) == formula) {
                return rows->topLevelItem(i);
            }
        }
        return nullptr;
    }
    /// Whether the price goes on with the market.
    bool chartGoesOn() {
        const int points = view().pointCount();
        mServices->clock().setTime(mNow + (mMinutes += 3) * 60000);
        return QTest::qWaitFor([&] { return view().pointCount() >= points + 2; }, 10000);
    }

    int mMinutes = 0;
};

} // namespace

TEST_F(FormulaFailuresTest, AFormulaThatNeverEndsIsStoppedAndToldAndTheChartGoesOn) {
    EXPECT_EQ(showAndWait("ENDLESS"), "4 运行超时");
    EXPECT_TRUE(chartGoesOn());
}

TEST_F(FormulaFailuresTest, AFormulaThatAllocatesWithoutEndIsStoppedAndToldAndTheChartGoesOn) {
    const QString told = showAndWait("GREEDY");
    EXPECT_TRUE(told.startsWith("5 内存超限")) << qPrintable(told);
    EXPECT_TRUE(chartGoesOn());
}

TEST_F(FormulaFailuresTest, AFormulaThatRaisesIsToldWithItsLineAndTheChartGoesOn) {
    EXPECT_EQ(showAndWait("RAISING"), "3 没有数据");
    EXPECT_TRUE(chartGoesOn());
}

TEST_F(FormulaFailuresTest, AModelThatNeverEndsIsStoppedAndTold) {
    limitModels(500);
    EXPECT_EQ(showAndWait("FOREVER"), " 运行超过了 0.5 秒，已停止");
    EXPECT_TRUE(chartGoesOn());
}

TEST_F(FormulaFailuresTest, AModelThatPrintsWithoutEndIsStoppedAndTold) {
    const QString told = showAndWait("TALKING");
    EXPECT_TRUE(told.contains("输出") || told.contains("太长")) << qPrintable(told);
    EXPECT_TRUE(chartGoesOn());
}

TEST_F(FormulaFailuresTest, AModelWhoseFileHasGoneIsTold) {
    EXPECT_EQ(showAndWait("MISSING"), " 没有模型文件 " + scriptFolder() + "/MISSING.py");
    EXPECT_TRUE(chartGoesOn());
}

TEST_F(FormulaFailuresTest, ADoubleClickOnAMessageOpensTheEditorAtTheLine) {
    ASSERT_EQ(showAndWait("RAISING"), "3 没有数据");
    emit mWindow->messages()->rows()->itemDoubleClicked(rowOf("RAISING"), 0);
    auto *editor = mWindow->findChild<GZ::FormulaEditorWindow *>();
    ASSERT_TRUE(editor);
    EXPECT_EQ(editor->name(), "RAISING");
    EXPECT_EQ(editor->edit()->markedLine(), 3);
    EXPECT_EQ(editor->edit()->textCursor().block().text(), "  if PREVCLOSE ~= 10 then error(\"没有数据\") end");
}

TEST_F(FormulaFailuresTest, AFileThatIsNoFormulaIsToldAtTheStartAndCanBeEdited) {
    ASSERT_TRUE(rowOf("UNREADABLE"));
    emit mWindow->messages()->rows()->itemDoubleClicked(rowOf("UNREADABLE"), 0);
    auto *editor = mWindow->findChild<GZ::FormulaEditorWindow *>();
    ASSERT_TRUE(editor);
    EXPECT_TRUE(editor->edit()->toPlainText().startsWith("formula { name = \"UNREADABLE\""));
}
