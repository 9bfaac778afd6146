#include "host/windows/CFormulaEditorManager.h"

#include "tests/fakehost/FakeHost.h"
#include "toolkit/windows/CodeEdit.h"
#include "toolkit/windows/FormulaEditorWindow.h"

#include <QComboBox>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTextBlock>
#include <QTextLayout>
#include <QtTest>

#include <gtest/gtest.h>

using GZ::CodeEdit;
using GZ::FormulaEditorWindow;

namespace {

struct Applied {
    QString name;
    TC::EFormulaLanguage language = TC::EFormulaLanguage::Native;
    corvane::ERunMode mode = corvane::ERunMode::Ordinary;
};

class FormulaEditorTest : public ::testing::Test {
protected:
    FormulaEditorTest() {
        TC::CFormulaSource &source = mHost.mCatalogue.mSources["KDJ"];
        source.mText = "a = 1\nb = 2\nc = 3";
        source.mHasBuiltin = true;
        TC::CFormulaEditorManager::setApplyFunction(
            [this](const QString &name, TC::EFormulaLanguage language, corvane::ERunMode mode) {
                mApplied.append({name, language, mode});
            });
    }
    ~FormulaEditorTest() override {
        TC::CFormulaEditorManager::setApplyFunction({});
        if (mWindow) {
            delete mWindow.data();
        }
    }

    CodeEdit *open(const QString &name) {
        mWindow =
            qobject_cast<FormulaEditorWindow *>(TC::CFormulaEditorManager::createWindow(name, 0, nullptr));
        EXPECT_TRUE(QTest::qWaitForWindowActive(mWindow.data()));
        return mWindow->edit();
    }
    void press(const char *button) {
        QTest::mouseClick(mWindow->findChild<QPushButton *>(button), Qt::LeftButton);
    }
    /// Closes the window and answers the question that comes up, if one does.
    bool closeAndAnswer(QMessageBox::StandardButton answer) {
        bool asked = false;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                asked = true;
                QTest::mouseClick(box->button(answer), Qt::LeftButton);
            }
        });
        timer.start(5);
        mWindow->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return asked;
    }
    QStringList saves() { return mHost.mLog.of("CFormulaOperateManager::saveFormula"); }
    void refuse(const QString &text, int line, const QString &message) {
        TC::CFormulaFault fault;
        fault.mLine = line;
        fault.mMessage = message;
        mHost.mCatalogue.mFaults[text] = fault;
    }

    fakehost::FakeHost mHost;
    QPointer<FormulaEditorWindow> mWindow;
    QList<Applied> mApplied;
};

/// Colour of the character at a place of a line, as it is shown.
QColor colorAt(const CodeEdit &edit, int line, int column) {
    for (const QTextLayout::FormatRange &range : edit.document()->findBlockByNumber(line).layout()->formats()) {
        if (column >= range.start && column < range.start + range.length) {
            return range.format.foreground().color();
        }
    }
    return {};
}

QColor themeColor(const char *key) {
    return GZ::CUiResource::instance().getColor(key);
}

TEST_F(FormulaEditorTest, AScriptModelIsSaidToBeAFileOfItsOwn) {
    mHost.mCatalogue.add("Rank")->mLanguage = TC::EFormulaLanguage::Python;
    QString told;
    QTimer::singleShot(0, qApp, [&] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            told = box->text();
            box->accept();
        }
    });
    EXPECT_EQ(TC::CFormulaEditorManager::createWindow("Rank", 0, nullptr), nullptr);
    EXPECT_EQ(told, QStringLiteral("Rank 是脚本模型，请编辑文件夹 /scripts 中的 RANK.py"));
}

} // namespace

TEST_F(FormulaEditorTest, OpensTheTextOfAFormulaOnce) {
    CodeEdit *edit = open("KDJ");
    EXPECT_EQ(edit->toPlainText(), "a = 1\nb = 2\nc = 3");
    EXPECT_TRUE(mWindow->isVisible());
    EXPECT_FALSE(mWindow->isChanged());
    EXPECT_EQ(TC::CFormulaEditorManager::createWindow("kdj", 0, nullptr), mWindow.data());
}

TEST_F(FormulaEditorTest, TypingChangesTheTextAndControlSKeepsIt) {
    CodeEdit *edit = open("KDJ");
    QTest::keyClicks(edit, "x = 0 ");
    EXPECT_TRUE(mWindow->isChanged());
    EXPECT_TRUE(mWindow->isWindowModified());
    QTest::keyClick(edit, Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(mHost.mCatalogue.source("KDJ").mText, "x = 0 a = 1\nb = 2\nc = 3");
    EXPECT_FALSE(mWindow->isChanged());
    EXPECT_EQ(mWindow->message(), "已保存");
}

TEST_F(FormulaEditorTest, ACheckMarksTheLineOfAnErrorUntilTheTextChanges) {
    CodeEdit *edit = open("KDJ");
    refuse(edit->toPlainText(), 2, "'=' expected");
    QTest::keyClick(edit, Qt::Key_F7);
    EXPECT_EQ(edit->markedLine(), 2);
    EXPECT_EQ(edit->textCursor().blockNumber(), 1);
    EXPECT_EQ(mWindow->message(), "第 2 行：'=' expected");
    ASSERT_EQ(edit->extraSelections().size(), 1);
    EXPECT_EQ(edit->extraSelections()[0].cursor.blockNumber(), 1);
    const QImage shown = mWindow->grab().toImage();
    const QPoint gutter =
        edit->mapTo(mWindow.data(), QPoint(edit->frameWidth() + 1, edit->cursorRect().center().y()));
    EXPECT_EQ(shown.pixelColor(gutter), themeColor("clr_code_error_bg"));
    QTest::keyClicks(edit, "y");
    EXPECT_EQ(edit->markedLine(), 0);
    EXPECT_TRUE(edit->extraSelections().isEmpty());
    press("check");
    EXPECT_EQ(mWindow->message(), "检查通过");
}

TEST_F(FormulaEditorTest, AFaultyTextIsNeitherKeptNorApplied) {
    CodeEdit *edit = open("KDJ");
    QTest::keyClicks(edit, "!");
    refuse(edit->toPlainText(), 1, "unexpected symbol");
    press("apply");
    EXPECT_TRUE(mApplied.isEmpty());
    EXPECT_TRUE(mWindow->isChanged());
    EXPECT_EQ(edit->markedLine(), 1);
    EXPECT_EQ(mHost.mCatalogue.source("KDJ").mText, "a = 1\nb = 2\nc = 3");
}

TEST_F(FormulaEditorTest, ApplyKeepsAChangedTextAndPassesNameLanguageAndRunMode) {
    CodeEdit *edit = open("KDJ");
    press("apply");
    ASSERT_EQ(mApplied.size(), 1);
    EXPECT_EQ(mApplied[0].name, "KDJ");
    EXPECT_EQ(mApplied[0].mode, corvane::ERunMode::Ordinary);
    EXPECT_TRUE(saves().isEmpty()) << "an unchanged text is not kept as the user's own";
    QTest::keyClicks(edit, " ");
    mWindow->findChild<QComboBox *>("mode")->setCurrentIndex(1);
    QTest::keyClick(edit, Qt::Key_F9);
    ASSERT_EQ(mApplied.size(), 2);
    EXPECT_EQ(mApplied[1].mode, corvane::ERunMode::HandOver);
    EXPECT_EQ(saves().size(), 1);
}

TEST_F(FormulaEditorTest, ANewFormulaTakesItsNameFromItsText) {
    CodeEdit *edit = open("");
    EXPECT_EQ(edit->toPlainText(), "new ");
    press("apply");
    EXPECT_EQ(mWindow->name(), "NEW");
    ASSERT_EQ(mApplied.size(), 1);
    EXPECT_EQ(mApplied[0].name, "NEW");
    EXPECT_TRUE(mWindow->windowTitle().startsWith("NEW"));
}

TEST_F(FormulaEditorTest, TheBuiltInTextComesBackWhenTheUserSaysSo) {
    mHost.mCatalogue.mSources["KDJ"].mIsUserMade = true;
    CodeEdit *edit = open("KDJ");
    QTest::keyClicks(edit, "zzz");
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
        }
    });
    timer.start(5);
    press("restore");
    EXPECT_EQ(mHost.mLog.of("CFormulaOperateManager::restoreFormula KDJ").size(), 1);
    EXPECT_EQ(edit->toPlainText(), "a = 1\nb = 2\nc = 3");
    EXPECT_FALSE(mWindow->isChanged());
    EXPECT_FALSE(mWindow->findChild<QPushButton *>("restore")->isEnabled());
}

TEST_F(FormulaEditorTest, AnUnchangedTextClosesWithoutAQuestion) {
    open("KDJ");
    EXPECT_FALSE(closeAndAnswer(QMessageBox::Cancel));
    EXPECT_TRUE(mWindow.isNull());
}

TEST_F(FormulaEditorTest, ClosingAChangedTextAsksAndCancelKeepsTheWindow) {
    CodeEdit *edit = open("KDJ");
    QTest::keyClicks(edit, "q");
    EXPECT_TRUE(closeAndAnswer(QMessageBox::Cancel));
    ASSERT_FALSE(mWindow.isNull());
    EXPECT_EQ(edit->toPlainText().left(1), "q");
    EXPECT_TRUE(closeAndAnswer(QMessageBox::Discard));
    EXPECT_TRUE(mWindow.isNull());
    EXPECT_TRUE(saves().isEmpty());
}

TEST_F(FormulaEditorTest, ClosingWithSaveKeepsTheTextAndStaysOpenWhenThatFails) {
    CodeEdit *edit = open("KDJ");
    QTest::keyClicks(edit, "q");
    refuse(edit->toPlainText(), 3, "bad");
    EXPECT_TRUE(closeAndAnswer(QMessageBox::Save));
    ASSERT_FALSE(mWindow.isNull());
    EXPECT_EQ(edit->markedLine(), 3);
    mHost.mCatalogue.mFaults.clear();
    EXPECT_TRUE(closeAndAnswer(QMessageBox::Save));
    EXPECT_TRUE(mWindow.isNull());
    EXPECT_EQ(mHost.mCatalogue.source("KDJ").mText, "qa = 1\nb = 2\nc = 3");
}

TEST(CodeEdit, ANewLineKeepsTheIndentationAndTabGoesToTheNextFourthColumn) {
    CodeEdit edit;
    QTest::keyClicks(&edit, "ab");
    QTest::keyClick(&edit, Qt::Key_Tab);
    QTest::keyClicks(&edit, "c");
    EXPECT_EQ(edit.toPlainText(), "ab  c");
    edit.setPlainText("    x");
    QTest::keyClick(&edit, Qt::Key_End);
    QTest::keyClick(&edit, Qt::Key_Return);
    QTest::keyClicks(&edit, "y");
    EXPECT_EQ(edit.toPlainText(), "    x\n    y");
}

TEST(CodeEdit, TheGutterGrowsWithTheNumberOfLines) {
    CodeEdit edit;
    const int narrow = edit.gutterWidth();
    edit.setPlainText(QString(1200, QLatin1Char('\n')));
    EXPECT_GT(edit.gutterWidth(), narrow);
}

TEST(CodeEdit, ColoursKeywordsCallsNumbersTextsAndComments) {
    CodeEdit edit;
    edit.setPlainText("local a = MA(x, 0x1F) -- rest\n"
                      "s = 'it\\'s' .. name\n"
                      "--[[ long\n"
                      "end ]] return [==[ t ]] \n"
                      "]==] 中文 (1)");
    EXPECT_EQ(colorAt(edit, 0, 0), themeColor("clr_code_keyword"));
    EXPECT_FALSE(colorAt(edit, 0, 6).isValid()) << "a plain name";
    EXPECT_EQ(colorAt(edit, 0, 10), themeColor("clr_code_function"));
    EXPECT_EQ(colorAt(edit, 0, 19), themeColor("clr_code_number"));
    EXPECT_EQ(colorAt(edit, 0, 24), themeColor("clr_code_comment"));
    EXPECT_EQ(colorAt(edit, 1, 9), themeColor("clr_code_text")) << "behind the quote that is no end";
    EXPECT_FALSE(colorAt(edit, 1, 16).isValid());
    EXPECT_EQ(colorAt(edit, 2, 5), themeColor("clr_code_comment"));
    EXPECT_EQ(colorAt(edit, 3, 0), themeColor("clr_code_comment"));
    EXPECT_EQ(colorAt(edit, 3, 7), themeColor("clr_code_keyword"));
    EXPECT_EQ(colorAt(edit, 3, 20), themeColor("clr_code_text"));
    EXPECT_EQ(colorAt(edit, 4, 1), themeColor("clr_code_text"));
    EXPECT_EQ(colorAt(edit, 4, 5), themeColor("clr_code_function"));
}

TEST(CodeEdit, FollowsTheTheme) {
    CodeEdit edit;
    edit.setPlainText("end");
    GZ::CUiResource::instance().setTheme("light");
    edit.updateColors();
    EXPECT_EQ(colorAt(edit, 0, 0), themeColor("clr_code_keyword"));
    GZ::CUiResource::instance().setTheme("dark");
    edit.updateColors();
    EXPECT_EQ(colorAt(edit, 0, 0), themeColor("clr_code_keyword"));
}
