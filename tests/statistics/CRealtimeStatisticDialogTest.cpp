// The dialog of statistics: what it shows, its edits, its events.

#include "tests/statistics/StatisticFixture.h"

using namespace TC;
using tests::StatisticFixture;
using Bounds = QList<QPair<int, QTime>>;

namespace {

const QStringList kValues = {QStringLiteral("10.00"), QStringLiteral("10.50"),  QStringLiteral("9.90"),
                             QStringLiteral("10.20"), QStringLiteral("1.20万"), QStringLiteral("2.00%"),
                             QStringLiteral("10.10"), QStringLiteral("6.00%"),  QStringLiteral("0.12%"),
                             QStringLiteral("1.2亿"), QStringLiteral("0.00%")};

using StatisticDialog = StatisticFixture;

// Layout

TEST_F(StatisticDialog, SizeIsFixed) {
    EXPECT_EQ(mDialog->minimumSize(), QSize(360, 500));
    EXPECT_EQ(mDialog->maximumSize(), QSize(360, 500));
    EXPECT_FALSE(mDialog->isModal());
}

TEST_F(StatisticDialog, OutsideAReplayThereAreNoTabsAndNoOrders) {
    EXPECT_EQ(child<GZ::CPushButtonGroup>(), nullptr);
    EXPECT_EQ(child<GZ::CCheckBox>(), nullptr);
    EXPECT_EQ(child<GZ::CComboBox>(), nullptr);
    EXPECT_EQ(stageButton()->text(), QStringLiteral("阶段排序"));
    EXPECT_EQ(quoteButton()->text(), QStringLiteral("时段行情"));
    EXPECT_EQ(qobject_cast<GZ::CMediumNormalButton *>(quoteButton()), quoteButton());
    ASSERT_NO_FATAL_FAILURE(show());
    EXPECT_TRUE(stageButton()->isVisible());
    EXPECT_TRUE(quoteButton()->isVisible());
    EXPECT_EQ(stageButton()->size(), QSize(65, 21));
    EXPECT_EQ(quoteButton()->size(), QSize(65, 21));
}

TEST_F(StatisticDialog, ControlsStandAtTheirPlaces) {
    mDialog->setValues(31, kValues);
    ASSERT_NO_FATAL_FAILURE(show());
    EXPECT_EQ(startEdit()->geometry(), QRect(78, 50, 80, 24));
    EXPECT_EQ(endEdit()->geometry(), QRect(218, 50, 80, 24));
    EXPECT_EQ(startEdit()->displayFormat(), QStringLiteral("hh:mm"));
    EXPECT_EQ(plate()->geometry(), QRect(23, 209, 310, 250));
    const int textWidth =
        QFontMetrics(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_default_normal")))
            .horizontalAdvance(QStringLiteral("共 31 个周期"));
    EXPECT_EQ(stageButton()->pos(), QPoint(23 + textWidth + 5, 80));
    EXPECT_EQ(quoteButton()->pos(), QPoint(23 + textWidth + 75, 80));
}

TEST_F(StatisticDialog, ButtonsMoveWithTheTextOfTheCount) {
    ASSERT_NO_FATAL_FAILURE(show());
    mDialog->setValues(1, kValues);
    const int narrow = stageButton()->x();
    mDialog->setValues(1000, kValues);
    EXPECT_GT(stageButton()->x(), narrow);
    EXPECT_EQ(quoteButton()->x(), stageButton()->x() + 70);
}

TEST_F(StatisticDialog, ReplayHasTwoTabsAndNoButtons) {
    makeDialog(true);
    ASSERT_NO_FATAL_FAILURE(show());
    EXPECT_FALSE(stageButton()->isVisible());
    EXPECT_FALSE(quoteButton()->isVisible());
    const auto *group = child<GZ::CPushButtonGroup>();
    EXPECT_EQ(group->geometry(), QRect(23, 50, 120, 24));
    EXPECT_EQ(group->checkedId(), 604);
    EXPECT_EQ(startEdit()->geometry(), QRect(78, 79, 80, 24));
    EXPECT_EQ(endEdit()->geometry(), QRect(218, 79, 80, 24));
    EXPECT_EQ(child<GZ::CCheckBox>()->geometry(), QRect(303, 80, 60, 21));
    EXPECT_EQ(child<GZ::CCheckBox>()->text(), QStringLiteral("实时"));
    EXPECT_EQ(child<GZ::CCheckBox>()->id(), 606);
    EXPECT_EQ(orders()->id(), 607);
    EXPECT_EQ(plate()->geometry(), QRect(23, 238, 310, 250));
}

TEST_F(StatisticDialog, TabOfTheOrdersHidesTheTimes) {
    makeDialog(true);
    ASSERT_NO_FATAL_FAILURE(show());
    EXPECT_FALSE(orders()->isVisible());
    EXPECT_TRUE(mDialog->handleEvent(5, 605, 1, QString(), nullptr));
    EXPECT_FALSE(startEdit()->isVisible());
    EXPECT_FALSE(endEdit()->isVisible());
    EXPECT_FALSE(child<GZ::CCheckBox>()->isVisible());
    EXPECT_TRUE(orders()->isVisible());
    EXPECT_EQ(orders()->geometry(), QRect(78, 79, 100, 24));
    EXPECT_TRUE(mDialog->handleEvent(5, 604, 1, QString(), nullptr));
    EXPECT_TRUE(startEdit()->isVisible());
    EXPECT_TRUE(child<GZ::CCheckBox>()->isVisible());
    EXPECT_FALSE(orders()->isVisible());
    EXPECT_TRUE(mBus->mEvents.empty());
}

TEST_F(StatisticDialog, ClickOnATabShowsIt) {
    makeDialog(true);
    ASSERT_NO_FATAL_FAILURE(show());
    QTest::mouseClick(child<GZ::CPushButtonGroup>()->childAt(90, 12), Qt::LeftButton);
    EXPECT_EQ(child<GZ::CPushButtonGroup>()->checkedId(), 605);
    EXPECT_TRUE(orders()->isVisible());
    QTest::mouseClick(child<GZ::CPushButtonGroup>()->childAt(30, 12), Qt::LeftButton);
    EXPECT_FALSE(orders()->isVisible());
}

TEST_F(StatisticDialog, FiguresAreRepaintedWithTheCount) {
    ASSERT_NO_FATAL_FAILURE(show());
    const QImage empty = painted(*mDialog);
    mDialog->setValues(31, kValues);
    const QImage filled = painted(*mDialog);
    const auto differs = [&](const QRect &place) { return empty.copy(place) != filled.copy(place); };
    EXPECT_TRUE(differs(QRect(23, 79, 90, 24))); // the count
    for (int position = 0; position < 11; ++position) {
        EXPECT_TRUE(differs(QRect(23 + position % 3 * 104, 108 + position / 3 * 24, 104, 24))) << position;
    }
    mDialog->setValues(31, {});
    const QImage without = painted(*mDialog);
    EXPECT_EQ(without.copy(23, 108, 312, 96), empty.copy(23, 108, 312, 96)); // labels without figures
}

TEST_F(StatisticDialog, LowIsPaintedInTheColourOfARise) {
    ASSERT_NO_FATAL_FAILURE(show());
    mDialog->setValues(1, {QString(), QString(), QStringLiteral("-9.90")});
    const QImage low = painted(*mDialog).copy(231, 108, 104, 24);
    bool reddish = false;
    for (int x = 0; x < low.width(); ++x) {
        for (int y = 0; y < low.height(); ++y) {
            const QColor pixel = low.pixelColor(x, y);
            reddish = reddish || pixel.red() > 150 + pixel.green();
            EXPECT_LT(pixel.green(), 150 + pixel.red());
        }
    }
    EXPECT_TRUE(reddish);
}

// The stretch

TEST_F(StatisticDialog, StretchIsShownInTheEditsAndItsTransactionsAreAskedFor) {
    mDialog->setStock(QStringLiteral("SH600000"), true);
    EXPECT_TRUE(mHost.mFormulas.mQuoteRequests.empty());
    setRange(at(9, 30), at(10, 0));
    EXPECT_EQ(startEdit()->time(), QTime(9, 30));
    EXPECT_EQ(endEdit()->time(), QTime(10, 0));
    ASSERT_EQ(mHost.mFormulas.mQuoteRequests.size(), 1u);
    const fakehost::QuoteRequest &asked = mHost.mFormulas.mQuoteRequests[0];
    EXPECT_EQ(asked.meta.mCode, "600000");
    EXPECT_EQ(asked.meta.mDataKind, 1806);
    EXPECT_EQ(asked.region.mStart, at(9, 30) * 1000);
    EXPECT_EQ(asked.region.mEnd, at(10, 0) * 1000);
    EXPECT_TRUE(mBus->mEvents.empty()); // an edit of the dialog itself is none
}

TEST_F(StatisticDialog, SameStretchAsksForNothing) {
    takeStretch();
    setRange(at(9, 30), at(10, 0));
    EXPECT_TRUE(mHost.mFormulas.mQuoteRequests.empty());
    EXPECT_TRUE(mHost.mLog.all().isEmpty());
}

TEST_F(StatisticDialog, OtherInstrumentAsksForItsTransactions) {
    mHost.mStocks.add("SZ", "000001");
    takeStretch();
    mDialog->setStock(QStringLiteral("SH600000"), false);
    EXPECT_TRUE(mHost.mFormulas.mQuoteRequests.empty());
    mDialog->setStock(QStringLiteral("SZ000001"), false);
    ASSERT_EQ(mHost.mFormulas.mQuoteRequests.size(), 1u);
    EXPECT_EQ(mHost.mFormulas.mQuoteRequests[0].meta.mMarket, "SZ");
    EXPECT_EQ(plate()->stock(), QStringLiteral("SZ000001"));
}

TEST_F(StatisticDialog, StretchOverMidnightIsNoEdit) {
    takeStretch();
    setRange(at(21, 0), at(2, 30, 0, 16));
    setRange(at(9, 30), at(10, 30, 0, 16)); // a later time of day on the next day
    EXPECT_EQ(endEdit()->time(), QTime(10, 30));
    EXPECT_TRUE(mBus->mEvents.empty());
}

TEST_F(StatisticDialog, StretchOfOnePeriodIsNoEdit) {
    takeStretch();
    setRange(at(9, 45), at(9, 45));
    EXPECT_EQ(startEdit()->time(), QTime(9, 45));
    EXPECT_EQ(endEdit()->time(), QTime(9, 45));
    EXPECT_TRUE(mBus->mEvents.empty());
}

// The edits

TEST_F(StatisticDialog, EditOfTheStartAsksTheViewForIt) {
    takeStretch();
    startEdit()->setTime(QTime(9, 40));
    EXPECT_EQ(mBus->mBounds, (Bounds{{0, QTime(9, 40)}}));
    ASSERT_EQ(numbers(), std::vector<int>{3239});
    EXPECT_EQ(mBus->mEvents[0].second, 0);
    EXPECT_EQ(mBus->mEvents[0].text, QString());
}

TEST_F(StatisticDialog, EditOfTheEndAsksTheViewForIt) {
    takeStretch();
    endEdit()->setTime(QTime(10, 30));
    EXPECT_EQ(mBus->mBounds, (Bounds{{1, QTime(10, 30)}}));
}

TEST_F(StatisticDialog, EditOfTheStartToTheEndOrBeyondFallsBack) {
    takeStretch();
    startEdit()->setTime(QTime(10, 0));
    EXPECT_EQ(startEdit()->time(), QTime(9, 30));
    startEdit()->setTime(QTime(11, 0));
    EXPECT_EQ(startEdit()->time(), QTime(9, 30));
    EXPECT_TRUE(mBus->mEvents.empty());
}

TEST_F(StatisticDialog, EditOfTheEndToTheStartOrBeforeFallsBack) {
    takeStretch();
    endEdit()->setTime(QTime(9, 30));
    EXPECT_EQ(endEdit()->time(), QTime(10, 0));
    endEdit()->setTime(QTime(9, 0));
    EXPECT_EQ(endEdit()->time(), QTime(10, 0));
    EXPECT_TRUE(mBus->mEvents.empty());
}

TEST_F(StatisticDialog, TypedTimeCountsWhenItIsWhole) {
    takeStretch();
    ASSERT_NO_FATAL_FAILURE(show());
    endEdit()->setFocus(Qt::TabFocusReason);
    QTest::keyClicks(endEdit(), QStringLiteral("0945")); // 09:00 on the way is before the start
    QTest::keyClick(endEdit(), Qt::Key_Return);
    EXPECT_EQ(mBus->mBounds, (Bounds{{1, QTime(9, 45)}}));
    EXPECT_TRUE(mDialog->isVisible());
}

TEST_F(StatisticDialog, ArrowKeysMoveABoundAtOnce) {
    takeStretch();
    ASSERT_NO_FATAL_FAILURE(show());
    startEdit()->setCurrentSection(QDateTimeEdit::MinuteSection);
    startEdit()->setFocus();
    startEdit()->stepUp();
    EXPECT_EQ(mBus->mBounds, (Bounds{{0, QTime(9, 31)}}));
}

TEST_F(StatisticDialog, ViewThatAnswersABoundWithAStretchEndsTheMatter) {
    takeStretch();
    mBus->mOnPayload = [this](int event) {
        if (event == 3239) {
            setRange(at(9, 40), at(10, 0));
        }
    };
    startEdit()->setTime(QTime(9, 40));
    EXPECT_EQ(numbers(), std::vector<int>{3239});
    EXPECT_EQ(mHost.mFormulas.mQuoteRequests.size(), 1u);
}

// Replay

TEST_F(StatisticDialog, EndFollowsTheReplayWhenTheUserWantsIt) {
    makeDialog(true);
    takeStretch();
    mDialog->followTime(QTime(10, 5));
    EXPECT_TRUE(mBus->mEvents.empty());
    child<GZ::CCheckBox>()->setChecked(true);
    mDialog->followTime(QTime(10, 5));
    EXPECT_EQ(mBus->mBounds, (Bounds{{1, QTime(10, 5)}}));
    forget();
    mDialog->followTime(QTime(10, 0)); // stands there already
    mDialog->followTime(QTime(9, 30)); // would leave no stretch
    EXPECT_TRUE(mBus->mEvents.empty());
    EXPECT_EQ(endEdit()->time(), QTime(10, 0));
}

TEST_F(StatisticDialog, OutsideAReplayNothingFollows) {
    takeStretch();
    mDialog->followTime(QTime(10, 5));
    EXPECT_TRUE(mBus->mEvents.empty());
}

// Events

TEST_F(StatisticDialog, TitleButtonHidesItAndTellsTheView) {
    ASSERT_NO_FATAL_FAILURE(show());
    QTest::mouseClick(mDialog->titleButton(), Qt::LeftButton);
    EXPECT_FALSE(mDialog->isVisible());
    EXPECT_EQ(mDialog->result(), 101);
    EXPECT_EQ(numbers(), std::vector<int>{3240});
    mDialog->show();
    QTest::keyClick(mDialog.get(), Qt::Key_Escape);
    EXPECT_FALSE(mDialog->isVisible());
    EXPECT_EQ(numbers(), (std::vector<int>{3240, 3240}));
}

TEST_F(StatisticDialog, HiddenByTheViewItTellsSo) {
    ASSERT_NO_FATAL_FAILURE(show());
    mDialog->hide();
    EXPECT_EQ(numbers(), std::vector<int>{3240});
}

TEST_F(StatisticDialog, QuotesAreAskedForWithTheBoundsAndTheDialogGoes) {
    takeStretch();
    ASSERT_NO_FATAL_FAILURE(show());
    QTest::mouseClick(quoteButton(), Qt::LeftButton);
    ASSERT_EQ(numbers(), (std::vector<int>{219, 3240, 5})); // the click itself goes on to the view
    EXPECT_EQ(mBus->mEvents[0].first, at(9, 30));
    EXPECT_EQ(mBus->mEvents[0].second, at(10, 0));
    EXPECT_EQ(mBus->mEvents[0].text, QString());
    EXPECT_EQ(mBus->mEvents[2].first, 602);
    EXPECT_FALSE(mDialog->isVisible());
}

TEST_F(StatisticDialog, HostMayEndTheDialogWithTheQuotes) {
    takeStretch();
    mBus->mOnPayload = [this](int event) {
        if (event == 219) {
            mDialog.reset();
        }
    };
    EXPECT_TRUE(mDialog->handleEvent(5, 602, 0, QString(), nullptr));
    EXPECT_FALSE(mDialog);
}

TEST_F(StatisticDialog, OtherClicksAndEventsGoUp) {
    mDialog->handleEvent(5, 77, 1, QStringLiteral("x"), nullptr);
    mDialog->handleEvent(67, 606, 1, QString(), nullptr);
    EXPECT_EQ(numbers(), (std::vector<int>{5, 67}));
    EXPECT_EQ(mBus->mEvents[0].first, 77);
    EXPECT_EQ(mBus->mEvents[0].text, QStringLiteral("x"));
}

TEST_F(StatisticDialog, EnterInAnEditPressesNoButton) {
    takeStretch();
    ASSERT_NO_FATAL_FAILURE(show());
    startEdit()->setFocus();
    QTest::keyClick(startEdit(), Qt::Key_Return);
    EXPECT_TRUE(mDialog->isVisible());
    EXPECT_TRUE(mBus->mEvents.empty());
}

// The ranking

class RankingFromStatistics : public StatisticFixture {
protected:
    RankingFromStatistics() { takeStretch(); }
    CRealtimeStageDialog *stage() const { return mDialog->findChild<CRealtimeStageDialog *>(); }
    /// Clicks 阶段排序; `act` works on the open ranking.
    void rank(const std::function<void()> &act) {
        ASSERT_NO_FATAL_FAILURE(show());
        QTimer::singleShot(0, mDialog.get(), act);
        QTest::mouseClick(stageButton(), Qt::LeftButton);
    }
    void click(int id) {
        for (GZ::CPushButton *button : stage()->findChildren<GZ::CPushButton *>()) {
            if (button->id() == id) {
                QTest::mouseClick(button, Qt::LeftButton);
            }
        }
    }
};

TEST_F(RankingFromStatistics, ConfirmingClosesTheStatistics) {
    rank([&] { click(702); });
    EXPECT_FALSE(mDialog->isVisible());
    ASSERT_EQ(numbers(), (std::vector<int>{3180, 3240, 5}));
    EXPECT_EQ(mBus->mEvents[0].text, QStringLiteral("%1,%2,0,0,4,阶段涨幅").arg(at(9, 30)).arg(at(10, 0)));
}

TEST_F(RankingFromStatistics, ClosingKeepsTheStatistics) {
    rank([&] { click(703); });
    EXPECT_TRUE(mDialog->isVisible());
    EXPECT_EQ(numbers(), std::vector<int>{5});
}

TEST_F(RankingFromStatistics, EscapeAndTheTitleButtonKeepTheStatistics) {
    rank([&] { QTest::keyClick(stage(), Qt::Key_Escape); });
    EXPECT_TRUE(mDialog->isVisible());
    rank([&] { QTest::mouseClick(stage()->titleButton(), Qt::LeftButton); });
    EXPECT_TRUE(mDialog->isVisible());
    EXPECT_EQ(numbers(), (std::vector<int>{5, 5}));
}

TEST_F(RankingFromStatistics, OneRankingIsKeptAndTakesTheStretchEachTime) {
    CRealtimeStageDialog *first = nullptr;
    rank([&] {
        first = stage();
        EXPECT_TRUE(first->isModal());
        click(703);
    });
    setRange(at(13, 0), at(14, 0));
    rank([&] {
        EXPECT_EQ(stage(), first);
        const auto edits = stage()->findChildren<QTimeEdit *>();
        EXPECT_EQ(edits[0]->time(), QTime(13, 0));
        EXPECT_EQ(edits[1]->time(), QTime(14, 0));
        click(703);
    });
    EXPECT_EQ(mDialog->findChildren<CRealtimeStageDialog *>().size(), 1);
}

TEST_F(RankingFromStatistics, StatisticsThatAreHiddenTakeTheRankingAlong) {
    rank([&] { mDialog->hide(); });
    EXPECT_FALSE(stage()->isVisible());
    EXPECT_EQ(numbers(), (std::vector<int>{3240, 5}));
}

TEST_F(RankingFromStatistics, ViewMayGoWhileTheRankingIsOpen) {
    rank([&] { mDialog.reset(); });
    EXPECT_FALSE(mDialog);
}

} // namespace
