#include "terminal/formula/HiddenVariables.h"

#include "host/records/Enumerations.h"

#include <gtest/gtest.h>

#include <limits>

using namespace terminal;

namespace {

se::RPCFormulaMetaResult meta() {
    se::RPCFormulaMetaResult made;
    made.mLineCount = 3;
    made.mLineNames = {"DIF", "SHORT", "LONG"};
    made.mLineAxis = {se::eLineShared, se::eLineHidden, se::eLineHidden};
    return made;
}

se::RPCFormulaResult result() {
    se::RPCFormulaResult made;
    made.mTimes = {{60000, 0}, {120000, 0}};
    made.mValues = {{1, 2}, {10.5, 10.123456}, {TC::kUnsetValue, 11}};
    return made;
}

se::RPCFormulaInstantResult point(qint64 time, double value) {
    se::RPCFormulaInstantResult made;
    made.mTime = {time, 0};
    made.mValues = {0, value, -0.00001};
    return made;
}

} // namespace

TEST(HiddenVariables, ThoseOfAPointAreNamedWithTheirValues) {
    HiddenVariables hidden;
    hidden.take(meta(), result());
    EXPECT_EQ(hidden.textAt(0), "SHORT:10.5 LONG:--");
    EXPECT_EQ(hidden.textAt(1), "SHORT:10.1235 LONG:11");
}

TEST(HiddenVariables, APointThatIsNotThereHasNone) {
    HiddenVariables hidden;
    EXPECT_EQ(hidden.textAt(0), "");
    hidden.take(meta(), result());
    EXPECT_EQ(hidden.textAt(-1), "");
    EXPECT_EQ(hidden.textAt(2), "");
}

TEST(HiddenVariables, ASeriesWithoutHiddenLinesHasNone) {
    HiddenVariables hidden;
    se::RPCFormulaMetaResult shown = meta();
    shown.mLineAxis = {};
    hidden.take(shown, result());
    EXPECT_EQ(hidden.textAt(0), "");
    hidden.take(point(180000, 3));
    EXPECT_EQ(hidden.textAt(2), "");
}

TEST(HiddenVariables, PointsOfTheStreamFollow) {
    HiddenVariables hidden;
    hidden.take(meta(), result());
    hidden.take(point(120000, 12));
    hidden.take(point(180000, 13));
    hidden.take(point(60000, 99)); // an earlier one is passed over
    EXPECT_EQ(hidden.textAt(0), "SHORT:10.5 LONG:--");
    EXPECT_EQ(hidden.textAt(1), "SHORT:12 LONG:0");
    EXPECT_EQ(hidden.textAt(2), "SHORT:13 LONG:0");
}

TEST(HiddenVariables, ShortAndOddVectorsAreHarmless) {
    HiddenVariables hidden;
    se::RPCFormulaMetaResult odd = meta();
    odd.mLineNames = {"DIF"};
    se::RPCFormulaResult few = result();
    few.mValues = {{1}, {std::numeric_limits<double>::infinity()}};
    hidden.take(odd, few);
    EXPECT_EQ(hidden.textAt(1), ":-- :--");
    se::RPCFormulaInstantResult empty;
    empty.mTime = {180000, 0};
    hidden.take(empty);
    EXPECT_EQ(hidden.textAt(2), ":-- :--");
}
