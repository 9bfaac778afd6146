#include "tests/chartdata/PartsFixture.h"

using namespace TC;

namespace tests {
namespace {

class Ranges : public PartsFixture {
protected:
    const CFormulaKey kMain = key("SH600000");
};

TEST_F(Ranges, WantedRangeIsCentredOnTheCloseAndOnlyWidens) {
    store(kMain, {10.0, 10.5, 9.8});
    EXPECT_TRUE(mRanges.update(kMain, 0, kPane));
    EXPECT_NEAR(mWanted.value(kMain).first, 10.5, 1e-9);
    EXPECT_NEAR(mWanted.value(kMain).second, 9.5, 1e-9);
    EXPECT_FALSE(mRanges.update(kMain, 0, kPane)) << "nothing new";
    mShown[kMain].result.mValues[0][1] = 10.2;
    EXPECT_FALSE(mRanges.update(kMain, 0, kPane)) << "extremes stay";
}

TEST_F(Ranges, RangeThatIsWantedAndNotDrawnIsOutgrown) {
    store(kMain, {10.0, 10.5});
    EXPECT_FALSE(mRanges.isOutgrown());
    mRanges.update(kMain, 0, kPane);
    EXPECT_TRUE(mRanges.isOutgrown());
    EXPECT_TRUE(mRanges.adopt(mWanted, false));
    EXPECT_FALSE(mRanges.isOutgrown());
    EXPECT_FALSE(mRanges.adopt(mWanted, false)) << "the same again";
    mRanges.forget(kMain);
    EXPECT_TRUE(mWanted.isEmpty());
    EXPECT_TRUE(mRanges.drawn().isEmpty());
}

TEST_F(Ranges, OverlayAndMainInstrumentGetTheSamePercentages) {
    mView.addStock(QStringLiteral("SZ000001"), QString(), true);
    store(kMain, {10.0, 10.2});
    store(key("SZ000001"), {20.0, 21.0}); // 5 %
    mSeries.align(key("SZ000001"), 0);
    mRanges.update(key("SZ000001"), 0, kPane);
    mRanges.update(kMain, 0, kPane);
    EXPECT_NEAR(mWanted.value(kMain).first, 10.5, 1e-9);
    EXPECT_NEAR(mWanted.value(key("SZ000001")).first, 21.0, 1e-9);
}

} // namespace
} // namespace tests
