#include "host/toolkit/CMessageTip.h"

#include "host/windows/CMessageTipWidget.h"
#include "tests/chartview/ChartFixture.h"

#include <QApplication>
#include <QLabel>
#include <QSignalSpy>
#include <QtTest>

using GZ::CMessageTip;
using TC::CMessageTipWidget;

namespace {

class CMessageTipTest : public tests::ChartFixture {
protected:
    CMessageTipTest() {
        mKeeper->setGeometry(200, 200, 300, 100);
        mAnchor = new QWidget(mKeeper.get());
        mAnchor->setGeometry(20, 30, 90, 22);
        mKeeper->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(mKeeper.get()));
    }
    ~CMessageTipTest() override { mKeeper.reset(); }

    static QLabel *tip() {
        QLabel *found = nullptr;
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == QLatin1String("message_tip")) {
                EXPECT_FALSE(found) << "there is one at most";
                found = static_cast<QLabel *>(widget);
            }
        }
        return found;
    }
    QRect anchorRect() const { return QRect(mAnchor->mapToGlobal(QPoint()), mAnchor->size()); }

    QWidget *mAnchor;
};

TEST_F(CMessageTipTest, TipStandsAtTheSideThatIsAskedFor) {
    CMessageTip::showTip(mAnchor, 64, QStringLiteral("失败"), 3, 300);
    ASSERT_TRUE(tip());
    EXPECT_EQ(tip()->text(), "失败");
    EXPECT_TRUE(tip()->isVisible());
    EXPECT_EQ(tip()->x(), anchorRect().left());
    EXPECT_GT(tip()->y(), anchorRect().bottom());
    CMessageTip::showTip(mAnchor, Qt::AlignTop, QStringLiteral("失败"), 3, 300);
    EXPECT_LT(tip()->geometry().bottom(), anchorRect().top());
    CMessageTip::showTip(mAnchor, Qt::AlignRight, QStringLiteral("失败"), 3, 300);
    EXPECT_GT(tip()->x(), anchorRect().right());
    CMessageTip::showTip(mAnchor, Qt::AlignLeft, QStringLiteral("失败"), 3, 300);
    EXPECT_LT(tip()->geometry().right(), anchorRect().left());
}

TEST_F(CMessageTipTest, LongTextWrapsAtTheWidthAndAShortOneIsNarrow) {
    CMessageTip::showTip(mAnchor, 64, QStringLiteral("短"), 3, 300);
    const QSize small = tip()->size();
    EXPECT_LT(small.width(), 60);
    CMessageTip::showTip(mAnchor, 64, QString(40, QChar(0x957f)), 3, 300);
    EXPECT_EQ(tip()->width(), 300);
    EXPECT_GT(tip()->height(), small.height());
    CMessageTip::showTip(mAnchor, 64, QStringLiteral("<b>no markup</b>"), 3, 300);
    EXPECT_EQ(tip()->textFormat(), Qt::PlainText);
}

TEST_F(CMessageTipTest, TipIsHeldToTheScreen) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    mKeeper->move(screen.right() - 60, screen.bottom() - 60);
    CMessageTip::showTip(mAnchor, 64, QString(40, QChar(0x957f)), 3, 300);
    EXPECT_TRUE(screen.contains(tip()->geometry()));
}

TEST_F(CMessageTipTest, TipGoesByItselfAtAClickAndWithItsWindow) {
    CMessageTip::showTip(mAnchor, 64, QStringLiteral("失败"), 0, 300);
    EXPECT_TRUE(QTest::qWaitFor([] { return !tip(); }));
    CMessageTip::showTip(mAnchor, 64, QStringLiteral("失败"), 300, 300);
    QTest::mouseClick(tip(), Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([] { return !tip(); }));
    CMessageTip::showTip(mAnchor, 64, QStringLiteral("失败"), 300, 300);
    mKeeper.reset();
    EXPECT_FALSE(tip());
}

TEST_F(CMessageTipTest, WithoutAWidgetThatIsSeenThereIsNone) {
    CMessageTip::showTip(nullptr, 64, QStringLiteral("失败"), 3, 300);
    EXPECT_FALSE(tip());
    mAnchor->hide();
    CMessageTip::showTip(mAnchor, 64, QStringLiteral("失败"), 3, 300);
    EXPECT_FALSE(tip());
}

// The small window

void send(QWidget *to, QEvent::Type type, const QPoint &global, Qt::MouseButton button, Qt::MouseButtons held) {
    QMouseEvent mouse(type, global - to->pos(), global, button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(to, &mouse);
}

TEST_F(CMessageTipTest, SmallWindowTellsOfADoubleClickOfTheLeftButtonAlone) {
    CMessageTipWidget small(7, nullptr);
    QSignalSpy told(&small, &CMessageTipWidget::sigMouseDoubleClick);
    small.setFixedSize(100, 50);
    small.show();
    EXPECT_EQ(small.id(), 7);
    QTest::mouseClick(&small, Qt::LeftButton);
    EXPECT_EQ(told.size(), 0);
    QTest::mouseDClick(&small, Qt::RightButton);
    EXPECT_EQ(told.size(), 0);
    QTest::mouseDClick(&small, Qt::LeftButton);
    EXPECT_EQ(told.size(), 1);
}

TEST_F(CMessageTipTest, SmallWindowIsDraggedByTheLeftButton) {
    CMessageTipWidget small(0, nullptr);
    small.setFixedSize(100, 50);
    small.move(50, 60);
    small.show();
    send(&small, QEvent::MouseMove, {90, 90}, Qt::NoButton, Qt::NoButton);
    EXPECT_EQ(small.pos(), QPoint(50, 60));
    send(&small, QEvent::MouseButtonPress, {70, 80}, Qt::LeftButton, Qt::LeftButton);
    send(&small, QEvent::MouseMove, {170, 280}, Qt::NoButton, Qt::LeftButton);
    EXPECT_EQ(small.pos(), QPoint(150, 260));
    send(&small, QEvent::MouseButtonRelease, {170, 280}, Qt::LeftButton, Qt::NoButton);
    send(&small, QEvent::MouseMove, {10, 10}, Qt::NoButton, Qt::NoButton);
    EXPECT_EQ(small.pos(), QPoint(150, 260));
}

TEST_F(CMessageTipTest, SmallWindowShowsItsToolTipAndKeepsNoProgramGoing) {
    CMessageTipWidget small(0, nullptr);
    small.setFixedSize(100, 50);
    const QImage empty = painted(small);
    small.setToolTip(QStringLiteral("交易详情"));
    EXPECT_NE(painted(small), empty);
    EXPECT_EQ(painted(small).pixelColor(2, 2), color("clr_menu_bg"));
    small.setToolTip(QString(100, QChar(0x957f)));
    EXPECT_EQ(painted(small).pixelColor(2, 25), color("clr_menu_bg"))
        << "too long, it is cut off within the margin";
    small.show();
    EXPECT_FALSE(small.testAttribute(Qt::WA_QuitOnClose));
}

} // namespace
