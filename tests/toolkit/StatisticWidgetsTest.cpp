// The combo box, the button group, the button of the medium size and the list of transactions.

#include "host/toolkit/CComboBox.h"
#include "host/toolkit/CMediumNormalButton.h"
#include "host/toolkit/CPushButtonGroup.h"
#include "host/toolkit/CSmallNormalButton.h"
#include "host/windows/CWatchPlateWidget.h"
#include "tests/chartview/ChartFixture.h"

#include <QAbstractScrollArea>
#include <QScrollBar>
#include <QtTest>

#include <limits>

namespace {

class StatisticWidgets : public tests::ChartFixture {
protected:
    StatisticWidgets() { mKeeper->resize(400, 300); }
    void show() {
        mKeeper->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mKeeper.get()));
    }
};

TEST_F(StatisticWidgets, EntryPickedByTheUserIsDelivered) {
    auto *combo = new GZ::CComboBox(607, mKeeper.get());
    combo->addItems({QStringLiteral("a"), QStringLiteral("b")});
    combo->setCurrentIndex(0);
    ASSERT_NO_FATAL_FAILURE(show());
    EXPECT_TRUE(mKeeper->mEvents.empty()); // by the program: nothing
    combo->setFocus();
    QTest::keyClick(combo, Qt::Key_Down);
    ASSERT_EQ(mKeeper->mEvents.size(), 1u);
    const tests::Event event = mKeeper->mEvents[0];
    EXPECT_EQ(event.number, 71);
    EXPECT_EQ(event.first, 607);
    EXPECT_EQ(event.second, 1);
    EXPECT_EQ(event.text, QStringLiteral("b"));
}

class ButtonGroup : public StatisticWidgets {
protected:
    ButtonGroup()
        : mGroup(new GZ::CPushButtonGroup(QStringLiteral("clr_pushbutton_group_border_new"), mKeeper.get())) {
        mGroup->setBackgroundKeys(QStringLiteral("tc_clr_conciseStyle_depth_bottom_group_btn_"));
        mGroup->addButton(604, QStringLiteral("时段统计"), 60);
        mGroup->addButton(605, QStringLiteral("追踪统计"), 60);
        mGroup->setFixedSize(120, 24);
    }
    GZ::CPushButtonGroup *mGroup;
};

TEST_F(ButtonGroup, OneIsChecked) {
    EXPECT_EQ(mGroup->checkedId(), -1);
    mGroup->setCheckedId(604);
    EXPECT_EQ(mGroup->checkedId(), 604);
    mGroup->setCheckedId(605);
    EXPECT_EQ(mGroup->checkedId(), 605);
    mGroup->setCheckedId(1);
    EXPECT_EQ(mGroup->checkedId(), 605);
    EXPECT_TRUE(mKeeper->mEvents.empty());
}

TEST_F(ButtonGroup, ClickDeliversTheId) {
    mGroup->setCheckedId(604);
    ASSERT_NO_FATAL_FAILURE(show());
    QTest::mouseClick(mGroup->childAt(119, 12), Qt::LeftButton); // the frame lets the mouse through
    QTest::mouseClick(mGroup->childAt(119, 12), Qt::LeftButton);
    ASSERT_EQ(mKeeper->of(5).size(), 2u);
    EXPECT_EQ(mKeeper->of(5)[0].first, 605);
    EXPECT_EQ(mKeeper->of(5)[0].second, 1);
    EXPECT_EQ(mKeeper->of(5)[1].second, 1); // it stays checked
    EXPECT_EQ(mGroup->checkedId(), 605);
}

TEST_F(ButtonGroup, CheckedButtonAndFrameHaveTheirColours) {
    mGroup->setCheckedId(605);
    ASSERT_NO_FATAL_FAILURE(show());
    const QImage image = mGroup->grab().toImage();
    EXPECT_EQ(image.pixelColor(90, 2), color("tc_clr_conciseStyle_depth_bottom_group_btn_press"));
    EXPECT_EQ(image.pixelColor(30, 2), color("tc_clr_conciseStyle_depth_bottom_group_btn_nomal"));
    for (const QPoint at : {QPoint(0, 12), QPoint(119, 12), QPoint(60, 12), QPoint(30, 0), QPoint(30, 23)}) {
        EXPECT_EQ(image.pixelColor(at), color("clr_pushbutton_group_border_new"));
    }
}

TEST_F(StatisticWidgets, MediumButtonDeliversItsId) {
    auto *button = new GZ::CMediumNormalButton(QStringLiteral("时段行情"), 602, mKeeper.get());
    button->setFixedSize(65, 21);
    ASSERT_NO_FATAL_FAILURE(show());
    QTest::mouseClick(button, Qt::LeftButton);
    ASSERT_EQ(mKeeper->of(5).size(), 1u);
    EXPECT_EQ(mKeeper->of(5)[0].first, 602);
    EXPECT_EQ(button->text(), QStringLiteral("时段行情"));
}

class WatchPlate : public StatisticWidgets {
protected:
    WatchPlate() : mPlate(new TC::CWatchPlateWidget(mKeeper.get())) {
        mPlate->setFixedSize(310, 250);
        mPlate->setStock(QStringLiteral("SH600000"));
    }
    static std::shared_ptr<quoter::QuoterBase> record(int second, double price, double volume, double amount) {
        auto made = std::make_shared<quoter::QuoterTransaction>();
        made->mTime = QDateTime(QDate(2024, 3, 15), QTime(9, 30)).addSecs(second).toMSecsSinceEpoch();
        made->mPrice = price;
        made->mVolume = volume;
        made->mAmount = amount;
        return made;
    }
    /// The colours that a row's price is written in, beside its ground.
    bool hasColor(int row, const char *key) const {
        const QImage image = mPlate->grab().toImage().copy(77, 22 + row * 20, 71, 20);
        for (int x = 0; x < image.width(); ++x) {
            for (int y = 0; y < image.height(); ++y) {
                if (image.pixelColor(x, y) == color(key)) {
                    return true;
                }
            }
        }
        return false;
    }
    QScrollBar *bar() const { return mPlate->findChild<QAbstractScrollArea *>()->verticalScrollBar(); }

    TC::CWatchPlateWidget *mPlate;
};

TEST_F(WatchPlate, RowTellsTimePriceVolumeAndAmount) {
    mPlate->setRegionTransaction({record(7, 10.1, 1200, 12120), record(8, 10.0, 25000, 0)});
    EXPECT_EQ(mPlate->rowTexts(0), (QStringList{QStringLiteral("09:30:07"), QStringLiteral("10.10"),
                                                QStringLiteral("1200"), QStringLiteral("1.21万")}));
    EXPECT_EQ(mPlate->rowTexts(1), (QStringList{QStringLiteral("09:30:08"), QStringLiteral("10.00"),
                                                QStringLiteral("2.50万"), QStringLiteral("--")}));
    EXPECT_EQ(mPlate->rowTexts(2), QStringList());
    EXPECT_EQ(mPlate->rowTexts(-1), QStringList());
}

TEST_F(WatchPlate, PriceHasTheDecimalsOfTheInstrument) {
    mHost.mStocks.add("SH", "510300", 3.5, 0.001);
    mPlate->setStock(QStringLiteral("SH510300"));
    mPlate->setRegionTransaction({record(0, 3.5, 100, 0)});
    EXPECT_EQ(mPlate->rowTexts(0)[1], QStringLiteral("3.500"));
}

TEST_F(WatchPlate, RecordsOfOtherKindsAndNullOnes) {
    auto plain = std::make_shared<quoter::QuoterBase>();
    plain->mPrice = 10.0;
    auto broken =
        record(0, std::numeric_limits<double>::quiet_NaN(), -5, std::numeric_limits<double>::infinity());
    mPlate->setRegionTransaction({nullptr, plain, broken});
    ASSERT_EQ(mPlate->rowCount(), 2);
    EXPECT_EQ(mPlate->rowTexts(0).mid(1),
              (QStringList{QStringLiteral("10.00"), QStringLiteral("--"), QStringLiteral("--")}));
    EXPECT_EQ(mPlate->rowTexts(1).mid(1),
              (QStringList{QStringLiteral("--"), QStringLiteral("--"), QStringLiteral("--")}));
}

TEST_F(WatchPlate, OtherInstrumentBeginsEmpty) {
    mPlate->setRegionTransaction({record(0, 10.0, 100, 0)});
    mPlate->setStock(QStringLiteral("SZ000001"));
    EXPECT_EQ(mPlate->stock(), QStringLiteral("SZ000001"));
    EXPECT_EQ(mPlate->rowCount(), 0);
}

TEST_F(WatchPlate, KeptRegionHasBothItsEnds) {
    mPlate->setRegionTransaction(
        {record(0, 10.0, 1, 0), record(1, 10.0, 1, 0), record(2, 10.0, 1, 0), record(3, 10.0, 1, 0)});
    const qint64 start = QDateTime(QDate(2024, 3, 15), QTime(9, 30, 1)).toMSecsSinceEpoch();
    mPlate->keepRegion(start, start + 1000);
    ASSERT_EQ(mPlate->rowCount(), 2);
    EXPECT_EQ(mPlate->rowTexts(0)[0], QStringLiteral("09:30:01"));
    EXPECT_EQ(mPlate->rowTexts(1)[0], QStringLiteral("09:30:02"));
}

TEST_F(WatchPlate, PricesAreColouredAgainstTheLastClose) {
    ASSERT_NO_FATAL_FAILURE(show());
    mPlate->setRegionTransaction({record(0, 10.01, 1, 0), record(1, 9.99, 1, 0), record(2, 10.0, 1, 0)});
    EXPECT_TRUE(hasColor(0, "ic_clr_index_default_rise"));
    EXPECT_TRUE(hasColor(1, "ic_clr_index_default_fall"));
    EXPECT_TRUE(hasColor(2, "ic_clr_index_default_flat"));
}

TEST_F(WatchPlate, EmptyPlateSaysSo) {
    ASSERT_NO_FATAL_FAILURE(show());
    const QImage empty = mPlate->grab().toImage();
    mPlate->setRegionTransaction({record(0, 10.0, 1, 0)});
    const QImage filled = mPlate->grab().toImage();
    const QRect middle(60, 110, 190, 60);
    EXPECT_NE(empty.copy(middle), filled.copy(middle));
    EXPECT_EQ(filled.copy(middle).pixelColor(90, 30), color("clr_table_row_even"));
}

TEST_F(WatchPlate, ManyRowsScrollAndTheEndStaysInSight) {
    ASSERT_NO_FATAL_FAILURE(show());
    TC::CWatchPlateWidget::Records many(100000, record(0, 10.0, 1, 0));
    mPlate->setRegionTransaction(many);
    EXPECT_EQ(bar()->value(), 0);
    EXPECT_EQ(bar()->maximum(), 100000 - 11); // (250 - 22) / 20 whole rows
    bar()->setValue(bar()->maximum());
    many.push_back(record(9, 10.5, 1, 0));
    mPlate->setRegionTransaction(many);
    EXPECT_EQ(bar()->value(), bar()->maximum());
    EXPECT_TRUE(hasColor(10, "ic_clr_index_default_rise"));
}

} // namespace
