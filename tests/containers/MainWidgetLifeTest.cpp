// A view that goes at an awkward moment, is squeezed, takes another theme or is of another kind.

#include "tests/containers/MainWidgetFixture.h"

#include "host/windows/CIndexModelWidget.h"
#include "host/windows/CSmartKeyboardDialog.h"
#include "host/windows/CViewVariableDialog.h"

#include <QInputDialog>
#include <QPointer>
#include <QTimer>

#include <random>

using namespace TC;

namespace {

class MainWidgetLife : public tests::MainWidgetFixture {
protected:
    /// The view in the hands of Qt, as a host has it that calls deleteLater.
    QPointer<CRealtimeMainWidget> releaseView() { return mMain.release(); }
    void expectNothingRequested() { EXPECT_TRUE(mHost.mFormulas.mLive.all().isEmpty()); }
};

TEST_F(MainWidgetLife, GoesWhileTheSmartKeyboardWaitsForAnOverlay) {
    mHost.mSmartKeys.add("SH600001", "600001", "one", "o");
    showView(1);
    fill();
    mMain->superposedStock();
    CSmartKeyboardDialog *keyboard = CSmartKeyboardDialog::instance();
    ASSERT_TRUE(keyboard->isVisible());
    mMain.reset();
    settle();
    QTest::keyClicks(keyboard->findChild<QLineEdit *>(), "600001");
    QTest::keyClick(keyboard->findChild<QLineEdit *>(), Qt::Key_Return);
    settle();
    keyboard->hide();
    expectNothingRequested();
}

TEST_F(MainWidgetLife, GoesWithItsVariableWindow) {
    showView(1);
    fill();
    mUi->mCrossIndex = 1;
    mMain->viewVariable();
    const QPointer<CViewVariableDialog> dialog = sub(0)->findChild<CViewVariableDialog *>();
    ASSERT_TRUE(dialog);
    mMain.reset();
    settle();
    EXPECT_FALSE(dialog);
    expectNothingRequested();
}

TEST_F(MainWidgetLife, GoesWhileATemplateIsBeingSaved) {
    mHost.mConfig.mConfig.mConcise = true;
    showView(1, EIndexViewType::Template);
    mMain->setIndexModelVisible(true);
    const QPointer<CRealtimeMainWidget> view = releaseView();
    QTimer::singleShot(0, mKeeper.get(), [view] {
        auto *dialog = qobject_cast<QInputDialog *>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog);
        dialog->setTextValue("mine");
        delete view;
    });
    view->findChild<CIndexModelWidget *>()->showSaveModelDialog({"KDJ"});
    settle();
    EXPECT_FALSE(view);
    EXPECT_TRUE(mHost.mTemplates.mTemplates.isEmpty());
    expectNothingRequested();
}

TEST_F(MainWidgetLife, GoesWhileTheMouseIsInsideWithTheCrossLine) {
    for (int of = 0; of < 2; ++of) {
        showView(2);
        fill();
        mUi->mCrossShown = true;
        moveTo(graph(of ? sub(1) : pane()), {200, 20});
        send(mUnderMouse, QEvent::MouseButtonPress, {200, 20}, Qt::LeftButton, Qt::LeftButton);
        mUnderMouse = nullptr;
        takeEvents();
        mMain.reset();
        settle();
        EXPECT_TRUE(takeEvents().empty()) << "nothing is told on the way out";
        expectNothingRequested();
    }
}

TEST_F(MainWidgetLife, MayBeReleasedByTheHostInTheMiddleOfAnEvent) {
    struct Cause {
        int number;
        std::function<void()> make;
    };
    const std::vector<Cause> causes = {
        {3020, [this] { sub(0)->destorySubWidget(); }},
        {3230, [this] { sub(0)->handleEvent(5, 501, 0, QString(), nullptr); }},
        {13,
         [this] {
             moveTo(graph(pane()), {100, 50});
         }},
        {3199,
         [this] {
             doubleClick(graph(pane()), {100, 50});
         }},
        {190,
         [this] {
             CRealtimeGraphWidget *on = graph(pane());
             mUi->mCrossShown = true;
             send(on, QEvent::MouseButtonPress, {50, 20}, Qt::LeftButton, Qt::LeftButton);
             send(on, QEvent::MouseMove, {150, 90}, Qt::NoButton, Qt::LeftButton);
             send(on, QEvent::MouseButtonRelease, {150, 90}, Qt::LeftButton);
         }},
    };
    for (const Cause &cause : causes) {
        showView(2);
        fill();
        const QPointer<CRealtimeMainWidget> view = mMain.get();
        mKeeper->mOnEvent = [view, &cause](int number) {
            if (number == cause.number) {
                view->deleteLater();
            }
        };
        cause.make();
        mUnderMouse = nullptr;
        mMain.release(); // it is its own now
        settle();
        mKeeper->mOnEvent = nullptr;
        EXPECT_FALSE(view) << cause.number << " reached the host";
        expectNothingRequested();
    }
}

TEST_F(MainWidgetLife, StandsAnySize) {
    showView(3);
    fill();
    mUi->mCrossShown = true;
    for (const QSize &size : {QSize(0, 0), QSize(150, 1), QSize(151, 40), QSize(1, 600), QSize(6000, 30),
                              QSize(200, 5000), QSize(1102, 600)}) {
        mKeeper->resize(size);
        mMain->resize(size);
        settle();
        CRealtimeGraphWidget *on = graph(pane());
        moveTo(on, {on->width() / 2, on->height() / 2});
        moveTo(graph(sub(1)), {0, 0});
        mMain->moveCursor(true);
        settle();
        for (const QWidget *part : {static_cast<QWidget *>(pane()), static_cast<QWidget *>(sub(0))}) {
            EXPECT_GE(part->width(), 150) << "the view is never narrower";
            EXPECT_EQ(part->width(), mMain->width());
        }
        if (mMain->width() > 150 && mMain->height() > 40) {
            EXPECT_EQ(on->width(), mMain->width() - 100) << "between the strips";
        }
    }
    expectScreenComplete("at the size of before");
}

TEST_F(MainWidgetLife, TakesAnotherThemeWhileAPaneIsMaximised) {
    showView(3);
    fill();
    doubleClick(graph(sub(1)), {100, 10});
    settle();
    ASSERT_FALSE(list()->isDragEnable());
    const int height = sub(1)->height();
    ASSERT_TRUE(GZ::CUiResource::instance().setTheme("light"));
    expectScreenComplete("in the light theme");
    EXPECT_FALSE(list()->isDragEnable());
    EXPECT_EQ(sub(1)->height(), height);
    doubleClick(graph(sub(1)), {100, 10});
    expectScreenComplete("restored");
    EXPECT_TRUE(list()->isDragEnable());
    EXPECT_NEAR(graph(sub(0))->height(), graph(sub(1))->height(), 1) << "they share the rows";
}

// Kinds of views

TEST_F(MainWidgetLife, PlainViewLeavesADoubleClickToTheHost) {
    showView(2, EIndexViewType::Plain);
    fill();
    for (const CRealtimeWidget *of : {pane(), sub(0)}) {
        takeEvents();
        doubleClick(graph(of), {100, 10});
        EXPECT_EQ(mKeeper->of(189).size(), 1u);
        EXPECT_FALSE(mUi->mCrossShown);
    }
    EXPECT_TRUE(list()->isDragEnable()) << "no pane is maximised";
    EXPECT_TRUE(frame()->isHidden());
}

TEST_F(MainWidgetLife, PairedViewOverlaysThePartnerOfTheInstrument) {
    mHost.mStocks.add("SZ", "000001", 20.0);
    mHost.mStocks.add("SH", "600001", 20.0);
    mHost.mSectors.mAOfH.insert("SZ000001", "SH600000");
    makeView(EIndexViewType::Paired);
    mMain->setStock("SZ000001", false);
    mUi->addStock("SH600001", QString(), true);
    mMain->setStock("SH600000", true);
    EXPECT_EQ(mMain->getAddStockList(), (QList<QString>{"SZ000001"}));
}

TEST_F(MainWidgetLife, CrossLineWorksWithoutATimeScale) {
    mHost.mConfig.mClientType = EClientType::Trading;
    showView(1, EIndexViewType::NoTimeScale);
    fill();
    EXPECT_EQ(rectOf(sub(0)).bottom(), mMain->height() - 1);
    mUi->mCrossShown = true;
    moveTo(graph(sub(0)), {100, 20});
    expectScreenComplete("mouse in the formula pane");
    key(Qt::Key_Left);
    expectScreenComplete("keyboard");
    leaveGraph();
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(mMain.get(), &leave);
    expectScreenComplete("left");
}

TEST_F(MainWidgetLife, ChartThatIsReplacedIsGoneFromTheScreenUntilTheOtherOneComes) {
    showView(1);
    fill();
    mMain->updateIndex("TREND", 0, EFormulaLanguage::Native, corvane::ERunMode::Ordinary);
    expectScreenComplete("nothing has come yet");
    answer("TREND", {10.0, 10.1});
    expectScreenComplete("it has come");
}

// The mouse while points arrive

TEST_F(MainWidgetLife, AnyWalkOfTheMouseWhilePointsArriveLeavesThePixelsOfAWholeRepaint) {
    showView(2);
    mMain->scaleView(false);
    fill(60);
    mUi->mCrossShown = true;
    std::mt19937 random(7);
    const auto below = [&random](int bound) {
        return static_cast<int>(random() % static_cast<unsigned>(bound));
    };
    const QList<CRealtimeWidget *> panes = {pane(), sub(0), sub(1)};
    for (int step = 0; step < 60; ++step) {
        const fakehost::LiveRequest request =
            mHost.mFormulas.mLive.all()[below(mHost.mFormulas.mLive.all().size())];
        const int day = static_cast<int>(request.param.mStart.first / 1000);
        const int minute = below(4) ? 630 + step : 570 + below(60);
        const double value = 9.5 + below(100) / 100.0;
        request.onRealtime(0, request.id(), tests::makePoint(tests::minuteTime(day, minute), {value}));
        CRealtimeGraphWidget *at = graph(panes[below(3)], below(2));
        if (below(6) == 0) {
            leaveGraph();
            QEvent leave(QEvent::Leave);
            QCoreApplication::sendEvent(mMain.get(), &leave);
        } else {
            moveTo(at, {below(at->width()), below(at->height())});
        }
        expectScreenComplete("step " + std::to_string(step));
        ASSERT_FALSE(HasFailure());
    }
}

} // namespace
