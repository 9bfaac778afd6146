#include "linkage/CTaskTableCancelButton.h"

#include "tests/chartview/ChartFixture.h"
#include "tests/linkage/QuestionAnswer.h"

#include <QAbstractButton>
#include <QPointer>

using TC::CTaskTableCancelButton;

namespace {

class CTaskTableCancelButtonTest : public tests::ChartFixture {
protected:
    CTaskTableCancelButtonTest() {
        mButton = new CTaskTableCancelButton(101, 0, 3, mKeeper.get());
        mButton->setTask(42, 7);
        mKeeper->show();
    }
    QStringList cancelled() const { return mHost.mLog.of(QStringLiteral("CLinkageManager::cancelTask")); }
    QPointer<CTaskTableCancelButton> mButton;
};

TEST_F(CTaskTableCancelButtonTest, IsSmallAndTakesNoKeyboard) {
    EXPECT_EQ(mButton->text(), QStringLiteral("撤销"));
    EXPECT_EQ(mButton->size(), QSize(40, 16));
    EXPECT_EQ(mButton->minimumSize(), mButton->maximumSize());
    EXPECT_EQ(mButton->focusPolicy(), Qt::NoFocus);
}

TEST_F(CTaskTableCancelButtonTest, AsksAndCancelsOnYes) {
    const auto asked = tests::whenAsked([this](QMessageBox &box) {
        EXPECT_EQ(box.windowTitle(), QStringLiteral("提示"));
        EXPECT_EQ(box.text(), QStringLiteral("您确定要撤销任务?"));
        EXPECT_EQ(box.icon(), QMessageBox::Question);
        EXPECT_EQ(box.parentWidget(), mButton.data());
        EXPECT_EQ(int(box.standardButtons()), 0x14000);
        EXPECT_TRUE(cancelled().isEmpty());
        QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton);
    });
    QTest::mouseClick(mButton, Qt::LeftButton);
    EXPECT_TRUE(*asked);
    EXPECT_EQ(cancelled(), QStringList("CLinkageManager::cancelTask 42 7-42"));
}

TEST_F(CTaskTableCancelButtonTest, NoAndEscapeLeaveTheServiceUntouched) {
    const auto no = tests::answerWith(QMessageBox::No);
    QTest::mouseClick(mButton, Qt::LeftButton);
    const auto escape = tests::whenAsked([](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Escape); });
    QTest::mouseClick(mButton, Qt::LeftButton);
    EXPECT_TRUE(*no && *escape);
    EXPECT_TRUE(mHost.mLog.all().isEmpty());
}

TEST_F(CTaskTableCancelButtonTest, ClickIsNoEventOfTheBus) {
    const auto no = tests::answerWith(QMessageBox::No);
    QTest::mouseClick(mButton, Qt::LeftButton);
    EXPECT_TRUE(*no);
    EXPECT_TRUE(mKeeper->of(5).empty());
}

TEST_F(CTaskTableCancelButtonTest, ButtonThatGoesWhileItAsksCancelsNothing) {
    const auto asked = tests::whenAsked([this](QMessageBox &) { delete mButton.data(); });
    mButton->click();
    EXPECT_TRUE(*asked);
    EXPECT_TRUE(cancelled().isEmpty());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(CTaskTableCancelButtonTest, WithoutATaskTheIdsAreThoseOfNone) {
    CTaskTableCancelButton button(0, 0, 3);
    const auto yes = tests::answerWith(QMessageBox::Yes);
    button.slotCancelTask();
    EXPECT_TRUE(*yes);
    EXPECT_EQ(cancelled(), QStringList("CLinkageManager::cancelTask -1 -1--1"));
}

TEST_F(CTaskTableCancelButtonTest, TextHasTheColoursOfTasksInItsStates) {
    const auto hasColor = [this](const char *key) {
        mButton->setText(QStringLiteral("■"));
        const QImage image = painted(*mButton);
        for (int x = 0; x < image.width(); ++x) {
            for (int y = 0; y < image.height(); ++y) {
                if (image.pixelColor(x, y) == color(key)) {
                    return true;
                }
            }
        }
        return false;
    };
    EXPECT_TRUE(hasColor("clr_task_op_button_text_enable"));
    mButton->setDown(true);
    EXPECT_TRUE(hasColor("clr_task_op_button_text_enable"));
    mButton->setDown(false);
    mButton->setEnabled(false);
    EXPECT_TRUE(hasColor("clr_task_op_button_text_disable"));
    EXPECT_FALSE(hasColor("clr_task_op_button_text_enable"));
}

} // namespace
