#include "host/toolkit/CWidgetList.h"
#include "host/toolkit/Events.h"

#include <QCoreApplication>
#include <QPointer>
#include <QtTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

using GZ::CWidgetList;

/// A widget that asks for a size.
class Wish : public QWidget {
public:
    explicit Wish(QSize size) : mSize(size) {}
    QSize sizeHint() const override { return mSize; }

private:
    QSize mSize;
};

class CWidgetListTest : public ::testing::Test {
protected:
    QWidget *stretch(int share, int anchor = 3) {
        auto *widget = new QWidget;
        mList.addStretchWidget(widget, share, anchor, true);
        return widget;
    }
    void showList(int width, int height) {
        mList.resize(width, height);
        mList.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&mList));
    }

    CWidgetList mList{Qt::Vertical};
};

TEST_F(CWidgetListTest, LaysWidgetsOutFromTopToBottomByStretch) {
    QWidget *main = stretch(2);
    QWidget *sub = stretch(1);
    showList(100, 300);
    EXPECT_EQ(main->geometry(), QRect(0, 0, 100, 200));
    EXPECT_EQ(sub->geometry(), QRect(0, 200, 100, 100));
    EXPECT_TRUE(main->isVisible());
}

TEST_F(CWidgetListTest, RowWithFixedEndsMarginAndSpacing) {
    CWidgetList row(Qt::Horizontal);
    auto *left = new QWidget;
    left->setFixedWidth(50);
    auto *middle = new QWidget;
    auto *right = new Wish({30, 10});
    row.addFixedWidget(left, 3, true);
    row.addStretchWidget(middle, 1, 3, true);
    row.addFixedWidget(right, 3, true);
    row.setMargin(5);
    row.setSpacing(2);
    row.resize(200, 60);
    row.updateWidgetLength();
    EXPECT_EQ(left->geometry(), QRect(5, 5, 50, 50));
    EXPECT_EQ(middle->geometry(), QRect(57, 5, 106, 50)); // 200 - 10 - 80 - 4
    EXPECT_EQ(right->geometry(), QRect(165, 5, 30, 50));
}

TEST_F(CWidgetListTest, SizeHintIsTheSumOfAllWithMarginAndSpacing) {
    mList.addFixedWidget(new Wish({30, 10}), 3, true);
    mList.addStretchWidget(new Wish({70, 20}), 1, 3, true);
    mList.setSpacing(4);
    mList.setMargin(3);
    EXPECT_EQ(mList.sizeHint(), QSize(76, 40)); // 70 + 6, 10 + 4 + 20 + 6
}

TEST_F(CWidgetListTest, AnchorPlacesAWidgetAcrossTheList) {
    QWidget *placed[4];
    for (const int anchor : {CWidgetList::eAnchorNone, CWidgetList::eAnchorStart, CWidgetList::eAnchorEnd,
                             CWidgetList::eAnchorBoth}) {
        placed[anchor] = new Wish({20, 10});
        mList.addFixedWidget(placed[anchor], anchor, true);
    }
    mList.resize(100, 40);
    mList.updateWidgetLength();
    EXPECT_EQ(placed[CWidgetList::eAnchorNone]->geometry(), QRect(40, 0, 20, 10));
    EXPECT_EQ(placed[CWidgetList::eAnchorStart]->geometry(), QRect(0, 10, 20, 10));
    EXPECT_EQ(placed[CWidgetList::eAnchorEnd]->geometry(), QRect(80, 20, 20, 10));
    EXPECT_EQ(placed[CWidgetList::eAnchorBoth]->geometry(), QRect(0, 30, 100, 10));
}

TEST_F(CWidgetListTest, InsertsAtAPositionHeldToTheList) {
    QWidget *newest = stretch(1);
    auto *older = new QWidget;
    auto *last = new QWidget;
    mList.insertStretchWidget(0, older, 1, 3, true);
    mList.insertStretchWidget(99, last, 1, 3, true);
    mList.insertFixedWidget(-5, new QWidget, 3, true);
    EXPECT_EQ(mList.count(), 4);
    EXPECT_EQ(mList.widgetAt(1), older);
    EXPECT_EQ(mList.widgetAt(2), newest);
    EXPECT_EQ(mList.widgetAt(3), last);
    EXPECT_EQ(mList.indexOf(newest), 2);
    EXPECT_TRUE(mList.getItem(0)->mFixed);
}

TEST_F(CWidgetListTest, BeyondTheListThereIsNothing) {
    stretch(1);
    EXPECT_EQ(mList.widgetAt(1), nullptr);
    EXPECT_EQ(mList.widgetAt(-1), nullptr);
    EXPECT_EQ(mList.getItem(1), nullptr);
    EXPECT_EQ(mList.popWidgetAt(7), nullptr);
    QWidget other;
    EXPECT_FALSE(mList.containItem(&other));
    EXPECT_FALSE(mList.containItem(nullptr));
}

TEST_F(CWidgetListTest, NullAndTheSameWidgetTwiceChangeNothing) {
    QWidget *widget = stretch(1);
    mList.addStretchWidget(widget, 5, 3, true);
    mList.addStretchWidget(nullptr, 5, 3, true);
    mList.addFixedWidget(nullptr, 3, true);
    EXPECT_EQ(mList.count(), 1);
    EXPECT_EQ(mList.getItem(0)->mStretch, 1);
}

TEST_F(CWidgetListTest, PoppedWidgetLeavesItsRoomToTheOthers) {
    QWidget *first = stretch(1);
    QWidget *second = stretch(1);
    showList(50, 100);
    EXPECT_EQ(mList.popWidgetAt(0), first);
    EXPECT_EQ(mList.count(), 1);
    EXPECT_EQ(first->parentWidget(), &mList);
    EXPECT_EQ(second->geometry(), QRect(0, 0, 50, 100));
}

TEST_F(CWidgetListTest, DeletedWidgetLeavesTheList) {
    QWidget *first = stretch(1);
    QWidget *second = stretch(1);
    showList(50, 100);
    delete first;
    EXPECT_EQ(mList.count(), 1);
    EXPECT_EQ(second->geometry(), QRect(0, 0, 50, 100));
}

TEST_F(CWidgetListTest, HiddenWidgetTakesNoRoomUntilItIsShownAgain) {
    QWidget *first = stretch(1);
    QWidget *second = stretch(1);
    showList(50, 100);
    first->hide();
    QCoreApplication::processEvents();
    EXPECT_EQ(second->geometry(), QRect(0, 0, 50, 100));
    first->show();
    QCoreApplication::processEvents();
    EXPECT_EQ(second->geometry(), QRect(0, 50, 50, 50));
}

TEST_F(CWidgetListTest, WidgetThatWasHiddenBeforeStaysHidden) {
    auto *hidden = new QWidget;
    hidden->hide();
    mList.addStretchWidget(hidden, 1, 3, true);
    QWidget *shown = stretch(1);
    showList(50, 100);
    EXPECT_FALSE(hidden->isVisible());
    EXPECT_EQ(shown->height(), 100);
}

TEST_F(CWidgetListTest, ChildThatWasMadeWhileTheListIsShownIsShownToo) {
    QWidget *newest = stretch(1);
    showList(50, 100);
    auto *older = new QWidget(&mList);
    mList.insertStretchWidget(0, older, 1, 3, true);
    EXPECT_TRUE(older->isVisible());
    EXPECT_EQ(older->geometry(), QRect(0, 0, 50, 50));
    EXPECT_EQ(newest->geometry(), QRect(0, 50, 50, 50));
}

TEST_F(CWidgetListTest, FollowsAFixedHeightThatChanges) {
    auto *title = new QWidget;
    title->setFixedHeight(16);
    mList.addFixedWidget(title, 3, true);
    QWidget *graphs = stretch(1);
    showList(50, 100);
    EXPECT_EQ(graphs->geometry(), QRect(0, 16, 50, 84));
    title->setFixedHeight(26);
    QCoreApplication::processEvents();
    EXPECT_EQ(graphs->geometry(), QRect(0, 26, 50, 74));
}

TEST_F(CWidgetListTest, ChangedStretchRemembersTheOldOne) {
    QWidget *main = stretch(2);
    QWidget *sub = stretch(1);
    showList(50, 300);
    mList.changeStretch(main, 1);
    EXPECT_EQ(main->height(), 200); // not before it is asked for
    mList.updateWidgetLength();
    EXPECT_EQ(main->height(), 150);
    EXPECT_EQ(mList.getItem(0)->mStretch, 1);
    EXPECT_EQ(mList.getItem(0)->mOldStretch, 2);
    EXPECT_EQ(mList.getItem(1)->mOldStretch, 1);
    mList.resetOldStretch(main);
    mList.resetOldStretch(sub);
    mList.updateWidgetLength();
    EXPECT_EQ(main->height(), 200);
    QWidget stranger;
    mList.changeStretch(&stranger, 9);
    mList.resetOldStretch(&stranger);
    EXPECT_EQ(mList.count(), 2);
}

TEST_F(CWidgetListTest, MaximisedPaneLeavesTheOthersTheirTitles) {
    // What a double click on the second of three sub panes does: 640 pixels, main pane 400.
    QWidget *main = stretch(5);
    QWidget *subs[] = {stretch(1), stretch(1), stretch(1)};
    showList(300, 640);
    ASSERT_EQ(main->height(), 400);
    const int free = 17 - 3 * 17 - main->height() + 660;
    mList.changeStretch(main, main->height());
    mList.changeStretch(subs[1], free - 22);
    for (QWidget *other : {subs[0], subs[2]}) {
        other->resize(300, 16);
        mList.changeStretch(other, 0);
    }
    mList.updateWidgetLength();
    EXPECT_EQ(subs[0]->height(), 16);
    EXPECT_EQ(subs[2]->height(), 16);
    // 608 pixels in the shares 400 and 204.
    EXPECT_EQ(main->height(), 402);
    EXPECT_EQ(subs[1]->geometry(), QRect(0, 418, 300, 206));
    for (QWidget *pane : {main, subs[0], subs[1], subs[2]}) {
        mList.resetOldStretch(pane);
    }
    mList.updateWidgetLength();
    EXPECT_EQ(main->height(), 400);
    EXPECT_EQ(subs[1]->geometry(), QRect(0, 480, 300, 80));
}

TEST_F(CWidgetListTest, SizesOfZeroAndLessAreSafe) {
    QWidget *widget = stretch(1);
    mList.addFixedWidget(new Wish({-1, -1}), 3, true);
    mList.setMargin(40);
    mList.resize(10, 10);
    mList.updateWidgetLength();
    EXPECT_EQ(widget->height(), 0);
    mList.resize(0, 0);
    mList.setMargin(-3);
    mList.setSpacing(-3);
    mList.resize(10, 10);
    mList.updateWidgetLength();
    EXPECT_EQ(widget->geometry(), QRect(0, 0, 10, 10));
}

TEST_F(CWidgetListTest, NegativeStretchCountsAsNone) {
    stretch(-4);
    EXPECT_EQ(mList.getItem(0)->mStretch, 0);
    mList.changeStretch(mList.widgetAt(0), -1);
    EXPECT_EQ(mList.getItem(0)->mStretch, 0);
}

TEST_F(CWidgetListTest, OrientationCanChange) {
    stretch(1);
    QWidget *second = stretch(1);
    mList.resize(100, 40);
    mList.setOrientation(Qt::Horizontal);
    EXPECT_EQ(second->geometry(), QRect(50, 0, 50, 40));
    EXPECT_EQ(mList.orientation(), Qt::Horizontal);
}

/// Keeps the widgets that it is told of as activated.
class ActivationKeeper : public GZ::CBaseWidget {
public:
    bool handleEvent(int event, int first, int second, QString text, void *data) override {
        EXPECT_EQ(event, TC::eWidgetActivated);
        EXPECT_EQ(first, 0);
        EXPECT_EQ(second, 0);
        EXPECT_TRUE(text.isEmpty());
        mActivated.append(*static_cast<QWidget **>(data));
        return true;
    }
    QList<QWidget *> mActivated;
};

TEST(WidgetActivation, IsToldWhenTheMouseEntersAWidgetOfAListThatTells) {
    const auto enter = [](QWidget *widget) {
        QEnterEvent event{QPointF(), QPointF(), QPointF()};
        QCoreApplication::sendEvent(widget, &event);
    };
    ActivationKeeper keeper;
    auto *list = new CWidgetList(Qt::Horizontal, &keeper);
    auto *one = new QWidget;
    auto *two = new QWidget;
    list->addStretchWidget(one, 1, CWidgetList::eAnchorBoth, true);
    list->addStretchWidget(two, 1, CWidgetList::eAnchorBoth, true);
    enter(one);
    EXPECT_TRUE(keeper.mActivated.isEmpty()) << "a list tells nothing at first";
    list->setTellsActivation(true);
    enter(two);
    enter(one);
    EXPECT_EQ(keeper.mActivated, (QList<QWidget *>{two, one}));
    EXPECT_EQ(list->popWidgetAt(0), one);
    enter(one);
    EXPECT_EQ(keeper.mActivated.size(), 2) << "it is no widget of the list any more";
}

} // namespace
