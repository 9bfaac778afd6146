// What the keyboard reaches in a view beside the cross line.

#include "tests/chartview/GraphMenuFixture.h"
#include "tests/containers/CursorFixture.h"
#include "tests/linkage/TradeRecords.h"

#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QTest>
#include <QTimer>

namespace tests {
namespace {

class ViewKeys : public CursorFixture {
protected:
    /// The view in an active window, with the focus.
    void showFocused(int panes = 0) {
        showView(panes);
        fill();
        mKeeper->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(mKeeper.get()));
        mMain->setFocus();
        settle();
        mKeeper->mEvents.clear();
    }
    void press(int key, Qt::KeyboardModifiers held = Qt::NoModifier) {
        QTest::keyClick(mMain.get(), Qt::Key(key), held);
        settle();
    }
    /// Sends the menu key, and answers the entries of the menu that opens; it is closed then.
    QStringList menuByKey() {
        QStringList texts;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [&] {
            if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())) {
                for (const QAction *action : menu->actions()) {
                    texts.append(action->text());
                }
                mMenuAt = menu->pos();
                menu->close();
            }
        });
        look.start(10);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, mMain->rect().center(),
                                mMain->mapToGlobal(mMain->rect().center()));
        QCoreApplication::sendEvent(mMain.get(), &event);
        settle();
        return texts;
    }
    int heightOf(int position) const { return panes()[position]->height(); }
    QRect framed() const { return frame()->isVisible() ? frame()->geometry() : QRect(); }

    QPoint mMenuAt;
};

TEST_F(ViewKeys, PanesAreSelectedOneByOne) {
    ASSERT_NO_FATAL_FAILURE(showFocused(2));
    mMain->highlightWidget(0);
    press(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(framed(), rectOf(sub(0)));
    press(Qt::Key_Down, Qt::ControlModifier);
    press(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(framed(), rectOf(sub(1))) << "the last one";
    press(Qt::Key_Up, Qt::ControlModifier);
    press(Qt::Key_Up, Qt::ControlModifier);
    press(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(framed(), rectOf(pane()));
}

TEST_F(ViewKeys, AFocusThatTheKeyboardBringsIsSeen) {
    ASSERT_NO_FATAL_FAILURE(showFocused());
    EXPECT_EQ(framed(), QRect()) << "it was not the keyboard";
    const QImage before = screen();
    mMain->clearFocus();
    mMain->setFocus(Qt::TabFocusReason);
    settle();
    EXPECT_EQ(framed(), rectOf(pane())) << "without formula panes, too";
    EXPECT_NE(screen(), before);
    expectScreenComplete("with the focus");
    mMain->clearFocus();
    settle();
    EXPECT_EQ(framed(), QRect());
    EXPECT_EQ(screen(), before);
}

TEST_F(ViewKeys, TheFrameOfTheFocusIsThickerThanThatOfASelection) {
    ASSERT_NO_FATAL_FAILURE(showFocused(1));
    mMain->highlightWidget(sub(0)->getId());
    settle();
    const QRegion thin = frame()->mask();
    mMain->clearFocus();
    mMain->setFocus(Qt::BacktabFocusReason);
    settle();
    EXPECT_FALSE(frame()->mask().subtracted(thin).isEmpty());
    mMain->clearFocus();
    EXPECT_EQ(frame()->mask(), thin);
    expectScreenComplete("without the focus");
}

TEST_F(ViewKeys, SplittersMove) {
    ASSERT_NO_FATAL_FAILURE(showFocused(2));
    mMain->highlightWidget(sub(1)->getId());
    settle();
    const int main = heightOf(0);
    const int first = heightOf(1);
    const int second = heightOf(2);
    press(Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(heightOf(1), first - 16);
    EXPECT_EQ(heightOf(2), second + 16);
    press(Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(heightOf(1), first);
    mMain->highlightWidget(0);
    press(Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(heightOf(0), main + 16) << "the one beneath the chart";
    EXPECT_EQ(heightOf(2), second);
}

TEST_F(ViewKeys, WithoutAFormulaPaneThereIsNoSplitter) {
    ASSERT_NO_FATAL_FAILURE(showFocused());
    const int main = heightOf(0);
    press(Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(heightOf(0), main);
}

TEST_F(ViewKeys, AFormulaPaneIsMaximisedAndRestored) {
    ASSERT_NO_FATAL_FAILURE(showFocused(2));
    mMain->highlightWidget(sub(1)->getId());
    const int before = heightOf(2);
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_GT(heightOf(2), before);
    EXPECT_EQ(heightOf(1), 16) << "its title";
    press(Qt::Key_Enter, Qt::ControlModifier);
    EXPECT_EQ(heightOf(2), before);
}

TEST_F(ViewKeys, TheMenuKeyOpensTheMenuOfTheSelectedPane) {
    ASSERT_NO_FATAL_FAILURE(showFocused(1));
    mMain->highlightWidget(0);
    EXPECT_TRUE(menuByKey().contains("叠加品种"));
    const QRect chart(graph(pane())->mapToGlobal(QPoint(0, 0)), graph(pane())->size());
    EXPECT_TRUE(chart.contains(mMenuAt)) << "on the chart, wherever the mouse is";
    mMain->highlightWidget(sub(0)->getId());
    const QStringList texts = menuByKey();
    EXPECT_TRUE(texts.contains("关闭指标"));
    EXPECT_FALSE(texts.contains("叠加品种"));
}

TEST_F(ViewKeys, ARegionIsMarkedFromTheCrossLineOnAndHasItsMenu) {
    ASSERT_NO_FATAL_FAILURE(showFocused());
    mMain->moveToHome();
    for (int i = 0; i < 10; ++i) {
        mMain->moveCursor(false);
    }
    const QImage before = screen();
    for (int i = 0; i < 20; ++i) {
        press(Qt::Key_Right, Qt::ShiftModifier);
    }
    EXPECT_TRUE(graph(pane())->isSelecting());
    EXPECT_NE(screen(), before);
    EXPECT_EQ(mUi->mCrossIndex, 30);
    const QStringList texts = menuByKey();
    EXPECT_TRUE(texts.contains("时段统计")) << texts.join("|").toStdString();
    EXPECT_FALSE(graph(pane())->isSelecting());
}

TEST_F(ViewKeys, TheStretchOfARegionIsThatOfItsMinutes) {
    ASSERT_NO_FATAL_FAILURE(showFocused());
    mMain->moveToHome();
    for (int i = 0; i < 10; ++i) {
        mMain->moveCursor(false);
    }
    for (int i = 0; i < 40; ++i) {
        press(Qt::Key_Right, Qt::ShiftModifier);
    }
    QList<QVariantList> told;
    QObject::connect(mMain.get(), &TC::MainView::regionChanged,
                     [&](const QDateTime &start, const QDateTime &end) {
                         told.append({start.toString("hh:mm"), end.toString("hh:mm")});
                     });
    QTimer choose;
    QObject::connect(&choose, &QTimer::timeout, [&] {
        if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())) {
            for (QAction *action : menu->actions()) {
                if (action->text() == QString("时段统计")) {
                    action->trigger();
                }
            }
            menu->close();
        }
    });
    choose.start(10);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
    QCoreApplication::sendEvent(mMain.get(), &event);
    settle();
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told[0], (QVariantList{"09:40", "10:20"}));
}

TEST_F(ViewKeys, EscapeGivesARegionUpAndNothingElse) {
    ASSERT_NO_FATAL_FAILURE(showFocused());
    mMain->moveToHome();
    press(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(mUi->mCrossIndex, 120);
    EXPECT_TRUE(graph(pane())->isSelecting());
    press(Qt::Key_Escape);
    EXPECT_FALSE(graph(pane())->isSelecting());
    EXPECT_TRUE(mMain->isShowCrossline());
    expectScreenComplete("after the region");
}

TEST_F(ViewKeys, AMarkThatBeginsWithoutACrossLineShowsItAtTheNewestPoint) {
    ASSERT_NO_FATAL_FAILURE(showFocused());
    press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_TRUE(mMain->isShowCrossline());
    EXPECT_EQ(mUi->mCrossIndex, 119);
    press(Qt::Key_Home, Qt::ShiftModifier);
    EXPECT_EQ(mUi->mCrossIndex, 0);
}

TEST_F(ViewKeys, AnEmptyViewHasNothingToMark) {
    showView();
    mKeeper->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(mKeeper.get()));
    mMain->setFocus();
    press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_FALSE(graph(pane())->isSelecting());
    press(Qt::Key_Return, Qt::ControlModifier);
}

TEST_F(ViewKeys, TheRecordsOfAMarkOpenAtItsMinute) {
    mHost.mLinkage.mEnabled = true;
    mHost.mLinkage.mDeals["SH600000"]["A"]["d1"] = makeDeal("d1", 10.1);
    ASSERT_NO_FATAL_FAILURE(showFocused());
    mUi->mLinkageFlags = 4;
    mUi->mLinkageShow[1] = true;
    mUi->mLinkageAccounts = {"A"};
    mUi->mLinkageStocks = {"SH600000"};
    mMain->updateLinkageDatas();
    settle();
    const auto windows = [this] {
        int shown = 0;
        for (const QDialog *dialog : mMain->findChildren<QDialog *>()) {
            shown += dialog->isVisible() ? 1 : 0;
        }
        return shown;
    };
    mMain->moveToHome();
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(windows(), 0) << "nothing is there";
    for (int i = 0; i < 40; ++i) { // to 10:10
        mMain->moveCursor(false);
    }
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(windows(), 1);
}

TEST_F(ViewKeys, AViewThatIsAWindowHasTheKeysFromTheFirst) {
    makeView();
    TC::CRealtimeMainWidget window(nullptr, TC::EIndexViewType::Ordinary);
    window.setStock("SH600000", false);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    settle();
    EXPECT_EQ(QApplication::focusWidget(), &window);
}

TEST_F(ViewKeys, TheToolsOfATitleAreReachedByTabAndPressedBySpace) {
    ASSERT_NO_FATAL_FAILURE(showFocused(1));
    QWidget *focused = nullptr;
    for (int i = 0; i < 12; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        focused = QApplication::focusWidget();
        if (focused && focused->accessibleName() == QString("关闭")) {
            break;
        }
    }
    ASSERT_TRUE(focused && focused->accessibleName() == QString("关闭"));
    settle();
    const QImage seen = onScreen(*focused);
    EXPECT_EQ(seen.pixelColor(0, 0), color("ic_clr_highlight_widget_frame"));
    QTest::keyClick(focused, Qt::Key_Space);
    settle();
    EXPECT_TRUE(mMain->getSubIndexWidgets().isEmpty());
}

} // namespace
} // namespace tests
