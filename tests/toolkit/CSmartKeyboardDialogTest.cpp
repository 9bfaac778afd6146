#include "host/windows/CSmartKeyboardDialog.h"

#include "tests/chartview/ChartFixture.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QtTest>

using namespace TC;

namespace {

class CSmartKeyboardDialogTest : public tests::ChartFixture {
protected:
    CSmartKeyboardDialogTest() {
        mHost.mSmartKeys.add(QStringLiteral("SH600000"), QStringLiteral("600000"), QStringLiteral("浦发银行"),
                             QStringLiteral("PFYH"));
        mHost.mSmartKeys.add(QStringLiteral("SH600004"), QStringLiteral("600004"), QStringLiteral("白云机场"),
                             QStringLiteral("BYJC"));
        mHost.mSmartKeys.add(QString(), QStringLiteral("03"), QStringLiteral("上证指数"),
                             QStringLiteral("SZZS"), ESmartKeyType::Shortcut);
        mDialog->setPickCallback(&mOwner, [this](const CStockInfo &stock, ESmartKeyType type) {
            mPicked.append(stock.key());
            mCode = stock.mCode;
            mType = type;
        });
        mDialog->setTitle(QStringLiteral("叠加品种"));
    }
    ~CSmartKeyboardDialogTest() override {
        mDialog->hide();
        mDialog->setPickCallback(nullptr, {});
    }
    void open(const QString &text = {}) {
        mDialog->openFor(nullptr, text);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mDialog));
    }
    void type(const QString &text) { QTest::keyClicks(edit(), text); }
    QLineEdit *edit() { return mDialog->findChild<QLineEdit *>(); }
    QListWidget *list() { return mDialog->findChild<QListWidget *>(); }
    QStringList rows() {
        QStringList texts;
        for (int i = 0; i < list()->count(); ++i) {
            texts.append(list()->item(i)->text());
        }
        return texts;
    }

    QObject mOwner;
    CSmartKeyboardDialog *mDialog = CSmartKeyboardDialog::instance();
    QStringList mPicked;
    QString mCode;
    ESmartKeyType mType = ESmartKeyType::Function;
};

TEST_F(CSmartKeyboardDialogTest, OpensEmptyWithItsTitle) {
    open();
    EXPECT_EQ(mDialog->windowTitle(), QStringLiteral("叠加品种"));
    EXPECT_FALSE(mDialog->isModal());
    EXPECT_EQ(edit()->text(), QString());
    EXPECT_EQ(list()->count(), 0);
    EXPECT_TRUE(mHost.mSmartKeys.mAsked.isEmpty());
    EXPECT_EQ(CSmartKeyboardDialog::instance(), mDialog);
}

TEST_F(CSmartKeyboardDialogTest, CodeInitialsOrNameFindInstruments) {
    open();
    type(QStringLiteral("6000"));
    EXPECT_EQ(rows(), (QStringList{"SH600000  浦发银行  PFYH", "SH600004  白云机场  BYJC"}));
    EXPECT_EQ(list()->currentRow(), 0);
    edit()->clear();
    type(QStringLiteral("by"));
    EXPECT_EQ(rows(), (QStringList{"SH600004  白云机场  BYJC"}));
    edit()->setText(QStringLiteral("浦发"));
    EXPECT_EQ(rows(), (QStringList{"SH600000  浦发银行  PFYH"}));
    EXPECT_EQ(mHost.mSmartKeys.mAsked.last(), QStringLiteral("浦发"));
}

TEST_F(CSmartKeyboardDialogTest, EnterPicksTheChosenOneAndCloses) {
    open();
    type(QStringLiteral("6000"));
    QTest::keyClick(edit(), Qt::Key_Down);
    QTest::keyClick(edit(), Qt::Key_Return);
    EXPECT_EQ(mPicked, (QStringList{"SH600004"}));
    EXPECT_EQ(mCode, QStringLiteral("600004"));
    EXPECT_EQ(mType, ESmartKeyType::Stock);
    EXPECT_FALSE(mDialog->isVisible());
}

TEST_F(CSmartKeyboardDialogTest, ShortcutIsPickedWithItsNumber) {
    open(QStringLiteral("03"));
    EXPECT_EQ(rows(), (QStringList{"03  上证指数  SZZS  快捷键"}));
    QTest::keyClick(edit(), Qt::Key_Enter);
    EXPECT_EQ(mPicked, (QStringList{QString()}));
    EXPECT_EQ(mCode, QStringLiteral("03"));
    EXPECT_EQ(mType, ESmartKeyType::Shortcut);
}

TEST_F(CSmartKeyboardDialogTest, ClickPicks) {
    open(QStringLiteral("6000"));
    const QRect row = list()->visualItemRect(list()->item(1));
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, Qt::NoModifier, row.center());
    EXPECT_EQ(mPicked, (QStringList{"SH600004"}));
    EXPECT_FALSE(mDialog->isVisible());
}

TEST_F(CSmartKeyboardDialogTest, ArrowsGoAroundAndPagesStopAtTheEnds) {
    mHost.mSmartKeys.mItems.clear();
    for (int i = 0; i < 25; ++i) {
        mHost.mSmartKeys.add(QStringLiteral("SH6000%1").arg(i, 2, 10, QLatin1Char('0')),
                             QStringLiteral("6000%1").arg(i, 2, 10, QLatin1Char('0')), QString(), QString());
    }
    open(QStringLiteral("6"));
    ASSERT_EQ(list()->count(), 25);
    const auto press = [this](Qt::Key key) {
        QTest::keyClick(edit(), key);
        return list()->currentRow();
    };
    EXPECT_EQ(press(Qt::Key_Up), 24);
    EXPECT_EQ(press(Qt::Key_Down), 0);
    EXPECT_EQ(press(Qt::Key_PageDown), 10);
    EXPECT_EQ(press(Qt::Key_PageDown), 20);
    EXPECT_EQ(press(Qt::Key_PageDown), 24);
    EXPECT_EQ(press(Qt::Key_PageUp), 14);
    EXPECT_EQ(press(Qt::Key_PageUp), 4);
    EXPECT_EQ(press(Qt::Key_PageUp), 0);
}

TEST_F(CSmartKeyboardDialogTest, EnterOnATextThatNothingAnswersLeavesTheWindowOpen) {
    open();
    type(QStringLiteral("zzz"));
    EXPECT_EQ(list()->count(), 0);
    EXPECT_EQ(mDialog->findChild<QLabel *>()->text(), QStringLiteral("没有匹配的品种"));
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Return}) {
        QTest::keyClick(edit(), key);
    }
    EXPECT_TRUE(mPicked.isEmpty());
    EXPECT_TRUE(mDialog->isVisible());
}

TEST_F(CSmartKeyboardDialogTest, TypingGoesOnBehindTheFirstText) {
    for (int round = 0; round < 2; ++round) {
        open(QStringLiteral("60"));
        type(QStringLiteral("0004"));
        EXPECT_EQ(edit()->text(), QStringLiteral("600004"));
        mDialog->hide();
    }
}

TEST_F(CSmartKeyboardDialogTest, EscapeClosesWithoutAPick) {
    open(QStringLiteral("6000"));
    QTest::keyClick(edit(), Qt::Key_Escape);
    EXPECT_FALSE(mDialog->isVisible());
    EXPECT_TRUE(mPicked.isEmpty());
    open();
    EXPECT_EQ(edit()->text(), QString());
    EXPECT_EQ(list()->count(), 0);
}

TEST_F(CSmartKeyboardDialogTest, OwnerThatGoesClosesTheWindowAndIsNeverCalled) {
    auto owner = std::make_unique<QObject>();
    int calls = 0;
    mDialog->setPickCallback(owner.get(), [&](const CStockInfo &, ESmartKeyType) { ++calls; });
    open(QStringLiteral("6000"));
    owner.reset();
    EXPECT_FALSE(mDialog->isVisible());
    open(QStringLiteral("6000"));
    QTest::keyClick(edit(), Qt::Key_Return);
    EXPECT_EQ(calls, 0);
}

TEST_F(CSmartKeyboardDialogTest, LaterCallbackReplacesTheEarlierOne) {
    int calls = 0;
    {
        QObject other;
        mDialog->setPickCallback(&mOwner, [&](const CStockInfo &, ESmartKeyType) { ++calls; });
    }
    open(QStringLiteral("6000"));
    QTest::keyClick(edit(), Qt::Key_Return);
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(mPicked.isEmpty());
}

TEST_F(CSmartKeyboardDialogTest, OpensInsideTheWindowThatAskedForIt) {
    mKeeper->setGeometry(100, 50, 700, 500);
    mKeeper->show();
    mDialog->openFor(mKeeper.get());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(mDialog));
    EXPECT_TRUE(mKeeper->geometry().contains(mDialog->geometry()));
}

} // namespace
