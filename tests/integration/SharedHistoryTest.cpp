#include "tests/integration/TerminalFixture.h"

#include "containers/CRealtimeMainWidget.h"
#include "containers/CRealtimeWidget.h"
#include "terminal/formula/HistoryCache.h"
#include "viewmodel/CRealtimeUiParam.h"

using namespace terminal;

namespace {

/// What views share of the running day never shows where another day is asked for.
class SharedHistory : public tests::TerminalFixture {
protected:
    const QDate mYesterday{2026, 11, 19};
    const QString mKey = QStringLiteral("SH600000");

    void SetUp() override {
        TerminalFixture::SetUp();
        ASSERT_TRUE(view().show(mKey, QDate()));
        ASSERT_TRUE(waitUntilComplete());
        ASSERT_GT(mServices->historyCache().size(), 0) << "the running day is shared";
    }
    QDate dateOfPoints() {
        const auto series =
            view().data()->getData().value(TC::CFormulaKey(mKey, view().uiParam()->getBasicFormula()));
        return series.result.mTimes.empty() ? QDate() : dateAt(series.result.mTimes.back().first);
    }
};

} // namespace

TEST_F(SharedHistory, AViewOfTheSameDayShowsAtOnce) {
    view().reload();
    EXPECT_EQ(dateOfPoints(), mToday) << "before the event loop has turned";
    EXPECT_TRUE(waitUntilComplete());
}

TEST_F(SharedHistory, AViewOfAPastDayWaitsForItsOwn) {
    ASSERT_TRUE(view().show(mKey, mYesterday));
    EXPECT_EQ(dateOfPoints(), QDate()) << "nothing of the running day";
    EXPECT_FALSE(view().isComplete());
    ASSERT_TRUE(waitUntilComplete());
    EXPECT_EQ(dateOfPoints(), mYesterday);
    EXPECT_EQ(view().pointCount(), 241);
}

TEST_F(SharedHistory, ThePastDayDoesNotComeBackInTheRunningOne) {
    ASSERT_TRUE(view().show(mKey, mYesterday));
    ASSERT_TRUE(waitUntilComplete());
    ASSERT_TRUE(view().show(mKey, QDate()));
    EXPECT_NE(dateOfPoints(), mYesterday);
    ASSERT_TRUE(waitUntilComplete());
    EXPECT_EQ(dateOfPoints(), mToday);
}

TEST_F(SharedHistory, SideBySideEveryDayShowsItsOwn) {
    view().main()->scaleView(false);
    ASSERT_TRUE(waitUntilComplete());
    const QList<TC::CRealtimeGraphWidget *> graphs = view().main()->getRealTimeWidget()->getGraphWidgets();
    ASSERT_EQ(graphs.size(), 2);
    view().reload();
    EXPECT_TRUE(graphs[1]->getData()->getData().isEmpty()) << "nothing of the running day in the day before";
    ASSERT_TRUE(waitUntilComplete());
    for (int i = 0; i < graphs.size(); ++i) {
        const auto series =
            graphs[i]->getData()->getData().value(TC::CFormulaKey(mKey, view().uiParam()->getBasicFormula()));
        ASSERT_FALSE(series.result.mTimes.empty());
        EXPECT_EQ(dateAt(series.result.mTimes.back().first), i == 0 ? mToday : mYesterday) << i;
    }
}

TEST_F(SharedHistory, AReplayLeavesNoneOfItsPointsBehind) {
    const int live = view().pointCount();
    mServices->replay().setPaused(true);
    mServices->replay().setThousandRange(timeOf(mToday, 571), timeOf(mToday, 600));
    view().setReplay(true);
    EXPECT_EQ(dateOfPoints(), QDate()) << "nor does it begin with those of the market";
    ASSERT_TRUE(QTest::qWaitFor([this] { return view().pointCount() == 2; }, 10000)) << view().pointCount();
    view().setReplay(false);
    EXPECT_NE(view().pointCount(), 2) << "before the event loop has turned";
    ASSERT_TRUE(QTest::qWaitFor([&] { return view().pointCount() == live; }, 10000)) << view().pointCount();
}
