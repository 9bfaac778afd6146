// The choice of the user's trades, from the settings dialog to the view parameters and onto the chart.

#include "tests/containers/MainWidgetFixture.h"

#include "host/toolkit/CCheckBox.h"
#include "host/toolkit/CStandardTable.h"
#include "linkage/CRealtimeLinkageSettingDialog.h"

#include <boost/make_shared.hpp>

using namespace TC;

namespace {

class MainWidgetLinkage : public tests::MainWidgetFixture {
protected:
    using Keys = std::set<std::string>;

    ~MainWidgetLinkage() override { mMain.reset(); }

    CRealtimeLinkageSettingDialog *dialog() const {
        return mMain->findChild<CRealtimeLinkageSettingDialog *>();
    }
    void addTrades() {
        mHost.mLinkage.mEnabled = true;
        auto account = boost::make_shared<kvservice::CAccountInfo>();
        account->mAccountId = "a1";
        mHost.mLinkage.mAccounts = {account};
        mHost.mLinkage.mStrategys = {"s1"};
        mHost.mLinkage.mStocks = {"SH600000"};
        auto deal = boost::make_shared<kvservice::CDealDetail>();
        deal->mDealKey = "d1";
        deal->mAccount = "a1";
        deal->mDirection = 48;
        deal->mPrice = 10.2;
        deal->mVolume = 100;
        deal->mAmount = 1020.0;
        deal->mTime = "10:00:00";
        mHost.mLinkage.mDeals["SH600000"]["a1"]["d1"] = deal;
    }
    GZ::CCheckBox *box(int id) const {
        for (GZ::CCheckBox *found : dialog()->findChildren<GZ::CCheckBox *>()) {
            if (found->id() == id && found->objectName().isEmpty()) {
                return found;
            }
        }
        return nullptr;
    }
    GZ::CCheckBox *rowBox(int tableId, int row) const {
        for (GZ::CStandardTable *table : dialog()->findChildren<GZ::CStandardTable *>()) {
            if (table->getID() == tableId) {
                return static_cast<GZ::CCheckBox *>(table->widgetAt(row, 0));
            }
        }
        return nullptr;
    }
    static void click(QWidget *on) {
        QTest::mouseClick(on, Qt::LeftButton, Qt::NoModifier, QPoint(6, on->height() / 2));
    }
    /// Whether the deal stands on the screen: its dot is filled with its colour.
    bool dealIsSeen() {
        settle();
        const QImage seen = tests::onScreen(*mKeeper);
        const TC::CRealtimeGraphWidget *on = graph(pane());
        const QPoint corner = on->mapTo(mKeeper.get(), QPoint());
        int red = 0;
        for (int y = 0; y < on->height(); ++y) {
            for (int x = 0; x < on->width(); ++x) {
                const QColor at = seen.pixelColor(corner + QPoint(x, y));
                red += at.red() > 180 && at.green() < 40 && at.blue() < 40;
            }
        }
        return red > 15;
    }
};

TEST_F(MainWidgetLinkage, AskedForTheDialogOpensAndGovernsWhatIsShown) {
    showView();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_TRUE(event(3160));
    ASSERT_TRUE(dialog());
    EXPECT_TRUE(dialog()->isVisible());
    EXPECT_EQ(dialog()->parentWidget(), mMain.get());
    EXPECT_EQ(mUi->mLinkageFlags, 5);
    const CRealtimeLinkageSettingDialog *first = dialog();
    first->window()->hide();
    mMain->showLinkageDataFromKey();
    EXPECT_EQ(dialog(), first) << "there is one";
    EXPECT_TRUE(dialog()->isVisible());
    EXPECT_TRUE(takeEvents().empty()) << "the host hears nothing of it";
}

TEST_F(MainWidgetLinkage, ChoiceGoesIntoTheViewParameters) {
    addTrades();
    showView();
    event(3160);
    dialog()->slotTimeout();
    EXPECT_EQ(mUi->mLinkageAccounts, Keys{"a1"}) << "the account came while it was open";
    EXPECT_TRUE(mUi->mLinkageStocks.empty());
    click(rowBox(2, 0));
    EXPECT_EQ(mUi->mLinkageStocks, Keys{"SH600000"});
    click(box(4));
    EXPECT_EQ(mUi->mLinkageShow, (std::array<bool, 8>{false, true, false, false, false, false, false, false}));
    dialog()->handleEvent(67, 0, 1, "strategy_table", nullptr);
    EXPECT_EQ(mUi->mLinkageStrategys, Keys{"s1"});
    click(rowBox(0, 0));
    EXPECT_TRUE(mUi->mLinkageAccounts.empty());
}

TEST_F(MainWidgetLinkage, ChoiceIsOnTheScreenAtOnceAndClosingTakesItAway) {
    addTrades();
    showView();
    fill();
    event(3160);
    dialog()->slotTimeout();
    click(box(4));
    EXPECT_FALSE(dealIsSeen()) << "no instrument is chosen";
    click(rowBox(2, 0));
    EXPECT_TRUE(dealIsSeen());
    click(box(4));
    EXPECT_FALSE(dealIsSeen());
    click(box(4));
    EXPECT_TRUE(dealIsSeen());
    dialog()->close();
    EXPECT_EQ(mUi->mLinkageFlags, 1);
    EXPECT_FALSE(dealIsSeen());
    event(3160);
    EXPECT_TRUE(dealIsSeen()) << "with the choice of before";
}

TEST_F(MainWidgetLinkage, NewDataAreDrawnWhenTheDialogTells) {
    showView();
    fill();
    event(3160);
    click(box(4));
    addTrades();
    mHost.mLinkage.sigAccountsChanged();
    mHost.mLinkage.sigStocksChanged();
    dialog()->slotTimeout();
    click(rowBox(2, 0));
    EXPECT_TRUE(dealIsSeen());
    mHost.mLinkage.mDeals.clear();
    mHost.mLinkage.sigDatasChanged();
    dialog()->slotTimeout();
    EXPECT_FALSE(dealIsSeen());
}

TEST_F(MainWidgetLinkage, WithoutTheDialogOrItsRuleNothingIsTakenOver) {
    addTrades();
    showView();
    mUi->mLinkageAccounts = {"kept"};
    mMain->updateLinkageSetting();
    EXPECT_EQ(mUi->mLinkageAccounts, Keys{"kept"}) << "there is no dialog";
    event(3160);
    dialog()->slotTimeout();
    EXPECT_EQ(mUi->mLinkageAccounts, Keys{"a1"});
    dialog()->close();
    mUi->mLinkageAccounts = {"kept"};
    mMain->updateLinkageSetting();
    EXPECT_EQ(mUi->mLinkageAccounts, Keys{"kept"}) << "it governs no longer";
}

TEST_F(MainWidgetLinkage, ChoiceOfAClosedDialogReachesTheChartWhenItOpens) {
    showView();
    event(3160);
    dialog()->close();
    addTrades();
    mHost.mLinkage.sigAccountsChanged();
    dialog()->slotTimeout();
    EXPECT_TRUE(mUi->mLinkageAccounts.empty());
    event(3160);
    EXPECT_EQ(mUi->mLinkageAccounts, Keys{"a1"});
}

TEST_F(MainWidgetLinkage, SettingIsThatOfTheDialogOnceThereIsOne) {
    showView();
    EXPECT_TRUE(mMain->getLinkageDialogSetting().isEmpty());
    mMain->loadLinkageDialogSetting({{"order", true}});
    EXPECT_TRUE(mMain->getLinkageDialogSetting().isEmpty()) << "dropped without a dialog";
    event(3160);
    EXPECT_EQ(mMain->getLinkageDialogSetting().size(), 10);
    EXPECT_FALSE(mMain->getLinkageDialogSetting()["order"]);
    mMain->loadLinkageDialogSetting({{"order", true}});
    EXPECT_TRUE(mMain->getLinkageDialogSetting()["order"]);
    EXPECT_FALSE(mUi->mLinkageShow[0]) << "on the chart with the next change";
}

TEST_F(MainWidgetLinkage, DialogBeginsWithWhatWasPreset) {
    showView();
    mMain->presetLinkageDialogSetting({{"order", true}, {"deal", true}});
    mMain->presetLinkageDialogSetting({{"deal", false}});
    EXPECT_EQ(mMain->getLinkageDialogSetting(), (QMap<QString, bool>{{"order", true}, {"deal", false}}));
    event(3160);
    EXPECT_TRUE(box(3)->isChecked());
    EXPECT_FALSE(box(4)->isChecked());
    EXPECT_TRUE(mUi->mLinkageShow[0]);
    mMain->presetLinkageDialogSetting({{"deal", true}});
    event(3160);
    EXPECT_FALSE(box(4)->isChecked()) << "it is made once";
}

TEST_F(MainWidgetLinkage, DialogGoesWithTheView) {
    showView();
    event(3160);
    const QPointer<CRealtimeLinkageSettingDialog> gone = dialog();
    mMain.reset();
    EXPECT_FALSE(gone);
    EXPECT_TRUE(mHost.mLinkage.sigDatasChanged.empty());
}

} // namespace
