#include "host/drawing/TitleView.h"

#include <boost/function.hpp>
#include <boost/make_shared.hpp>
#include <boost/weak_ptr.hpp>

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <utility>

using namespace TC;

namespace {

/// What a title reads of view parameters.
struct Param {
    int mStockKind = eInstrument;
    boost::function<int()> mGetTradeDateFunc;
    int mDayCount = 1;
    int mLinkageFlags = 1;
    std::array<bool, 8> mLinkageShow{};
    std::map<int, std::pair<double, double>> mLinkageAmounts;
    std::map<int, double> mLinkageProfits;
    std::map<int, double> mLinkageBalances;
};

TEST(TitleViewTest, WithoutParametersItIsNoViewOfAnInstrumentNorOfAPastDay) {
    for (const TitleView &view : {TitleView(), TitleView(nullptr), TitleView(boost::shared_ptr<Param>())}) {
        EXPECT_FALSE(view.isInstrument());
        EXPECT_FALSE(view.isPast());
    }
}

TEST(TitleViewTest, TheParametersAreReadAtEachQuestion) {
    const auto param = boost::make_shared<Param>();
    const TitleView view = param;
    EXPECT_TRUE(view.isInstrument());
    EXPECT_FALSE(view.isPast());
    param->mStockKind = ePortfolio;
    param->mGetTradeDateFunc = [] { return 0; };
    EXPECT_FALSE(view.isInstrument());
    EXPECT_TRUE(view.isPast());
    param->mStockKind = eUserIndex;
    EXPECT_FALSE(view.isInstrument());
}

TEST(TitleViewTest, CurvesStandWhereTheyWereDrawnLast) {
    const auto param = boost::make_shared<Param>();
    const TitleView view = param;
    param->mLinkageFlags = 4;
    param->mLinkageAmounts = {{10, {100.0, 50.0}}};
    param->mLinkageProfits = {{10, -3.0}, {20, 8.0}};
    param->mLinkageBalances = {{15, 1000.0}};
    EXPECT_TRUE(isUnset(view.curves(-1).profit)) << "it is not shown";
    param->mLinkageShow = {false, false, false, true, false, true, true, false};
    EXPECT_EQ(view.curves(-1).profit, 8.0);
    EXPECT_EQ(view.curves(19).profit, -3.0);
    EXPECT_EQ(view.curves(20).profit, 8.0);
    EXPECT_TRUE(isUnset(view.curves(9).profit));
    EXPECT_TRUE(isUnset(view.curves(14).balance));
    EXPECT_EQ(view.curves(300).balance, 1000.0);
    EXPECT_EQ(view.curves(300).bought, 100.0);
    EXPECT_EQ(view.curves(300).sold, 50.0);
    EXPECT_TRUE(isUnset(view.curves(300).net));
    param->mLinkageShow[4] = true;
    EXPECT_EQ(view.curves(300).net, 50.0);
    param->mDayCount = 2;
    EXPECT_TRUE(isUnset(view.curves(300).balance)) << "several days show none";
    param->mDayCount = 1;
    param->mLinkageFlags = 2;
    EXPECT_TRUE(isUnset(view.curves(300).balance)) << "the view of accounts shows none";
    EXPECT_TRUE(isUnset(TitleView().curves(0).balance));
}

TEST(TitleViewTest, TheParametersAreKeptAlive) {
    auto param = boost::make_shared<Param>();
    const boost::weak_ptr<Param> watched = param;
    {
        const TitleView view = param;
        param.reset();
        EXPECT_TRUE(view.isInstrument());
        EXPECT_FALSE(watched.expired());
    }
    EXPECT_TRUE(watched.expired());
}

} // namespace
