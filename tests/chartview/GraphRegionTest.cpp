// What a region of a graph leads to, and instruments that the smart keyboard hands over.

#include "host/records/CStockInfo.h"
#include "tests/chartview/GraphInputFixture.h"

using namespace TC;
using tests::Event;

namespace {

class GraphRegion : public tests::GraphInputFixture {
protected:
    /// The chart with region lines at two columns.
    QImage withLines(int left, int right) {
        QImage image = chart();
        QPainter painter(&image);
        QPen pen(QColor(234, 153, 49, 255), 1, Qt::CustomDashLine);
        pen.setDashPattern({9.0, 4.0});
        painter.setPen(pen);
        painter.drawLine(left, 0, left, mGraph->height());
        painter.drawLine(right, 0, right, mGraph->height());
        return image;
    }
    QStringList ranges() const { return mHost.mLog.of("CReplayManager::setThousandRange"); }
    void pick(const char *key, ESmartKeyType type, bool withAxis, const char *code = "") {
        mGraph->overlayPickedStock(CStockInfo(QString::fromLatin1(key), QString::fromLatin1(code)), type,
                                   withAxis);
    }
};

// Statistics

TEST_F(GraphRegion, StatisticIsAskedForWithTheGraphAndTheText) {
    showMain();
    for (const bool checked : {false, true}) {
        mGraph->slotStatistic(checked, 12, "66,1710466200,1710473400");
        EXPECT_EQ(takeEvents(), (Events{{191, 12, 7, "66,1710466200,1710473400", nullptr}}));
    }
}

TEST_F(GraphRegion, LinesOfTheRegionStayOnTheScreenForTheStatistic) {
    showMain();
    fillMain();
    crossLine(true);
    drag({100, 50}, {200, 60}, Qt::RightButton);
    leave();
    EXPECT_EQ(paintedGraph(), chart());
    EXPECT_EQ(paintsOf([this] { mGraph->slotStatistic(false, 50, ""); }), 1);
    EXPECT_EQ(paintedGraph(), withLines(100, 200));
    mGraph->setRegionLineHide();
    EXPECT_EQ(paintedGraph(), chart());
}

TEST_F(GraphRegion, LinesMoveToTheColumnsOfTwoIndices) {
    showMain();
    mGraph->slotStatistic(false, 0, "");
    EXPECT_EQ(paintsOf([this] { mGraph->setRegionLine(10, 240); }), 1);
    EXPECT_EQ(regionLeft(), 21);
    EXPECT_EQ(regionRight(), 481);
    mGraph->setRegionLine(-5, 100000);
    EXPECT_EQ(regionLeft(), 1);
    EXPECT_EQ(regionRight(), 481);
}

TEST_F(GraphRegion, ReadyLinesAreHiddenUntilTheStatisticShowsThem) {
    showMain();
    fillMain();
    mGraph->setRegionLine(50, 100);
    EXPECT_EQ(paintedGraph(), chart());
    mGraph->slotStatistic(false, 50, "");
    EXPECT_NE(paintedGraph(), chart());
}

TEST_F(GraphRegion, LinesStayOnTheirMinutesWhenTheAxisGetsAnotherWidth) {
    showMain();
    fillMain();
    crossLine(true);
    drag({100, 50}, {200, 60}, Qt::RightButton); // the indices 50 and 100
    leave();
    mGraph->slotStatistic(false, 50, "");
    ASSERT_NO_FATAL_FAILURE(showGraph(964, 205)); // 962 / 240 pixels a minute
    rescale();
    EXPECT_EQ(paintedGraph(), withLines(201, 401));
    ASSERT_NO_FATAL_FAILURE(showGraph(242, 205)); // one pixel a minute
    rescale();
    EXPECT_EQ(paintedGraph(), withLines(51, 101));
    ASSERT_NO_FATAL_FAILURE(showGraph(482, 205));
    rescale();
    EXPECT_EQ(paintedGraph(), withLines(100, 200)) << "where they were drawn";
}

TEST_F(GraphRegion, LinesAtTwoIndicesStayOnTheirMinutesToo) {
    showMain();
    fillMain();
    mGraph->slotStatistic(false, 0, "");
    mGraph->setRegionLine(10, 240);
    EXPECT_EQ(paintedGraph(), withLines(21, 481));
    ASSERT_NO_FATAL_FAILURE(showGraph(242, 205));
    rescale();
    EXPECT_EQ(paintedGraph(), withLines(11, 241));
}

TEST_F(GraphRegion, LinesGoWithTheirInstrument) {
    showMain();
    fillMain();
    mGraph->setStock("SH600000", false);
    mGraph->slotStatistic(false, 0, "");
    mGraph->setRegionLine(10, 240);
    mGraph->setStock("SH600000", false);
    EXPECT_EQ(paintedGraph(), withLines(21, 481)) << "the same instrument";
    EXPECT_EQ(paintsOf([this] { mGraph->setStock("SZ000001", false); }), 1);
    EXPECT_EQ(paintedGraph(), chart());
}

// Replay

TEST_F(GraphRegion, ReplayRangeOutsideReplayHasTheKey) {
    showMain();
    mGraph->slotSetReplayTimeRegin(false, 3, "66,1710466200,1710473400,SH600000");
    EXPECT_EQ(ranges(), QStringList{"CReplayManager::setThousandRange 1710466200000 1710473400000"});
    EXPECT_EQ(takeEvents(), (Events{{3268, 1710466200, 1710473400, "SH600000", nullptr}}));
}

TEST_F(GraphRegion, ReplayRangeInReplayHasNoKey) {
    showMain();
    mGraph->slotSetReplayTimeRegin(true, 3, "66,1710466200,1710473400");
    EXPECT_EQ(ranges(), QStringList{"CReplayManager::setThousandRange 1710466200000 1710473400000"});
    EXPECT_EQ(takeEvents(), (Events{{3268, 1710466200, 1710473400, "", nullptr}}));
}

TEST_F(GraphRegion, ReplayIsTheHostsBeforeItHearsOfTheRange) {
    showMain();
    int rangesAtTheEvent = -1;
    mKeeper->mOnEvent = [&](int) { rangesAtTheEvent = ranges().size(); };
    mGraph->slotSetReplayTimeRegin(false, 0, "0,1,2");
    EXPECT_EQ(rangesAtTheEvent, 1);
}

TEST_F(GraphRegion, UnreadableReplayTextIsTheRangeZero) {
    showMain();
    for (const char *text : {"", "5", "x,y,z", ",,"}) {
        mHost.mLog.clear();
        mGraph->slotSetReplayTimeRegin(false, 0, QString::fromLatin1(text));
        EXPECT_EQ(ranges(), QStringList{"CReplayManager::setThousandRange 0 0"});
        EXPECT_EQ(takeEvents(), (Events{{3268, 0, 0, "", nullptr}}));
    }
}

// Overlays

TEST_F(GraphRegion, PickedInstrumentIsOverlaidWithAndWithoutAxis) {
    showMain();
    for (const ESmartKeyType type : {ESmartKeyType::Stock, ESmartKeyType::Index}) {
        pick("SZ000001", type, true);
        EXPECT_EQ(takeEvents(), (Events{{209, 0, 1, "SZ000001", nullptr}}));
        pick("SZ000001", type, false);
        EXPECT_EQ(takeEvents(), (Events{{209, 0, 11, "SZ000001", nullptr}}));
    }
}

TEST_F(GraphRegion, TwoShortcutsStandForAnIndex) {
    showMain();
    pick("", ESmartKeyType::Shortcut, true, "03");
    EXPECT_EQ(takeEvents(), (Events{{209, 0, 1, "SH000001", nullptr}}));
    pick("", ESmartKeyType::Shortcut, false, "04");
    EXPECT_EQ(takeEvents(), (Events{{209, 0, 11, "SZ399001", nullptr}}));
}

TEST_F(GraphRegion, AnyOtherShortcutIsDeliveredWithAnEmptyCode) {
    showMain();
    for (const char *shortcut : {"", "05", "3", "003", " 03"}) {
        pick("SZ000001", ESmartKeyType::Shortcut, true, shortcut);
        EXPECT_EQ(takeEvents(), (Events{{209, 0, 1, "", nullptr}})) << shortcut;
    }
}

TEST_F(GraphRegion, OtherKindsOfKeysAreNoInstruments) {
    showMain();
    for (const ESmartKeyType type :
         {ESmartKeyType::Function, ESmartKeyType::Formula, ESmartKeyType(5), ESmartKeyType(-1)}) {
        pick("SZ000001", type, true, "03");
        pick("SZ000001", type, false, "03");
    }
    EXPECT_TRUE(takeEvents().empty());
}

TEST_F(GraphRegion, MainInstrumentIsNotOverlaid) {
    showMain();
    pick("SH600000", ESmartKeyType::Stock, true);
    pick("sh600000", ESmartKeyType::Stock, false);
    pick("SH600000", ESmartKeyType::Shortcut, true, "03");
    EXPECT_TRUE(takeEvents().empty());
}

TEST_F(GraphRegion, OverlayOfTheSameKindIsNotOverlaidAgain) {
    mHost.mStocks.add("SZ", "000001", 5.0);
    mHost.mStocks.add("SZ", "000002", 5.0);
    mUi->addStock("SZ000001", "", true);
    mUi->addStock("SZ000002", "", false);
    showMain();
    pick("SZ000001", ESmartKeyType::Stock, true);
    pick("SZ000002", ESmartKeyType::Stock, false);
    EXPECT_TRUE(takeEvents().empty());
}

TEST_F(GraphRegion, OverlayThatIsThereInBothWaysIsNotOverlaidAgain) {
    mHost.mStocks.add("SZ", "000001", 5.0);
    mUi->addStock("SZ000001", "", true);
    mUi->addStock("SZ000001", "", false);
    showMain();
    pick("SZ000001", ESmartKeyType::Stock, true);
    pick("SZ000001", ESmartKeyType::Stock, false);
    EXPECT_TRUE(takeEvents().empty());
}

TEST_F(GraphRegion, PartOfTheKeyOfAnOverlayIsThatOverlay) {
    mHost.mStocks.add("SZ", "000001", 5.0);
    mUi->addStock("SZ000001", "", true);
    showMain();
    pick("000001", ESmartKeyType::Stock, true);
    EXPECT_TRUE(takeEvents().empty());
}

TEST_F(GraphRegion, ShortcutWithoutAKeyIsNoOverlayYet) {
    mHost.mStocks.add("SZ", "000001", 5.0);
    mHost.mStocks.add("SZ", "000002", 5.0);
    mUi->addStock("SZ000001", "", true);
    mUi->addStock("SZ000002", "", false);
    showMain();
    pick("", ESmartKeyType::Shortcut, true, "03");
    EXPECT_EQ(takeEvents(), (Events{{209, 0, 1, "SH000001", nullptr}}));
    pick("", ESmartKeyType::Shortcut, false, "04");
    EXPECT_EQ(takeEvents(), (Events{{209, 0, 11, "SZ399001", nullptr}}));
}

TEST_F(GraphRegion, ShortcutOfAnOverlayIsThatOverlay) {
    mHost.mStocks.add("SH", "000001", 3000.0);
    mUi->addStock("SH000001", "", true);
    showMain();
    pick("SH000001", ESmartKeyType::Shortcut, true, "03");
    EXPECT_TRUE(takeEvents().empty());
    pick("SH000001", ESmartKeyType::Shortcut, false, "03");
    EXPECT_EQ(takeEvents(), (Events{{209, 0, 11, "SH000001", nullptr}}));
}

TEST_F(GraphRegion, OverlayOfTheOtherKindMayBePicked) {
    mHost.mStocks.add("SZ", "000001", 5.0);
    mHost.mStocks.add("SZ", "000002", 5.0);
    mUi->addStock("SZ000001", "", true);
    mUi->addStock("SZ000002", "", false);
    showMain();
    pick("SZ000001", ESmartKeyType::Stock, false);
    EXPECT_EQ(takeEvents(), (Events{{209, 0, 11, "SZ000001", nullptr}}));
    pick("SZ000002", ESmartKeyType::Stock, true);
    EXPECT_EQ(takeEvents(), (Events{{209, 0, 1, "SZ000002", nullptr}}));
}

} // namespace
