#include "chartview/CCrossLineWidget.h"

#include "tests/chartview/GraphFixture.h"
#include "tests/support/Golden.h"

#include <climits>

using namespace TC;

namespace {

/// An overlay of 400x217 over a graph of 300x200 beneath a title of 17 rows. The price runs from 9 to 11 without
/// volume: price p is in row 200 - (p - 9) * 100 of the graph.
class CrossLine : public tests::GraphFixture {
protected:
    CrossLine() {
        mUi->mShowVolume = false;
        mUi->mLeftAxisWidth = mUi->mRightAxisWidth = 50;
        makeMainGraph();
        mKeeper->resize(400, 217);
        mGraph->setGeometry(50, 17, 300, 200);
        mStrip->resize(50, 200);
        mUi->resize(QRect(0, 0, 400, 217));
        mGraph->request(corvane::ERunMode::Ordinary);
        answer("REALTIME", {10.0, 10.2, 9.9, 10.1, 10.25});
        mStrip->setMaxMinMap({{key("REALTIME"), {11.0, 9.0}}});
        mUi->mLeftAxis = mStrip.get();
        mUi->mCrossShown = true;
        mUi->mCrossIndex = 2;
        mLine = std::make_unique<CCrossLineWidget>(mUi, mData, mKeeper.get());
        mLine->setFixedExtent(400, 217);
        mLine->setGraphRect(QRect(50, 17, 300, 200), 17);
        mLine->setX(120);
        mLine->setY(67); // row 50 of the graph: 10.5
    }
    ~CrossLine() override {
        mUi->mLeftAxis = nullptr;
        mLine.reset();
        mGraph.reset();
        mData->setAxisWidget(nullptr);
    }
    /// The overlay as it has to look.
    QImage picture(const QLine &horizontal, const QLine &vertical, int labelRow, const QString &left,
                   const QString &right) const {
        QImage image(mLine->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::magenta);
        QPainter painter(&image);
        painter.fillRect(image.rect(), color("ic_clr_highlight_widget_bg"));
        painter.setPen(QPen(color("ic_clr_realtime_cross_line"), 1.0, Qt::SolidLine));
        if (!horizontal.isNull()) {
            painter.drawLine(horizontal);
        }
        if (!vertical.isNull()) {
            painter.drawLine(vertical);
        }
        painter.setFont(axisFont());
        const auto label = [&](int x, const QString &text) {
            if (!text.isEmpty()) {
                const QRect box(x, labelRow, 50, 20);
                painter.fillRect(box, color("ic_clr_realtime_cross_line_bg"));
                painter.setPen(color("ic_clr_realtime_cross_line_text"));
                painter.drawText(box, 0x84, text);
            }
        };
        label(0, left);
        label(350, right);
        return image;
    }
    void showAll() {
        mKeeper->show();
        mLine->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mKeeper.get()));
        QCoreApplication::processEvents();
    }

    std::unique_ptr<CCrossLineWidget> mLine;
};

TEST_F(CrossLine, IsATransparentOverlayThatStartsHidden) {
    EXPECT_EQ(mLine->objectName(), "crossline_widget");
    EXPECT_TRUE(mLine->testAttribute(Qt::WA_TranslucentBackground));
    EXPECT_TRUE(mLine->testAttribute(Qt::WA_TransparentForMouseEvents));
    EXPECT_EQ(mLine->minimumSize(), QSize(400, 217));
    EXPECT_EQ(mLine->maximumSize(), QSize(400, 217));
    mKeeper->show();
    EXPECT_FALSE(mLine->isVisible());
}

TEST_F(CrossLine, MouseShowsTheValueOfItsRow) {
    EXPECT_EQ(painted(*mLine), picture(QLine(50, 67, 350, 67), QLine(170, 17, 170, 217), 47, "10.50", "5.00%"));
}

TEST_F(CrossLine, RowOfTenPutsTheLabelAtZero) {
    mLine->setY(10); // row -7 of the graph
    EXPECT_EQ(painted(*mLine), picture(QLine(50, 10, 350, 10), QLine(170, 17, 170, 217), 0, "11.07", "10.70%"));
}

TEST_F(CrossLine, NegativeRowHasNeitherHorizontalLineNorLabels) {
    mLine->setY(-1);
    EXPECT_EQ(painted(*mLine), picture(QLine(), QLine(170, 17, 170, 217), 0, {}, {}));
}

TEST_F(CrossLine, NothingIsShownWithoutAnIndexOrSwitchedOff) {
    const QImage empty = picture(QLine(), QLine(), 0, {}, {});
    mUi->mCrossIndex = -1;
    EXPECT_EQ(painted(*mLine), empty);
    mUi->mCrossIndex = 2;
    mUi->mCrossShown = false;
    EXPECT_EQ(painted(*mLine), empty);
}

TEST_F(CrossLine, KeyboardOnTheLastIndexSticksToTheLastValue) {
    mUi->mCursorByKey = true;
    mUi->mCrossIndex = 4; // 10.25: row 75 of the graph, 92 here
    mLine->refresh();
    const int x = mUi->getXAxisByIndex(4) + 50;
    EXPECT_EQ(painted(*mLine), picture(QLine(50, 92, 350, 92), QLine(x, 17, x, 217), 72, "10.25", "2.50%"));
}

TEST_F(CrossLine, KeyboardOnAnOlderIndexStaysWhereItWasSet) {
    mUi->mCursorByKey = true;
    mUi->mCrossIndex = 2; // 9.9
    EXPECT_EQ(painted(*mLine), picture(QLine(50, 67, 350, 67), QLine(170, 17, 170, 217), 47, "9.90", "-1.00%"));
}

TEST_F(CrossLine, MouseOnTheLastIndexKeepsItsRowAndTakesTheColumnOfTheIndex) {
    mUi->mCrossIndex = 4;
    const int x = mUi->getXAxisByIndex(4) + 50;
    EXPECT_EQ(painted(*mLine), picture(QLine(50, 67, 350, 67), QLine(x, 17, x, 217), 47, "10.50", "5.00%"));
}

TEST_F(CrossLine, VerticalLineStartsBeneathTheTitleWhenConfigured) {
    mLine->setGraphRect(QRect(50, 34, 300, 183), 34);
    mLine->setY(-1);
    EXPECT_EQ(painted(*mLine), picture(QLine(), QLine(170, 17, 170, 217), 0, {}, {}));
    mHost.mConfig.mConfig.mCrossLineBelowTitle = true;
    EXPECT_EQ(painted(*mLine), picture(QLine(), QLine(170, 34, 170, 217), 0, {}, {}));
    mHost.mConfig.mHasConfig = false;
    EXPECT_EQ(painted(*mLine), picture(QLine(), QLine(170, 17, 170, 217), 0, {}, {}));
}

TEST_F(CrossLine, RowsInTheVolumeHaveNoPercentage) {
    answer("REALTIMEVOL", {500.0, 500.0, 500.0, 500.0, 500.0}, 2);
    mUi->mShowVolume = true; // 133 rows of price, 67 of volume
    mStrip->setMaxMinMap({{key("REALTIME"), {11.0, 9.0}}, {key("REALTIMEVOL"), {670.0, 0.0}}});
    mLine->setY(17 + 133 + 17); // 50 rows above the bottom, at 10 a row
    EXPECT_EQ(painted(*mLine), picture(QLine(50, 167, 350, 167), QLine(170, 17, 170, 217), 147, "500.00", {}));
}

TEST_F(CrossLine, PastDayGoesByItsOwnClose) {
    mUi->mGetTradeDateFunc = [] { return tests::kDay - 86400; };
    mHost.mStocks.mCloses[qMakePair(QStringLiteral("SH600000"), tests::kDay - 86400)] = 8.4;
    EXPECT_EQ(painted(*mLine),
              picture(QLine(50, 67, 350, 67), QLine(170, 17, 170, 217), 47, "10.50", "25.00%"));
}

TEST_F(CrossLine, ZeroBaseMakesThePercentageInvalid) {
    mDetail->mLastClose = 0.0;
    EXPECT_EQ(painted(*mLine),
              picture(QLine(50, 67, 350, 67), QLine(170, 17, 170, 217), 47, "10.50", QStringLiteral("非法值")));
}

TEST_F(CrossLine, DecimalsAreThoseOfThePriceStep) {
    mDetail->mPriceTick = 0.001;
    EXPECT_EQ(painted(*mLine),
              picture(QLine(50, 67, 350, 67), QLine(170, 17, 170, 217), 47, "10.500", "5.00%"));
}

TEST_F(CrossLine, MovingRepaintsOnlyTheOldAndTheNewLinesAndBoxes) {
    showAll();
    tests::PaintWatch overlay(mLine.get());
    tests::PaintWatch graph(mGraph.get());
    mLine->setX(200);
    mLine->setY(117);
    QCoreApplication::processEvents();
    ASSERT_FALSE(overlay.mRegions.isEmpty());
    QRegion allowed;
    for (const int row : {67, 117}) {
        allowed |= QRect(49, row - 1, 303, 3);
        allowed |= QRegion(0, row - 20, 50, 20) | QRegion(350, row - 20, 50, 20);
    }
    for (const int column : {170, 250}) {
        allowed |= QRect(column - 1, 16, 3, 203);
    }
    for (const QRegion &region : overlay.mRegions) {
        EXPECT_TRUE(region.subtracted(allowed).isEmpty());
    }
    ASSERT_FALSE(graph.mRegions.isEmpty()) << "it shows through";
    for (const QRegion &region : graph.mRegions) {
        EXPECT_TRUE(region.translated(50, 17).subtracted(allowed).isEmpty());
    }
}

TEST_F(CrossLine, StandingStillRepaintsNothing) {
    showAll();
    tests::PaintWatch overlay(mLine.get());
    mLine->setX(120);
    mLine->setY(67);
    mLine->setGraphRect(QRect(50, 17, 300, 200), 17);
    mLine->refresh();
    QCoreApplication::processEvents();
    EXPECT_TRUE(overlay.mRegions.isEmpty());
}

TEST_F(CrossLine, AnyWalkLeavesThePixelsOfAWholeRepaint) {
    showAll();
    for (const int step : {0, 1, 2, 3, 4, 5}) {
        mUi->mCursorByKey = step % 2;
        mUi->mCrossIndex = step - 1;
        mUi->mCrossShown = step != 3;
        mLine->setX(20 + 50 * step);
        mLine->setY(190 - 40 * step);
        QCoreApplication::processEvents();
        const QImage walked = tests::onScreen(*mKeeper);
        mKeeper->update();
        QCoreApplication::processEvents();
        EXPECT_EQ(walked, tests::onScreen(*mKeeper)) << step;
    }
}

TEST_F(CrossLine, SwitchedOffInTheViewModelGoesWithTheNextRefresh) {
    showAll();
    tests::PaintWatch overlay(mLine.get());
    mUi->mCrossShown = false;
    mLine->refresh();
    QCoreApplication::processEvents();
    ASSERT_EQ(overlay.mRegions.size(), 1);
    EXPECT_TRUE(overlay.mRegions[0].contains(QPoint(170, 100)));
}

TEST_F(CrossLine, AnotherGraphsDataIsReadOnceItIsSet) {
    const auto other = makeData(EIndexDisplayType::Main, {"REALTIME"});
    mLine->setData(other); // has no axis strip: 0.0
    EXPECT_EQ(painted(*mLine),
              picture(QLine(50, 67, 350, 67), QLine(170, 17, 170, 217), 47, "0.00", "-100.00%"));
    mLine->setData(nullptr);
    EXPECT_EQ(painted(*mLine), picture(QLine(), QLine(), 0, {}, {}));
}

TEST_F(CrossLine, AnyGeometryDoesNoHarm) {
    for (const int far : {INT_MIN, -1, 0, INT_MAX}) {
        for (const bool byKey : {false, true}) {
            mUi->mCursorByKey = byKey;
            mLine->setGraphRect(QRect(0, 0, far / 2, far / 2), far);
            mLine->setX(far);
            mLine->setY(far);
            EXPECT_EQ(painted(*mLine).size(), QSize(400, 217));
        }
    }
    mLine->setFixedExtent(0, 0);
    mLine->setY(5);
}

} // namespace
