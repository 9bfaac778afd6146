// The cross line over all panes: mouse, keyboard, and what each move repaints.

#include "tests/containers/CursorFixture.h"

#include <algorithm>
#include <random>

using namespace TC;

namespace {

class MainWidgetCursor : public tests::CursorFixture {
protected:
    /// What a widget paints differs from what it paints without the cross line.
    bool shows(QWidget *overlay) {
        const QImage with = painted(*overlay);
        const bool shown = std::exchange(mUi->mCrossShown, false);
        const QImage without = painted(*overlay);
        mUi->mCrossShown = shown;
        settle();
        return with != without;
    }
};

// Keyboard

TEST_F(MainWidgetCursor, FirstLeftPressShowsTheCrossLineAtTheNewestPoint) {
    showTrading();
    key(Qt::Key_Left);
    EXPECT_TRUE(mUi->mCrossShown);
    EXPECT_EQ(mUi->mCrossIndex, 120);
    EXPECT_TRUE(mUi->mCursorByKey);
    EXPECT_EQ(mUi->mCrossX, mUi->getXAxisByIndex(120));
    EXPECT_TRUE(line(pane())->isVisible());
}

TEST_F(MainWidgetCursor, FirstRightPressShowsItAtTheFirstPoint) {
    showTrading();
    key(Qt::Key_Right);
    EXPECT_EQ(mUi->mCrossIndex, 0);
    key(Qt::Key_Right);
    EXPECT_EQ(mUi->mCrossIndex, 1);
}

TEST_F(MainWidgetCursor, KeysStopAtBothEndsOfTheData) {
    showTrading();
    key(Qt::Key_Right);
    key(Qt::Key_Left);
    EXPECT_EQ(mUi->mCrossIndex, 0);
    key(Qt::Key_End);
    EXPECT_EQ(mUi->mCrossIndex, 120);
    key(Qt::Key_Right);
    EXPECT_EQ(mUi->mCrossIndex, 120);
    key(Qt::Key_Left);
    EXPECT_EQ(mUi->mCrossIndex, 119);
    key(Qt::Key_Home);
    EXPECT_EQ(mUi->mCrossIndex, 0);
}

TEST_F(MainWidgetCursor, WithoutDataTheRightKeyWalksToTheEndOfTheAxis) {
    mHost.mConfig.mClientType = EClientType::Trading;
    showView();
    for (int i = 0; i < 300; ++i) {
        key(Qt::Key_Right);
    }
    EXPECT_EQ(mUi->mCrossIndex, 240);
}

TEST_F(MainWidgetCursor, KeysAreThoseOfTheTradingClientOnly) {
    showView();
    fill();
    for (const int code : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End, Qt::Key_A}) {
        key(code);
    }
    EXPECT_FALSE(mUi->mCrossShown);
    mHost.mConfig.mClientType = EClientType::Trading;
    key(Qt::Key_A);
    EXPECT_FALSE(mUi->mCrossShown);
}

TEST_F(MainWidgetCursor, KeyboardShowsAHorizontalLineInTheMainPaneOnly) {
    showTrading(2);
    key(Qt::Key_Left);
    settle();
    EXPECT_EQ(rows(line(pane())).size(), 1);
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(line(sub(i))->isVisible());
        EXPECT_TRUE(rows(line(sub(i))).isEmpty()) << i;
        EXPECT_EQ(columns(line(sub(i))), (QList<int>{50 + mUi->getXAxisByIndex(120)})) << i;
    }
}

TEST_F(MainWidgetCursor, HomeAndEndMoveAllLines) {
    showTrading(1);
    key(Qt::Key_Left);
    key(Qt::Key_Home);
    settle();
    EXPECT_EQ(columns(line(pane())), (QList<int>{50 + mUi->getXAxisByIndex(0)}));
    EXPECT_EQ(columns(line(sub(0))), (QList<int>{50 + mUi->getXAxisByIndex(0)}));
    key(Qt::Key_End);
    EXPECT_EQ(columns(line(sub(0))), (QList<int>{50 + mUi->getXAxisByIndex(120)}));
}

// Mouse

TEST_F(MainWidgetCursor, LinesFollowTheMouseInTheMainPane) {
    showView(2);
    fill();
    mUi->mCrossShown = true;
    moveTo(graph(pane()), {301, 100});
    const int index = mUi->getIndexByXAxis(301);
    EXPECT_EQ(mUi->mCrossIndex, index);
    const int x = 50 + mUi->getXAxisByIndex(index);
    const int title = graph(pane())->mapTo(pane(), QPoint(0, 0)).y();
    EXPECT_EQ(rows(line(pane())), (QList<int>{100 + title}));
    EXPECT_EQ(columns(line(pane())), (QList<int>{x}));
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(rows(line(sub(i))).isEmpty());
        EXPECT_EQ(columns(line(sub(i))), (QList<int>{x}));
    }
}

TEST_F(MainWidgetCursor, HorizontalLineIsInThePaneUnderTheMouseAlone) {
    showView(3);
    fill();
    mUi->mCrossShown = true;
    moveTo(graph(pane()), {301, 100});
    moveTo(graph(sub(1)), {401, 30});
    moveTo(graph(sub(1)), {402, 31});
    const int x = 50 + mUi->getXAxisByIndex(mUi->getIndexByXAxis(402));
    EXPECT_TRUE(rows(line(pane())).isEmpty());
    EXPECT_TRUE(rows(line(sub(0))).isEmpty());
    EXPECT_EQ(rows(line(sub(1))), (QList<int>{31 + 16}));
    EXPECT_TRUE(rows(line(sub(2))).isEmpty());
    for (CRealtimeWidget *one : {pane(), sub(0), sub(1), sub(2)}) {
        EXPECT_EQ(columns(line(one)), (QList<int>{x})) << one->getId();
    }
}

TEST_F(MainWidgetCursor, SwitchedOffTheMouseMovesNothingOnTheScreen) {
    showView(1);
    fill();
    moveTo(graph(pane()), {301, 100});
    settle();
    const QImage before = screen();
    moveTo(graph(pane()), {401, 60});
    settle();
    EXPECT_EQ(screen(), before);
    EXPECT_EQ(mUi->mCrossIndex, mUi->getIndexByXAxis(401));
}

TEST_F(MainWidgetCursor, DoubleClickOnTheMainPaneSwitchesIt) {
    showView(1);
    fill();
    moveTo(graph(pane()), {301, 100});
    doubleClick(graph(pane()), {301, 100});
    EXPECT_TRUE(mMain->isShowCrossline());
    moveTo(graph(pane()), {303, 101});
    EXPECT_TRUE(shows(line(pane())));
    doubleClick(graph(pane()), {303, 101});
    EXPECT_FALSE(mMain->isShowCrossline());
    EXPECT_EQ(mUi->mCrossIndex, -1);
    mMain->switchCrossline();
    EXPECT_TRUE(mMain->isShowCrossline());
}

TEST_F(MainWidgetCursor, LeavingTheViewTakesTheLinesAwayAndLeavesTheSwitchOn) {
    showView(1);
    fill();
    mUi->mCrossShown = true;
    moveTo(graph(pane()), {301, 100});
    EXPECT_TRUE(shows(line(sub(0))));
    leaveGraph();
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(mMain.get(), &leave);
    settle();
    EXPECT_TRUE(mUi->mCrossShown);
    EXPECT_FALSE(mUi->mMouseIn);
    EXPECT_EQ(mUi->mCrossIndex, -1);
    EXPECT_FALSE(shows(line(pane())));
    EXPECT_FALSE(shows(timeScale()));
    QEnterEvent enter{QPointF(), QPointF(), QPointF()};
    QCoreApplication::sendEvent(mMain.get(), &enter);
    EXPECT_TRUE(mUi->mMouseIn);
}

TEST_F(MainWidgetCursor, MouseOnTheTimeScaleTakesTheLinesAway) {
    showView(1);
    fill();
    mUi->mCrossShown = true;
    moveTo(graph(pane()), {301, 100});
    leaveGraph();
    QEnterEvent enter{QPointF(), QPointF(), QPointF()};
    QCoreApplication::sendEvent(timeScale(), &enter);
    settle();
    EXPECT_EQ(mUi->mCrossIndex, -1);
    EXPECT_FALSE(shows(line(pane())));
    EXPECT_FALSE(shows(line(sub(0))));
}

TEST_F(MainWidgetCursor, TimeFlagStandsInTheDayUnderThePointer) {
    showView(1);
    fill();
    mMain->scaleView(false);
    mMain->scaleView(false);
    settle();
    mUi->mCrossShown = true;
    const double day = 1002.0 / 3;
    ASSERT_EQ(mUi->mDayWidth, day);
    const QColor flag = color("ic_clr_realtime_cross_line_bg");
    for (CRealtimeWidget *of : {pane(), sub(0)}) {
        for (int daysBack = 0; daysBack < 3; ++daysBack) {
            const int left = 50 + static_cast<int>((2 - daysBack) * day);
            moveTo(graph(of, daysBack), {1, 20});
            moveTo(graph(of, daysBack), {0, 20});
            QImage scale = painted(*timeScale());
            EXPECT_EQ(scale.pixelColor(left, 1), flag) << daysBack;
            EXPECT_NE(scale.pixelColor(left - 1, 1), flag) << daysBack;
            moveTo(graph(of, daysBack), {static_cast<int>(day) - 1, 20});
            scale = painted(*timeScale());
            const int right = static_cast<int>(left + day);
            EXPECT_EQ(scale.pixelColor(right - 1, 1), flag) << daysBack;
            EXPECT_NE(scale.pixelColor(right, 1), flag) << daysBack;
        }
    }
}

// Repaints

TEST_F(MainWidgetCursor, LineOfTheKeyboardStaysOnItsMinuteWhenTheWindowIsResized) {
    showTrading(1);
    key(Qt::Key_Left);
    for (int i = 0; i < 20; ++i) {
        key(Qt::Key_Left);
    }
    ASSERT_EQ(mUi->mCrossIndex, 100);
    mMain->resize(802, 500);
    settle();
    const int x = 50 + mUi->getXAxisByIndex(100);
    EXPECT_EQ(columns(line(pane())), QList<int>{x});
    EXPECT_EQ(columns(line(sub(0))), QList<int>{x});
    const int row = pane()->getGraphWidgetMouseY();
    EXPECT_EQ(rows(line(pane())), QList<int>{row});
}

TEST_F(MainWidgetCursor, LineOfTheMouseStaysOnItsMinuteWhenDaysComeAndGo) {
    showTrading(1);
    mUi->mCrossShown = true;
    moveTo(graph(pane()), {300, 100});
    const int index = mUi->mCrossIndex;
    mMain->scaleView(false);
    settle();
    const int x = 50 + graph(pane())->width() + mUi->getXAxisByIndex(index);
    EXPECT_EQ(columns(line(pane())), QList<int>{x});
    EXPECT_EQ(columns(line(sub(0))), QList<int>{x});
    mMain->scaleView(true);
    settle();
    EXPECT_EQ(mUi->mCrossIndex, index);
    EXPECT_EQ(columns(line(pane())), QList<int>{50 + mUi->getXAxisByIndex(index)});
    mMain->scaleView(false);
    event(3228, 0, 2);
    settle();
    EXPECT_EQ(columns(line(pane())), QList<int>{50 + mUi->getXAxisByIndex(index)});
}

TEST_F(MainWidgetCursor, TimeFlagStaysAtItsMinuteWhenDaysGo) {
    showTrading();
    mMain->scaleView(false);
    settle();
    key(Qt::Key_Left);
    mMain->scaleView(true);
    settle();
    mUi->mCursorByKey = true;
    const QImage moved = painted(*timeScale());
    timeScale()->setCursor(mUi->mCrossIndex, mUi->getXAxisByIndex(mUi->mCrossIndex));
    EXPECT_EQ(moved, painted(*timeScale()));
    timeScale()->setCursor(-1, 0);
    EXPECT_NE(moved, painted(*timeScale()));
}

TEST_F(MainWidgetCursor, LineGoesWithTheDayUnderTheMouse) {
    showTrading(1);
    mMain->scaleView(false);
    settle();
    mUi->mCrossShown = true;
    moveTo(graph(pane(), 1), {100, 100});
    ASSERT_FALSE(columns(line(pane())).isEmpty());
    mMain->scaleView(true);
    mUnderMouse = nullptr;
    settle();
    EXPECT_EQ(mUi->mCrossIndex, -1);
    EXPECT_TRUE(mUi->mCrossShown);
    EXPECT_TRUE(columns(line(pane())).isEmpty());
    EXPECT_TRUE(columns(line(sub(0))).isEmpty());
    EXPECT_FALSE(shows(timeScale()));
    moveTo(graph(pane()), {100, 100});
    EXPECT_FALSE(columns(line(pane())).isEmpty());
}

TEST_F(MainWidgetCursor, LineStaysOnTheLastMinuteOfAShorterAxis) {
    showTrading();
    mUi->mCrossShown = true;
    moveTo(graph(pane()), {graph(pane())->width(), 100});
    ASSERT_EQ(mUi->mCrossIndex, 240);
    mHost.mStocks.add("SF", "rb2405", 3500.0, 1.0);
    mMain->setStock("SFrb2405", false);
    EXPECT_EQ(mUi->mCrossIndex, 225);
}

TEST_F(MainWidgetCursor, LineStaysOnItsPlaceOnAnotherAxis) {
    showTrading();
    key(Qt::Key_Left);
    key(Qt::Key_Left);
    const int index = mUi->mCrossIndex;
    mHost.mStocks.add("SF", "rb2405", 3500.0, 1.0);
    mMain->setStock("SFrb2405", false);
    ASSERT_EQ(mUi->mPointCount, 226);
    settle();
    EXPECT_EQ(columns(line(pane())), QList<int>{50 + mUi->getXAxisByIndex(index)});
}

TEST_F(MainWidgetCursor, MouseMoveRepaintsTheOldAndNewLinesAndBoxesAndDrawsNothingAnew) {
    showView(2);
    fill();
    mUi->mCrossShown = true;
    moveTo(graph(pane()), {300, 100});
    moveTo(graph(pane()), {301, 101});
    settle();
    mHost.mLog.clear();
    tests::PaintWatch mainGraph(graph(pane()));
    tests::PaintWatch subGraph(graph(sub(0)));
    tests::PaintWatch scale(timeScale());
    const QPoint corner = graph(pane())->mapTo(pane(), QPoint(0, 0));
    QPoint from(301, 101);
    for (const QPoint &to : {QPoint(420, 160), QPoint(421, 160), QPoint(3, 2), QPoint(900, 250)}) {
        mainGraph.mRegions.clear();
        subGraph.mRegions.clear();
        scale.mRegions.clear();
        const int oldX = mUi->getXAxisByIndex(mUi->mCrossIndex);
        moveTo(graph(pane()), to);
        settle();
        const int newX = mUi->getXAxisByIndex(mUi->mCrossIndex);
        QRegion columns;
        for (const int x : {oldX, newX}) {
            columns |= QRect(x - 1, -100, 3, 1000);
        }
        QRegion rows;
        for (const int y : {from.y(), to.y()}) {
            rows |= QRect(-100, y - 1, 2000, 3);
        }
        ASSERT_LE(mainGraph.mRegions.size(), 1);
        for (const QRegion &region : mainGraph.mRegions) {
            EXPECT_TRUE(region.subtracted(columns | rows).isEmpty());
        }
        for (const QRegion &region : subGraph.mRegions) {
            EXPECT_TRUE(region.subtracted(columns).isEmpty());
        }
        for (const QRegion &region : scale.mRegions) {
            EXPECT_LE(region.boundingRect().height(), 20);
            int pixels = 0;
            for (const QRect &rect : region) {
                pixels += rect.width();
            }
            EXPECT_LE(pixels, 2 * 60) << "two flags";
        }
        from = to;
    }
    EXPECT_TRUE(mHost.mLog.of("CEnhanceDrawManager").size() <= 4) << "one repaint of the graph a move";
    EXPECT_EQ(corner.x(), 50);
}

TEST_F(MainWidgetCursor, MouseMoveChangesNoPictureOfAGraph) {
    showView(2);
    mMain->scaleView(false);
    fill();
    mUi->mCrossShown = true;
    QList<CRealtimeGraphWidget *> graphs = graph(pane())->window()->findChildren<CRealtimeGraphWidget *>();
    ASSERT_EQ(graphs.size(), 6);
    for (CRealtimeGraphWidget *one : graphs) {
        one->getData()->takeDirtyRect();
    }
    for (const QPoint &to : {QPoint(40, 60), QPoint(340, 160), QPoint(341, 161), QPoint(0, 0)}) {
        moveTo(graph(pane()), to);
        settle();
        for (CRealtimeGraphWidget *one : graphs) {
            EXPECT_TRUE(one->getData()->takeDirtyRect().isNull());
        }
    }
    graphs[0]->getData()->redraw();
    EXPECT_FALSE(graphs[0]->getData()->takeDirtyRect().isNull()) << "a drawing would have been seen";
}

TEST_F(MainWidgetCursor, MoveInTheSamePlaceRepaintsNothing) {
    showView(1);
    fill();
    mUi->mCrossShown = true;
    moveTo(graph(pane()), {300, 100});
    settle();
    const QList<QWidget *> widgets = mKeeper->findChildren<QWidget *>();
    std::vector<std::unique_ptr<tests::PaintWatch>> watches;
    for (QWidget *widget : widgets) {
        watches.push_back(std::make_unique<tests::PaintWatch>(widget));
    }
    moveTo(graph(pane()), {300, 100});
    settle();
    for (std::size_t i = 0; i < watches.size(); ++i) {
        EXPECT_TRUE(watches[i]->mRegions.isEmpty()) << qPrintable(widgets[static_cast<int>(i)]->objectName());
    }
    moveTo(graph(pane()), {300, 140});
    settle();
    EXPECT_TRUE(std::any_of(watches.begin(), watches.end(),
                            [](const auto &watch) { return !watch->mRegions.isEmpty(); }));
}

TEST_F(MainWidgetCursor, MouseMoveAsksTheHostForNothing) {
    showView(1);
    fill();
    mUi->mCrossShown = true;
    moveTo(graph(pane()), {300, 100});
    settle();
    mHost.mLog.clear();
    const int rounds = mUi->mRequestId;
    for (int x = 0; x < 900; x += 13) {
        moveTo(graph(pane()), {x, 80});
    }
    EXPECT_TRUE(mHost.mLog.of("CFormulaManager").isEmpty());
    EXPECT_EQ(mUi->mRequestId, rounds);
}

TEST_F(MainWidgetCursor, AnyWalkLeavesThePixelsOfAWholeRepaint) {
    showTrading(2);
    mMain->scaleView(false);
    settle();
    std::mt19937 random(20240315);
    const auto below = [&random](int bound) { return static_cast<int>(random() % unsigned(bound)); };
    mUi->mCrossShown = true;
    mMain->update();
    settle();
    const QList<CRealtimeWidget *> panes = {pane(), sub(0), sub(1)};
    for (int step = 0; step < 150; ++step) {
        CRealtimeGraphWidget *at = graph(panes[below(3)], below(2));
        const QPoint where(below(at->width()), below(at->height()));
        switch (below(12)) {
        case 0:
            key(Qt::Key_Left);
            break;
        case 1:
            key(Qt::Key_Right);
            break;
        case 2:
            key(below(2) ? Qt::Key_Home : Qt::Key_End);
            break;
        case 3:
            if (graph(pane()) == mUnderMouse) {
                doubleClick(mUnderMouse, where);
            }
            break;
        case 4: {
            leaveGraph();
            QEnterEvent enter{QPointF(), QPointF(), QPointF()};
            QCoreApplication::sendEvent(timeScale(), &enter);
            break;
        }
        case 5: {
            leaveGraph();
            QEvent leave(QEvent::Leave);
            QCoreApplication::sendEvent(mMain.get(), &leave);
            break;
        }
        case 6:
            if (mUnderMouse) {
                send(mUnderMouse, QEvent::MouseButtonPress, where, Qt::LeftButton, Qt::LeftButton);
                send(mUnderMouse, QEvent::MouseMove, QPoint(below(300), 10), Qt::NoButton, Qt::LeftButton);
            }
            break;
        case 7:
            if (mUnderMouse) {
                send(mUnderMouse, QEvent::MouseButtonRelease, where, Qt::LeftButton);
            }
            break;
        default:
            moveTo(at, where);
            moveTo(at, where + QPoint(1, 0));
        }
        settle();
        const QImage walked = screen();
        mKeeper->update();
        for (QWidget *widget : mKeeper->findChildren<QWidget *>()) {
            widget->update();
        }
        settle();
        ASSERT_EQ(walked, screen()) << "step " << step;
    }
}

} // namespace
