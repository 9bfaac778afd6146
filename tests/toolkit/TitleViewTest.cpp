#include "host/drawing/TitleView.h"

#include <boost/function.hpp>
#include <boost/make_shared.hpp>
#include <boost/weak_ptr.hpp>

#include <gtest/gtest.h>

using namespace TC;

namespace {

/// What a title reads of view parameters.
struct Param {
    int mStockKind = eInstrument;
    boost::function<int()> mGetTradeDateFunc;
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
