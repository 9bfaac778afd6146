#include "host/toolkit/CCommonDialog.h"

#include "host/toolkit/CPushButton.h"
#include "tests/chartview/ChartFixture.h"
#include "tests/support/Golden.h"
#include "toolkit/windows/DialogFrame.h"

#include <QLabel>
#include <QPointer>
#include <QtTest>

using GZ::CCommonDialog;

namespace {

class CCommonDialogTest : public tests::ChartFixture {
protected:
    /// Keeps the events that reach the dialog, and lets it handle them.
    struct Dialog : CCommonDialog {
        using CCommonDialog::CCommonDialog;
        bool handleEvent(int event, int first, int second, QString text, void *data) override {
            mEvents.append({event, first});
            return CCommonDialog::handleEvent(event, first, second, text, data);
        }
        QList<QPair<int, int>> mEvents;
    };

    CCommonDialogTest() {
        mDialog = new Dialog(mKeeper.get());
        mDialog->setWindowTitle(QStringLiteral("委托明细"));
        mDialog->setGeometry(100, 100, 400, 200);
    }
    void showDialog() {
        mKeeper->show();
        mDialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mDialog));
    }
    void drag(const QPoint &from, const QPoint &by) {
        const auto send = [&](QEvent::Type type, const QPoint &at, Qt::MouseButton button) {
            QMouseEvent mouse(type, from, at, button, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(mDialog, &mouse);
        };
        const QPoint start = mDialog->mapToGlobal(from);
        send(QEvent::MouseButtonPress, start, Qt::LeftButton);
        send(QEvent::MouseMove, start + by, Qt::NoButton);
        send(QEvent::MouseButtonRelease, start + by, Qt::LeftButton);
    }
    Dialog *mDialog;
};

TEST_F(CCommonDialogTest, TitleButtonHidesItAndTellsTheDialogAlone) {
    ASSERT_NO_FATAL_FAILURE(showDialog());
    QTest::mouseClick(mDialog->titleButton(), Qt::LeftButton);
    EXPECT_FALSE(mDialog->isVisible());
    EXPECT_EQ(mDialog->mEvents, (QList<QPair<int, int>>{{5, 101}}));
    EXPECT_TRUE(mKeeper->mEvents.empty());
}

TEST_F(CCommonDialogTest, EscapeAndCloseAreTheTitleButton) {
    ASSERT_NO_FATAL_FAILURE(showDialog());
    QTest::keyClick(mDialog, Qt::Key_Escape);
    EXPECT_FALSE(mDialog->isVisible());
    mDialog->show();
    mDialog->close();
    EXPECT_FALSE(mDialog->isVisible());
    EXPECT_EQ(mDialog->mEvents, (QList<QPair<int, int>>{{5, 101}, {5, 101}}));
}

TEST_F(CCommonDialogTest, EnterPressesNoButton) {
    ASSERT_NO_FATAL_FAILURE(showDialog());
    QTest::keyClick(mDialog, Qt::Key_Return);
    EXPECT_TRUE(mDialog->isVisible());
    EXPECT_TRUE(mDialog->mEvents.isEmpty());
}

TEST_F(CCommonDialogTest, OtherEventsPassOnToTheParent) {
    EXPECT_TRUE(mDialog->handleEvent(3161, 1, 2, QStringLiteral("x"), nullptr));
    ASSERT_EQ(mKeeper->mEvents.size(), 1u);
    EXPECT_EQ(mKeeper->mEvents[0].number, 3161);
    EXPECT_EQ(mKeeper->mEvents[0].text, QStringLiteral("x"));
}

TEST_F(CCommonDialogTest, InnerWidgetFillsItUnderTheTitleAndIsReplaced) {
    const QPointer<QLabel> first = new QLabel;
    mDialog->setInnerWidget(first);
    auto *second = new QLabel;
    mDialog->setInnerWidget(second);
    EXPECT_TRUE(first.isNull());
    EXPECT_EQ(mDialog->innerWidget(), second);
    ASSERT_NO_FATAL_FAILURE(showDialog());
    EXPECT_EQ(second->geometry(), QRect(3, 26, 394, 171));
    mDialog->setInnerWidget(nullptr);
    EXPECT_EQ(mDialog->innerWidget(), nullptr);
}

TEST_F(CCommonDialogTest, TitleButtonStaysAtTheRightOfTheTitle) {
    ASSERT_NO_FATAL_FAILURE(showDialog());
    mDialog->resize(500, 300);
    EXPECT_EQ(mDialog->titleButton()->geometry(), QRect(500 - 6 - 14, 6, 14, 14));
    EXPECT_EQ(CCommonDialog::titleButtonMargin(), 6);
}

TEST_F(CCommonDialogTest, TitleMovesAndFrameResizes) {
    ASSERT_NO_FATAL_FAILURE(showDialog());
    drag(QPoint(50, 12), QPoint(30, -20));
    EXPECT_EQ(mDialog->geometry(), QRect(130, 80, 400, 200));
    drag(QPoint(399, 199), QPoint(50, 40));
    EXPECT_EQ(mDialog->geometry(), QRect(130, 80, 450, 240));
    drag(QPoint(0, 100), QPoint(-10, 5));
    EXPECT_EQ(mDialog->geometry(), QRect(120, 80, 460, 240));
    drag(QPoint(200, 100), QPoint(10, 10)); // neither
    EXPECT_EQ(mDialog->geometry(), QRect(120, 80, 460, 240));
}

TEST_F(CCommonDialogTest, FrameOfADialogOfFixedSizeOnlyMovesAtTheTitle) {
    mDialog->setFixedSize(400, 200);
    ASSERT_NO_FATAL_FAILURE(showDialog());
    const QRect before = mDialog->geometry();
    drag(QPoint(399, 199), QPoint(50, 40));
    EXPECT_EQ(mDialog->geometry(), before);
    drag(QPoint(100, 0), QPoint(50, 40));
    EXPECT_EQ(mDialog->geometry(), before.translated(50, 40));
}

TEST_F(CCommonDialogTest, FollowsTheThemeOnTheScreen) {
    ASSERT_NO_FATAL_FAILURE(showDialog());
    QCoreApplication::processEvents();
    EXPECT_EQ(tests::onScreen(*mDialog).pixelColor(200, 150), color("clr_dialog_bg"));
    EXPECT_EQ(tests::onScreen(*mDialog).pixelColor(300, 4), color("clr_dialog_title_bg"));
    GZ::CUiResource::instance().setTheme(QStringLiteral("light"));
    QCoreApplication::processEvents();
    EXPECT_EQ(tests::onScreen(*mDialog).pixelColor(200, 150), color("clr_dialog_bg"));
    EXPECT_EQ(tests::onScreen(*mDialog).pixelColor(0, 100), color("clr_dialog_border"));
}

TEST(DialogFrame, CornersBelongToBothEdges) {
    const QSize size(400, 200);
    EXPECT_EQ(GZ::frameEdgesAt(QPoint(0, 100), size, 3), Qt::Edges(Qt::LeftEdge));
    EXPECT_EQ(GZ::frameEdgesAt(QPoint(3, 100), size, 3), Qt::Edges());
    EXPECT_EQ(GZ::frameEdgesAt(QPoint(397, 100), size, 3), Qt::Edges(Qt::RightEdge));
    EXPECT_EQ(GZ::frameEdgesAt(QPoint(200, 199), size, 3), Qt::Edges(Qt::BottomEdge));
    EXPECT_EQ(GZ::frameEdgesAt(QPoint(5, 0), size, 3), Qt::LeftEdge | Qt::TopEdge);
    EXPECT_EQ(GZ::frameEdgesAt(QPoint(5, 5), size, 3), Qt::Edges());
    EXPECT_EQ(GZ::frameEdgesAt(QPoint(399, 190), size, 3), Qt::RightEdge | Qt::BottomEdge);
    EXPECT_EQ(GZ::frameEdgesAt(QPoint(-1, 100), size, 3), Qt::Edges());
}

TEST(DialogFrame, OppositeEdgesStayAndTheSizeKeepsItsBounds) {
    const QRect window(100, 100, 400, 200);
    const QSize least(300, 150);
    const QSize most(1000, 1000);
    EXPECT_EQ(GZ::draggedFrame(window, Qt::LeftEdge, {200, 0}, least, most), QRect(200, 100, 300, 200));
    EXPECT_EQ(GZ::draggedFrame(window, Qt::TopEdge | Qt::RightEdge, {10, -20}, least, most),
              QRect(100, 80, 410, 220));
    EXPECT_EQ(GZ::draggedFrame(window, Qt::BottomEdge, {0, 5000}, least, most), QRect(100, 100, 400, 1000));
}

} // namespace
