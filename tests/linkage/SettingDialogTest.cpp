// The settings dialog: its controls, what they do, how it opens, closes and is put away.

#include "tests/linkage/SettingDialogFixture.h"

#include "host/toolkit/CGroupBox.h"
#include "host/toolkit/Events.h"
#include "host/windows/CMessageTipWidget.h"

#include <QHeaderView>
#include <QTimer>

using namespace TC;

namespace {

class SettingDialogTest : public tests::SettingDialogFixture {
protected:
    GZ::CGroupBox *group(const char *title) const {
        for (GZ::CGroupBox *found : mDialog->findChildren<GZ::CGroupBox *>()) {
            if (found->title() == QString::fromUtf8(title)) {
                return found;
            }
        }
        return nullptr;
    }
    QRect rectOf(const QWidget *widget) const {
        return QRect(widget->mapTo(mDialog.get(), QPoint()), widget->size());
    }
    /// The widgets of the type in the program, whoever owns them.
    static QList<CMessageTipWidget *> tips() {
        QList<CMessageTipWidget *> found;
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *tip = qobject_cast<CMessageTipWidget *>(widget)) {
                found.append(tip);
            }
        }
        return found;
    }
    void minimise() { event(5, 20); }
};

// What it is made of

TEST_F(SettingDialogTest, TitleSizeAndFirstState) {
    EXPECT_EQ(mDialog->windowTitle(), "交易详情 [分时]");
    EXPECT_EQ(mDialog->minimumSize(), QSize(560, 520));
    EXPECT_EQ(mDialog->maximumSize(), QSize(560, 520));
    EXPECT_FALSE(mDialog->isModal());
    EXPECT_FALSE(mDialog->isVisible());
    EXPECT_EQ(mDialog->showFlags(), (std::array<bool, 8>{}));
    EXPECT_TRUE(mDialog->getAccounts().empty());
    EXPECT_TRUE(mDialog->getStrategys().empty());
    EXPECT_TRUE(mDialog->getStocks().empty());
    EXPECT_TRUE(events().empty());
}

TEST_F(SettingDialogTest, ControlsHaveTheirIdsAndTexts) {
    const std::vector<std::pair<int, const char *>> boxes = {{3, "委托"},   {4, "成交"},      {5, "任务"},
                                                             {6, "买卖额"}, {7, "净买额"},    {8, "盈亏"},
                                                             {9, "配平"},   {10, "自动全选"}, {11, "自动全选"}};
    for (const auto &[id, text] : boxes) {
        ASSERT_TRUE(box(id)) << id;
        EXPECT_EQ(box(id)->text(), text) << id;
        EXPECT_FALSE(box(id)->isChecked()) << id;
    }
    const std::vector<std::pair<int, const char *>> buttons = {
        {12, "导入委托"}, {13, "导入成交"}, {21, "清空导入数据"}, {14, "全选"},
        {15, "反选"},     {16, "全选"},     {17, "反选"}};
    for (const auto &[id, text] : buttons) {
        ASSERT_TRUE(button(id)) << id;
        EXPECT_EQ(button(id)->text(), text) << id;
        EXPECT_EQ(button(id)->size(), id <= 13 || id == 21 ? QSize(90, 22) : QSize(40, 22)) << id;
    }
    EXPECT_EQ(radio(18)->text(), "全部查看");
    EXPECT_EQ(radio(19)->text(), "按策略查看");
    EXPECT_TRUE(radio(18)->isChecked());
    EXPECT_FALSE(radio(19)->isChecked());
}

TEST_F(SettingDialogTest, TablesHaveTheirColumnsAndNoHeadings) {
    const std::vector<std::vector<int>> widths = {{30, 75, 75}, {30, 150}, {35, 50, 85, 85}};
    for (int id = 0; id < 3; ++id) {
        const GZ::CStandardTable *of = table(id);
        ASSERT_TRUE(of) << id;
        ASSERT_EQ(of->columnCount(), int(widths[id].size())) << id;
        for (int column = 0; column < of->columnCount(); ++column) {
            EXPECT_EQ(of->columnWidth(column), widths[id][column]) << id << " " << column;
            EXPECT_EQ(of->horizontalHeaderItem(column)->text(), QString());
        }
        EXPECT_TRUE(of->horizontalHeader()->isHidden()) << id;
        EXPECT_FALSE(of->horizontalHeader()->stretchLastSection()) << id;
        EXPECT_EQ(of->getFlags() & 9, 0) << id;
    }
}

TEST_F(SettingDialogTest, PartsLieWhereTheyBelong) {
    show();
    EXPECT_EQ(group("资金账号")->height(), 110);
    EXPECT_EQ(group("资金账号")->width(), 230);
    EXPECT_EQ(group("交易数据")->width(), 230);
    EXPECT_FALSE(group("交易策略")->isVisible());
    const QRect stocks = rectOf(group("选择证券"));
    EXPECT_EQ(stocks.left(), rectOf(group("资金账号")).right() + 1 + 4);
    EXPECT_EQ(stocks.top(), rectOf(group("资金账号")).top());
    EXPECT_EQ(stocks.bottom(), rectOf(group("交易数据")).bottom());
    const int tall = group("交易数据")->height();
    click(radio(19));
    QCoreApplication::processEvents();
    EXPECT_TRUE(group("交易策略")->isVisible());
    EXPECT_EQ(group("交易策略")->height(), 195);
    EXPECT_EQ(group("交易数据")->height(), tall - 195 - 4) << "it takes what is left";
    EXPECT_EQ(rectOf(group("交易策略")).bottom(), stocks.bottom());
    // The rows of kinds, each 30 high and 10 off the edge.
    EXPECT_EQ(rectOf(box(6)).top() - rectOf(box(3)).top(), 30);
    EXPECT_EQ(rectOf(radio(18)).top() - rectOf(box(6)).top(), 30);
    EXPECT_EQ(rectOf(box(3)).left(), rectOf(box(6)).left());
    for (const int id : {3, 4, 5, 6, 7, 8, 9}) {
        EXPECT_GE(box(id)->width(), box(id)->sizeHint().width()) << id << ": its text is seen";
        EXPECT_TRUE(rectOf(group("交易数据")).contains(rectOf(box(id)))) << id;
    }
}

TEST_F(SettingDialogTest, MinimiseButtonStandsBesideTheClosingOne) {
    show();
    const auto *minimise = control<GZ::CPushButton>(20);
    ASSERT_TRUE(minimise);
    const int margin = mDialog->titleButtonMargin();
    EXPECT_EQ(minimise->pos(),
              QPoint(560 - margin - mDialog->titleButton()->width() - minimise->width(), margin));
    EXPECT_TRUE(minimise->isVisible());
}

TEST_F(SettingDialogTest, PollRunsEverySecondFromTheStart) {
    const auto *timer = mDialog->findChild<QTimer *>();
    ASSERT_TRUE(timer);
    EXPECT_TRUE(timer->isActive());
    EXPECT_EQ(timer->interval(), 1000);
    addAccount("a1", "");
    ASSERT_TRUE(QTest::qWaitFor([&] { return table(0)->rowCount() == 1; }));
}

// Kinds

TEST_F(SettingDialogTest, KindsAreChosenByTheirBoxes) {
    show();
    forget();
    for (int id = 3; id <= 7; ++id) {
        click(box(id));
        EXPECT_TRUE(mDialog->showFlags()[id - 3]) << id;
        EXPECT_EQ(events(), std::vector<int>{eLinkageChosen}) << id;
        EXPECT_TRUE(calls().isEmpty()) << id;
        click(box(id));
        EXPECT_EQ(mDialog->showFlags(), (std::array<bool, 8>{})) << id;
        EXPECT_EQ(events(), std::vector<int>{eLinkageChosen}) << id;
    }
}

TEST_F(SettingDialogTest, ProfitsAndBalancesAreWorkedOutWhileTheyAreWanted) {
    show();
    forget();
    click(box(8));
    EXPECT_TRUE(mDialog->showFlags()[5]);
    EXPECT_EQ(calls(), Names("CLinkageManager::startProfitCalculator"));
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
    click(box(8));
    EXPECT_FALSE(mDialog->showFlags()[5]);
    EXPECT_EQ(calls(), Names("CLinkageManager::stopProfitCalculator"));
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
    click(box(9));
    EXPECT_TRUE(mDialog->showFlags()[6]);
    EXPECT_EQ(calls(), Names("CLinkageManager::startBalanceCalculator"));
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
    click(box(9));
    EXPECT_FALSE(mDialog->showFlags()[6]);
    EXPECT_EQ(calls(), Names("CLinkageManager::stopBalanceCalculator"));
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
}

TEST_F(SettingDialogTest, OnlyOneMeansChecked) {
    EXPECT_TRUE(event(67, 3, 2));
    EXPECT_FALSE(mDialog->showFlags()[0]);
    EXPECT_TRUE(event(67, 3, 1));
    EXPECT_TRUE(mDialog->showFlags()[0]);
    EXPECT_TRUE(event(67, 8, -1));
    EXPECT_EQ(calls(), Names("CLinkageManager::stopProfitCalculator"));
}

TEST_F(SettingDialogTest, KindsOfAClosedDialogAreTakenWithoutAWord) {
    for (int id = 3; id <= 9; ++id) {
        EXPECT_TRUE(event(67, id, 1));
    }
    EXPECT_EQ(mDialog->showFlags(), (std::array<bool, 8>{true, true, true, true, true, true, true, false}));
    EXPECT_TRUE(events().empty());
}

TEST_F(SettingDialogTest, RadioButtonsTellEvenWhileItIsNotShown) {
    EXPECT_TRUE(event(93, 19, 1));
    EXPECT_TRUE(mDialog->showFlags()[7]);
    EXPECT_FALSE(group("交易策略")->isHidden());
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
    EXPECT_TRUE(event(93, 18, 1));
    EXPECT_FALSE(mDialog->showFlags()[7]);
    EXPECT_TRUE(group("交易策略")->isHidden());
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
}

TEST_F(SettingDialogTest, RadioButtonsAreOneChoice) {
    show();
    forget();
    click(radio(19));
    EXPECT_TRUE(radio(19)->isChecked());
    EXPECT_FALSE(radio(18)->isChecked());
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
    click(radio(18));
    EXPECT_FALSE(radio(19)->isChecked());
    EXPECT_FALSE(mDialog->showFlags()[7]);
}

TEST_F(SettingDialogTest, EventsOfOthersAreTakenOrPassOn) {
    EXPECT_TRUE(event(5, 9999));
    EXPECT_TRUE(event(93, 20));
    EXPECT_TRUE(event(67, 2, 1));
    EXPECT_TRUE(event(67, 12, 1));
    EXPECT_TRUE(events().empty());
    EXPECT_EQ(mDialog->showFlags(), (std::array<bool, 8>{}));
    int data = 0;
    EXPECT_TRUE(mDialog->handleEvent(4711, 1, 2, "text", &data)) << "the parent has taken it";
    ASSERT_EQ(mKeeper->mEvents.size(), 1u);
    EXPECT_EQ(mKeeper->mEvents[0].number, 4711);
    EXPECT_EQ(mKeeper->mEvents[0].data, &data);
}

// Close

TEST_F(SettingDialogTest, ClosingStopsTheProfitsTellsAndHides) {
    show();
    click(box(9));
    click(box(8));
    forget();
    QTest::mouseClick(mDialog->titleButton(), Qt::LeftButton);
    EXPECT_EQ(calls(), Names("CLinkageManager::stopProfitCalculator")) << "balances go on";
    EXPECT_EQ(events(), std::vector<int>{eLinkageClosed});
    EXPECT_FALSE(mDialog->isVisible());
    event(67, 3, 1);
    EXPECT_TRUE(events().empty()) << "it is not open any more";
    show();
    EXPECT_EQ(calls(), Names("CLinkageManager::startProfitCalculator"));
    event(67, 3, 0);
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
}

TEST_F(SettingDialogTest, ShowingWithoutProfitsStartsNothing) {
    event(67, 9, 1);
    forget();
    show();
    EXPECT_TRUE(calls().isEmpty());
}

TEST_F(SettingDialogTest, EscapeClosesAsTheButtonDoes) {
    show();
    forget();
    QTest::keyClick(mDialog.get(), Qt::Key_Escape);
    EXPECT_EQ(events(), std::vector<int>{eLinkageClosed});
    EXPECT_FALSE(mDialog->isVisible());
    show();
    mDialog->close(); // by the window manager
    EXPECT_EQ(events(), std::vector<int>{eLinkageClosed});
    EXPECT_FALSE(mDialog->isVisible());
}

// Minimise

TEST_F(SettingDialogTest, MinimisedItIsATipInItsPlaceAndComesBackByADoubleClick) {
    EXPECT_TRUE(tips().isEmpty());
    mDialog->move(120, 80);
    show();
    click(box(8));
    forget();
    QTest::mouseClick(control<GZ::CPushButton>(20), Qt::LeftButton);
    EXPECT_FALSE(mDialog->isVisible());
    ASSERT_EQ(tips().size(), 1);
    CMessageTipWidget *tip = tips().first();
    EXPECT_TRUE(tip->isVisible());
    EXPECT_EQ(tip->pos(), QPoint(120, 80));
    EXPECT_EQ(tip->size(), QSize(100, 50));
    EXPECT_EQ(tip->toolTip(), "交易详情");
    EXPECT_EQ(tip->id(), 0);
    EXPECT_TRUE(calls().isEmpty()) << "profits go on";
    EXPECT_TRUE(events().empty());
    event(67, 3, 1);
    EXPECT_TRUE(events().empty()) << "it is not open";
    QTest::mouseDClick(tip, Qt::LeftButton);
    EXPECT_TRUE(mDialog->isVisible());
    EXPECT_FALSE(tip->isVisible());
    EXPECT_EQ(calls(), Names("CLinkageManager::startProfitCalculator"));
    event(67, 3, 0);
    EXPECT_EQ(events(), std::vector<int>{eLinkageChosen});
}

TEST_F(SettingDialogTest, TipComesBackWhereItFirstWas) {
    mDialog->move(120, 80);
    show();
    minimise();
    mDialog->slotMouseDoubleClick();
    mDialog->move(300, 200);
    minimise();
    ASSERT_EQ(tips().size(), 1) << "there is one";
    EXPECT_TRUE(tips().first()->isVisible());
    EXPECT_EQ(tips().first()->pos(), QPoint(120, 80));
    mDialog->slotMouseDoubleClick();
    tips().first()->move(10, 20); // dragged
    minimise();
    EXPECT_EQ(tips().first()->pos(), QPoint(10, 20));
}

TEST_F(SettingDialogTest, ShownByOthersTheTipGoes) {
    show();
    minimise();
    mDialog->show();
    EXPECT_FALSE(tips().first()->isVisible());
}

TEST_F(SettingDialogTest, TipGoesWithTheDialog) {
    show();
    minimise();
    mDialog.reset();
    EXPECT_TRUE(tips().isEmpty());
}

// What is kept

TEST_F(SettingDialogTest, ParamHasTenNamesFromTheControls) {
    QMap<QString, bool> all;
    for (const char *name : {"task", "order", "deal", "buysellamount", "buynetamount", "profit", "balance",
                             "seebystrategy", "stockselectall", "strategyselectall"}) {
        all[name] = false;
    }
    EXPECT_EQ(mDialog->param(), all);
    const std::vector<std::pair<const char *, QAbstractButton *>> controls = {{"order", box(3)},
                                                                              {"deal", box(4)},
                                                                              {"task", box(5)},
                                                                              {"buysellamount", box(6)},
                                                                              {"buynetamount", box(7)},
                                                                              {"profit", box(8)},
                                                                              {"balance", box(9)},
                                                                              {"seebystrategy", radio(19)},
                                                                              {"stockselectall", box(10)},
                                                                              {"strategyselectall", box(11)}};
    for (const auto &[name, control] : controls) {
        control->setChecked(true); // the flags do not follow
        all[name] = true;
        EXPECT_EQ(mDialog->param(), all) << name;
    }
    EXPECT_EQ(mDialog->showFlags(), (std::array<bool, 8>{}));
}

TEST_F(SettingDialogTest, SetParamTakesFlagsAndBoxesWithoutAWord) {
    mDialog->setParam(
        {{"order", true}, {"task", true}, {"profit", true}, {"balance", true}, {"stockselectall", true}});
    EXPECT_EQ(mDialog->showFlags(), (std::array<bool, 8>{true, false, true, false, false, true, true, false}));
    for (const int id : {3, 5, 8, 9, 10}) {
        EXPECT_TRUE(box(id)->isChecked()) << id;
    }
    for (const int id : {4, 6, 7, 11}) {
        EXPECT_FALSE(box(id)->isChecked()) << id;
    }
    EXPECT_TRUE(calls().isEmpty()) << "it starts no calculator";
    EXPECT_TRUE(events().empty());
    mDialog->setParam({{"order", false}, {"unknown", true}});
    EXPECT_EQ(mDialog->showFlags(), (std::array<bool, 8>{false, false, true, false, false, true, true, false}))
        << "what the map does not hold stays";
    mDialog->setParam(
        {{"deal", true}, {"buysellamount", true}, {"buynetamount", true}, {"strategyselectall", true}});
    EXPECT_EQ(mDialog->showFlags(), (std::array<bool, 8>{false, true, true, true, true, true, true, false}));
    EXPECT_TRUE(box(11)->isChecked());
}

TEST_F(SettingDialogTest, SetParamPicksTheRadioButtonsTheOtherWayRound) {
    mDialog->setParam({{"seebystrategy", true}});
    EXPECT_TRUE(radio(18)->isChecked());
    EXPECT_FALSE(radio(19)->isChecked());
    EXPECT_FALSE(mDialog->param()["seebystrategy"]);
    mDialog->setParam({{"seebystrategy", false}});
    EXPECT_FALSE(radio(18)->isChecked());
    EXPECT_TRUE(radio(19)->isChecked());
    EXPECT_TRUE(mDialog->param()["seebystrategy"]);
    EXPECT_FALSE(mDialog->showFlags()[7]) << "what is seen stays";
    EXPECT_TRUE(group("交易策略")->isHidden());
    EXPECT_TRUE(events().empty());
}

TEST_F(SettingDialogTest, NewRowsFollowWhatSetParamHasSet) {
    mDialog->setParam({{"stockselectall", true}, {"strategyselectall", true}});
    fillService();
    mDialog->slotTimeout();
    EXPECT_EQ(mDialog->getStocks(), (Keys{"SH600000", "SZ000001"}));
    EXPECT_EQ(mDialog->getStrategys(), (Keys{"s1", "s2"}));
}

} // namespace
