#include "host/windows/CModifyModelParamDialog.h"

#include "tests/fakehost/FakeHost.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

#include <gtest/gtest.h>

namespace {

constexpr int kValueColumn = 1;

class CModifyModelParamDialogTest : public ::testing::Test {
protected:
    CModifyModelParamDialogTest() {
        mHost.mCatalogue.mParameters["KDJ"] = {number("N", 9, 9, 1, 240), number("M1", 5, 3, 1, 100)};
        TC::CFormulaParameter text;
        text.mName = "单位";
        text.mIsText = true;
        text.mStrValue = "手";
        text.mStrDefault = "股";
        mHost.mCatalogue.mParameters["VOL"] = {text};
        mDialog = std::make_unique<TC::CModifyModelParamDialog>("KDJ");
        QObject::connect(mDialog.get(), &TC::CModifyModelParamDialog::parametersChanged,
                         [this](const QString &name) { mChanged.append(name); });
    }

    static TC::CFormulaParameter number(const QString &name, double value, double standard, double min,
                                        double max) {
        TC::CFormulaParameter made;
        made.mName = name;
        made.mText = name + "说明";
        made.mValue = value;
        made.mDefault = standard;
        made.mMin = min;
        made.mMax = max;
        return made;
    }
    QTableWidget *table() const { return mDialog->findChild<QTableWidget *>("parameters"); }
    QString cell(int row, int column) const { return table()->item(row, column)->text(); }
    QString message() const { return mDialog->findChild<QLabel *>("message")->text(); }
    /// Types a value into a cell, as a user does.
    void type(int row, const QString &text) const {
        table()->setCurrentCell(row, kValueColumn);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the editor of another cell
        table()->editItem(table()->item(row, kValueColumn));
        ASSERT_NE(editor(), nullptr);
        editor()->selectAll();
        QTest::keyClicks(editor(), text);
    }
    QLineEdit *editor() const { return table()->viewport()->findChild<QLineEdit *>(); }
    void clickCell(int row, int column) const {
        const QRect cell = table()->visualItemRect(table()->item(row, column));
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, {}, cell.center());
    }
    void press(QDialogButtonBox::StandardButton which) const {
        auto *buttons = mDialog->findChild<QDialogButtonBox *>();
        QTest::mouseClick(buttons->button(which), Qt::LeftButton);
    }
    double kept(int i) { return mHost.mCatalogue.parameters("KDJ")[i].mValue; }

    fakehost::FakeHost mHost;
    std::unique_ptr<TC::CModifyModelParamDialog> mDialog;
    QStringList mChanged;
};

} // namespace

TEST_F(CModifyModelParamDialogTest, ShowsNameValueDefaultRangeAndMeaning) {
    ASSERT_EQ(table()->rowCount(), 2);
    EXPECT_EQ(cell(1, 0), "M1");
    EXPECT_EQ(cell(1, 1), "5");
    EXPECT_EQ(cell(1, 2), "3");
    EXPECT_EQ(cell(1, 3), "1 ~ 100");
    EXPECT_EQ(cell(1, 4), "M1说明");
    EXPECT_FALSE(mDialog->isModal());
}

TEST_F(CModifyModelParamDialogTest, OkKeepsWhatWasTypedEvenInACellThatIsStillOpen) {
    mDialog->show();
    type(0, "14");
    press(QDialogButtonBox::Ok);
    EXPECT_EQ(kept(0), 14.0);
    EXPECT_EQ(kept(1), 5.0);
    EXPECT_EQ(mChanged, QStringList{"KDJ"});
    EXPECT_FALSE(mDialog->isVisible());
}

TEST_F(CModifyModelParamDialogTest, AClickOpensAValueAtOnceAndNothingElse) {
    mDialog->show();
    clickCell(0, 0);
    EXPECT_EQ(editor(), nullptr);
    clickCell(1, kValueColumn);
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(editor()->text(), "5");
    editor()->selectAll();
    QTest::keyClicks(editor(), "7");
    clickCell(1, kValueColumn); // beside the open editor: it stays as it is
    EXPECT_EQ(editor()->text(), "7");
    press(QDialogButtonBox::Ok);
    EXPECT_EQ(kept(1), 7.0);
}

TEST_F(CModifyModelParamDialogTest, AClickHasNoLateEffectOnADialogThatIsClosed) {
    for (const auto button : {QDialogButtonBox::Ok, QDialogButtonBox::Cancel}) {
        mDialog->show();
        mDialog->init("KDJ");
        clickCell(0, kValueColumn); // the current cell
        press(button);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // of the cell's editor
        QTest::qWait(QApplication::doubleClickInterval() + 50);
        EXPECT_EQ(editor(), nullptr) << button;
    }
}

TEST_F(CModifyModelParamDialogTest, AValueOutsideItsRangeIsSaidAndNothingChanges) {
    mDialog->show();
    type(0, "14");
    type(1, "101");
    press(QDialogButtonBox::Ok);
    EXPECT_EQ(message(), "参数 M1 的值 101 超出范围 1 ~ 100");
    EXPECT_EQ(table()->currentRow(), 1);
    EXPECT_TRUE(mDialog->isVisible());
    EXPECT_EQ(kept(0), 9.0);
    EXPECT_TRUE(mChanged.isEmpty());
    type(1, "100");
    press(QDialogButtonBox::Ok);
    EXPECT_EQ(kept(1), 100.0);
    EXPECT_EQ(message(), "");
}

TEST_F(CModifyModelParamDialogTest, WhatIsNoNumberIsSaid) {
    mDialog->show();
    for (const char *text : {"abc", "", "nan", "1e999"}) {
        type(0, QString(text).isEmpty() ? QStringLiteral(" ") : QString(text));
        press(QDialogButtonBox::Ok);
        EXPECT_TRUE(message().startsWith("参数 N 的值“")) << message().toStdString();
        EXPECT_TRUE(mDialog->isVisible()) << text;
    }
    EXPECT_EQ(kept(0), 9.0);
}

TEST_F(CModifyModelParamDialogTest, DefaultsAreShownFirstAndKeptByOk) {
    mDialog->show();
    QTest::mouseClick(mDialog->findChild<QPushButton *>("defaults"), Qt::LeftButton);
    EXPECT_EQ(cell(1, kValueColumn), "3");
    EXPECT_EQ(kept(1), 5.0);
    press(QDialogButtonBox::Ok);
    EXPECT_EQ(kept(1), 3.0);
}

TEST_F(CModifyModelParamDialogTest, CancelAndEscapeKeepNothing) {
    mDialog->show();
    type(0, "20");
    press(QDialogButtonBox::Cancel);
    EXPECT_EQ(kept(0), 9.0);
    EXPECT_FALSE(mDialog->isVisible());
    EXPECT_TRUE(mChanged.isEmpty());
}

TEST_F(CModifyModelParamDialogTest, InitShowsAnotherFormulaAndTheKeptValuesAnew) {
    mDialog->init("vol");
    EXPECT_EQ(mDialog->name(), "vol");
    ASSERT_EQ(table()->rowCount(), 1);
    EXPECT_EQ(cell(0, 1), "手");
    EXPECT_EQ(cell(0, 3), "");
    mHost.mCatalogue.mParameters["KDJ"][0].mValue = 33;
    mDialog->init("KDJ");
    EXPECT_EQ(cell(0, 1), "33");
}

TEST_F(CModifyModelParamDialogTest, ATextParameterTakesAnyText) {
    mDialog->init("VOL");
    mDialog->show();
    type(0, "x, y");
    press(QDialogButtonBox::Ok);
    EXPECT_EQ(mHost.mCatalogue.parameters("VOL")[0].mStrValue, "x, y");
}

TEST_F(CModifyModelParamDialogTest, AnUnknownFormulaHasNoParameters) {
    mDialog->init("NONE");
    EXPECT_EQ(table()->rowCount(), 0);
    EXPECT_EQ(message(), "该指标没有参数");
    EXPECT_FALSE(mDialog->findChild<QPushButton *>("defaults")->isEnabled());
}

TEST_F(CModifyModelParamDialogTest, ARefusalOfTheCatalogueIsShown) {
    mHost.mCatalogue.mRefusal = "不能保存";
    mDialog->show();
    press(QDialogButtonBox::Ok);
    EXPECT_EQ(message(), "不能保存");
    EXPECT_TRUE(mDialog->isVisible());
}

TEST_F(CModifyModelParamDialogTest, TheHostHearsOfChangesOfAllDialogs) {
    QStringList heard;
    TC::CModifyModelParamDialog::setChangedFunction([&heard](const QString &name) { heard.append(name); });
    press(QDialogButtonBox::Ok);
    TC::CModifyModelParamDialog::setChangedFunction({});
    EXPECT_EQ(heard, QStringList{"KDJ"});
}
