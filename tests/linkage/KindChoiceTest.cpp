#include "linkage/KindChoice.h"

#include "chartdata/LinkageScope.h"
#include "tests/chartview/ChartFixture.h"

using namespace TC;

namespace {

class KindChoiceTest : public tests::ChartFixture {
protected:
    ~KindChoiceTest() override { delete mKinds.widget(); }
    QMap<QString, bool> kept() const {
        QMap<QString, bool> map;
        mKinds.store(map);
        return map;
    }
    QStringList calls() {
        const QStringList found = mHost.mLog.of(QStringLiteral("CLinkageManager::"));
        mHost.mLog.clear();
        return found;
    }
    KindChoice mKinds{mHost.mLinkage};
};

TEST_F(KindChoiceTest, NothingIsShownAtFirst) {
    EXPECT_EQ(mKinds.flags(), KindChoice::Flags{});
    EXPECT_EQ(kept(), (QMap<QString, bool>{{"order", false},
                                           {"deal", false},
                                           {"task", false},
                                           {"buysellamount", false},
                                           {"buynetamount", false},
                                           {"profit", false},
                                           {"balance", false},
                                           {"seebystrategy", false}}));
}

TEST_F(KindChoiceTest, OnlyProfitsAndBalancesAreWorkedOut) {
    for (std::size_t kind = 0; kind < 7; ++kind) {
        mKinds.show(kind, true);
        EXPECT_TRUE(mKinds.flags()[kind]);
    }
    EXPECT_EQ(calls(), (QStringList{"CLinkageManager::startProfitCalculator",
                                    "CLinkageManager::startBalanceCalculator"}));
    for (std::size_t kind = 0; kind < 7; ++kind) {
        mKinds.show(kind, false);
    }
    EXPECT_EQ(mKinds.flags(), KindChoice::Flags{});
    EXPECT_EQ(calls(),
              (QStringList{"CLinkageManager::stopProfitCalculator", "CLinkageManager::stopBalanceCalculator"}));
}

TEST_F(KindChoiceTest, WhatIsLoadedIsShownAndStartsNothing) {
    mKinds.load({{"profit", true}, {"deal", true}, {"nothing", true}});
    EXPECT_TRUE(mKinds.flags()[eShowProfit]);
    EXPECT_TRUE(mKinds.flags()[eShowDeals]);
    EXPECT_TRUE(kept()["profit"]);
    EXPECT_FALSE(kept()["order"]);
    mKinds.load({{"profit", false}});
    EXPECT_FALSE(kept()["profit"]);
    EXPECT_TRUE(kept()["deal"]) << "what the map does not hold stays";
    EXPECT_TRUE(calls().isEmpty());
}

TEST_F(KindChoiceTest, ButtonsAreReadTheOtherWayRoundAndFilterNothing) {
    mKinds.load({{"seebystrategy", false}});
    EXPECT_TRUE(kept()["seebystrategy"]);
    EXPECT_FALSE(mKinds.flags()[eFilterStrategies]);
    mKinds.load({{"seebystrategy", true}});
    EXPECT_FALSE(kept()["seebystrategy"]);
    mKinds.filterStrategies(true);
    EXPECT_TRUE(mKinds.flags()[eFilterStrategies]);
}

} // namespace
