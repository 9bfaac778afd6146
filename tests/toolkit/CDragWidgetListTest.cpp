#include "host/toolkit/CDragWidgetList.h"

#include "host/toolkit/CUiResource.h"

#include <QMouseEvent>
#include <QtTest>

#include <gtest/gtest.h>

namespace {

using GZ::CDragWidgetList;

class CDragWidgetListTest : public ::testing::Test {
protected:
    CDragWidgetListTest() {
        GZ::CUiResource::instance().setTheme(QStringLiteral("dark"));
        mList.setSplitter(QStringLiteral("ic_clr_realtime_spliter_background"), 0);
        for (int i = 0; i < 3; ++i) {
            mPanes[i] = new QWidget;
            mPanes[i]->setAutoFillBackground(true);
            mList.addStretchWidget(mPanes[i], i == 0 ? 2 : 1, 3, i > 0);
        }
        mList.resize(200, 402);
        mList.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&mList));
    }
    static void send(QWidget *widget, QEvent::Type type, QPoint onScreen) {
        const bool moving = type == QEvent::MouseMove;
        QMouseEvent event(type, widget->mapFromGlobal(onScreen), onScreen,
                          moving ? Qt::NoButton : Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(widget, &event);
    }
    /// Presses at a row of the list, moves by some pixels, releases.
    void drag(int row, int pixels) {
        const QPoint start = mList.mapToGlobal(QPoint(100, row));
        QWidget *hit = mList.childAt(100, row);
        QWidget *target = hit ? hit : &mList;
        send(target, QEvent::MouseButtonPress, start);
        send(target, QEvent::MouseMove, start + QPoint(0, pixels / 2));
        send(target, QEvent::MouseMove, start + QPoint(0, pixels));
        send(target, QEvent::MouseButtonRelease, start + QPoint(0, pixels));
    }
    std::vector<int> heights() const { return {mPanes[0]->height(), mPanes[1]->height(), mPanes[2]->height()}; }
    QColor pixel(int row) { return mList.grab().toImage().pixelColor(100, row); }
    static QColor color(const char *key) { return GZ::CUiResource::instance().getColor(QLatin1String(key)); }

    CDragWidgetList mList{Qt::Vertical};
    QWidget *mPanes[3];
};

using Heights = std::vector<int>;

TEST_F(CDragWidgetListTest, SplittersOfOnePixelStandBeforeTheWidgetsThatAskForThem) {
    EXPECT_EQ(heights(), (Heights{200, 100, 100}));
    EXPECT_EQ(mPanes[1]->y(), 201);
    EXPECT_EQ(mPanes[2]->y(), 302);
    const QColor line = color("ic_clr_realtime_spliter_background");
    EXPECT_EQ(pixel(200), line);
    EXPECT_EQ(pixel(301), line);
    EXPECT_NE(pixel(199), line);
    EXPECT_NE(pixel(201), line);
    EXPECT_NE(pixel(0), line);
}

TEST_F(CDragWidgetListTest, TheSplitterOfTheHighestLevelCounts) {
    mList.setSplitter(QStringLiteral("ic_clr_concise_mainwindow_split_background"), 1);
    EXPECT_EQ(pixel(200), color("ic_clr_concise_mainwindow_split_background"));
    mList.setSplitter(QStringLiteral("ic_clr_realtime_superpos_1"), 0);
    EXPECT_EQ(pixel(301), color("ic_clr_concise_mainwindow_split_background"));
}

TEST_F(CDragWidgetListTest, DragMovesLengthBetweenTheTwoNeighbours) {
    drag(200, 30);
    EXPECT_EQ(heights(), (Heights{230, 70, 100}));
    drag(301, -20);
    EXPECT_EQ(heights(), (Heights{230, 50, 120}));
    EXPECT_EQ(mList.getItem(0)->mStretch, 230);
    EXPECT_EQ(mList.getItem(1)->mStretch, 50);
    EXPECT_EQ(mList.getItem(2)->mStretch, 120);
}

TEST_F(CDragWidgetListTest, GripIsWiderThanTheLine) {
    drag(198, 10);
    EXPECT_EQ(heights(), (Heights{210, 90, 100}));
    drag(213, 10); // the line lies at 210 now; what is hit three pixels away is the pane
    EXPECT_EQ(heights(), (Heights{210, 90, 100}));
}

TEST_F(CDragWidgetListTest, DragLeavesANeighbourSixteenPixels) {
    drag(200, 1000);
    EXPECT_EQ(heights(), (Heights{284, 16, 100}));
    drag(284, -1000);
    EXPECT_EQ(heights(), (Heights{16, 284, 100}));
}

TEST_F(CDragWidgetListTest, ProportionsAfterADragFollowTheSize) {
    drag(200, 100);
    EXPECT_EQ(heights(), (Heights{284, 16, 100}));
    mList.resize(200, 802);
    EXPECT_EQ(heights(), (Heights{568, 32, 200}));
}

TEST_F(CDragWidgetListTest, NothingIsDraggedWhileDragIsOff) {
    EXPECT_TRUE(mList.isDragEnable());
    mList.setDragEnable(false);
    EXPECT_FALSE(mList.isDragEnable());
    drag(200, 30);
    EXPECT_EQ(heights(), (Heights{200, 100, 100}));
    EXPECT_EQ(pixel(200), color("ic_clr_realtime_spliter_background"));
    mList.setDragEnable(true);
    drag(200, 30);
    EXPECT_EQ(heights(), (Heights{230, 70, 100}));
}

TEST_F(CDragWidgetListTest, OtherButtonsDragNothing) {
    QWidget *splitter = mList.childAt(100, 200);
    QTest::mousePress(splitter, Qt::RightButton);
    send(splitter, QEvent::MouseMove, mList.mapToGlobal(QPoint(100, 240)));
    EXPECT_EQ(heights(), (Heights{200, 100, 100}));
}

TEST_F(CDragWidgetListTest, WidgetThatGoesTakesItsSplitterAlong) {
    delete mPanes[2];
    mPanes[2] = mPanes[1];
    EXPECT_EQ(mPanes[0]->height() + mPanes[1]->height(), 401);
    EXPECT_NE(pixel(301), color("ic_clr_realtime_spliter_background"));
    mPanes[0]->hide(); // what is first has nobody to be split from
    QCoreApplication::processEvents();
    EXPECT_EQ(mPanes[1]->geometry(), QRect(0, 0, 200, 402));
    EXPECT_NE(pixel(0), color("ic_clr_realtime_spliter_background"));
}

TEST_F(CDragWidgetListTest, WidgetThatGoesDuringADragEndsItHarmlessly) {
    const QPoint start = mList.mapToGlobal(QPoint(100, 301));
    QWidget *splitter = mList.childAt(100, 301);
    send(splitter, QEvent::MouseButtonPress, start);
    delete mPanes[2];
    send(splitter, QEvent::MouseMove, start + QPoint(0, 30));
    EXPECT_EQ(mPanes[0]->height() + mPanes[1]->height(), 401);
    mPanes[2] = mPanes[1];
}

TEST_F(CDragWidgetListTest, HorizontalListHasUprightSplitters) {
    CDragWidgetList row(Qt::Horizontal);
    row.setSplitter(QStringLiteral("ic_clr_realtime_spliter_background"), 0);
    auto *left = new QWidget;
    auto *right = new QWidget;
    row.addStretchWidget(left, 1, 3, false);
    row.addStretchWidget(right, 1, 3, true);
    row.resize(101, 50);
    row.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&row));
    EXPECT_EQ(right->x(), 51);
    QWidget *splitter = row.childAt(50, 25);
    const QPoint start = row.mapToGlobal(QPoint(50, 25));
    send(splitter, QEvent::MouseButtonPress, start);
    send(splitter, QEvent::MouseMove, start + QPoint(-20, 400));
    EXPECT_EQ(left->width(), 30);
    EXPECT_EQ(splitter->cursor().shape(), Qt::SplitHCursor);
}

} // namespace
