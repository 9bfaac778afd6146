#include "chartview/TradeTip.h"

#include "host/records/CDealDetail.h"
#include "host/records/COrderDetail.h"
#include "tests/chartview/GraphFixture.h"

using namespace TC;

namespace {

class TradeTipTest : public tests::GraphFixture {
protected:
    void SetUp() override {
        makeMainGraph();
        showGraph(482, 205);
        fillMain();
    }
    /// A tip that was shown for one deal and one order.
    TradeTip shownTip() const {
        TradeTip tip;
        tip.*peek(tests::Peek_mShowTip()) = true;
        (tip.*peek(tests::Peek_mDealTips())).append(boost::make_shared<kvservice::CDealDetail>());
        (tip.*peek(tests::Peek_mOrderTips())).append(boost::make_shared<kvservice::COrderDetail>());
        return tip;
    }
    static int trades(const TradeTip &tip) {
        return (tip.*peek(tests::Peek_mDealTips())).size() + (tip.*peek(tests::Peek_mOrderTips())).size();
    }
};

TEST_F(TradeTipTest, ASearchThatFindsNothingTakesItAway) {
    TradeTip tip = shownTip();
    tip.search(*mData, {100, 100});
    EXPECT_FALSE(tip.isShown());
    EXPECT_EQ(trades(tip), 0);
}

TEST_F(TradeTipTest, HidingKeepsTheTradesAndDroppingForgetsThem) {
    TradeTip tip = shownTip();
    EXPECT_TRUE(tip.hide());
    EXPECT_FALSE(tip.hide());
    EXPECT_EQ(trades(tip), 2);
    EXPECT_FALSE(tip.drop());
    EXPECT_EQ(trades(tip), 0);
    tip = shownTip();
    EXPECT_TRUE(tip.drop());
    EXPECT_FALSE(tip.isShown());
}

} // namespace
