#include "chartview/MinuteSpan.h"

#include <gtest/gtest.h>

using namespace TC;

namespace {

/// Two pixels a minute: index i lies at column 2 i + 1, and column x belongs to index (x + 1) / 2.
const DayAxis kTwo{482.0, 241};
/// One pixel a minute: index i lies at column i + 1.
const DayAxis kOne{242.0, 241};

TEST(MinuteSpan, KeepsTheColumnsThatItWasTakenAt) {
    const MinuteSpan span = MinuteSpan::ofColumns(100, 200, kTwo);
    EXPECT_EQ(span.left(kTwo), 100);
    EXPECT_EQ(span.right(kTwo), 200);
    EXPECT_EQ(span.start(), 50);
    EXPECT_EQ(span.end(), 100);
}

TEST(MinuteSpan, StaysOnItsMinutesOnAnotherAxis) {
    const MinuteSpan span = MinuteSpan::ofColumns(100, 200, kTwo);
    EXPECT_EQ(span.left(kOne), 51);
    EXPECT_EQ(span.right(kOne), 101);
    EXPECT_EQ(span.left({482.0, 121}), 201) << "four pixels a minute";
    EXPECT_EQ(span.left(kTwo), 100);
}

TEST(MinuteSpan, OfIndicesLiesAtTheirColumns) {
    const MinuteSpan span = MinuteSpan::ofIndices(10, 240, kTwo);
    EXPECT_EQ(span.left(kTwo), 21);
    EXPECT_EQ(span.right(kTwo), 481);
    EXPECT_EQ(span.left(kOne), 11);
    EXPECT_EQ(span.right(kOne), 241);
}

TEST(MinuteSpan, ColumnsBesideTheAxisBelongToItsEnds) {
    const MinuteSpan span = MinuteSpan::ofColumns(-40, 900, kTwo);
    EXPECT_EQ(span.left(kTwo), -40);
    EXPECT_EQ(span.right(kTwo), 900);
    EXPECT_EQ(span.left(kOne), 1);
    EXPECT_EQ(span.right(kOne), 241);
}

TEST(MinuteSpan, IndicesBesideTheAxisAreHeldToTheGraph) {
    const MinuteSpan span = MinuteSpan::ofIndices(-5, 100000, kTwo);
    EXPECT_EQ(span.left(kTwo), 1);
    EXPECT_EQ(span.right(kTwo), 481);
}

TEST(MinuteSpan, OnAGraphWithoutWidthThereIsNoIndex) {
    EXPECT_EQ(MinuteSpan::ofColumns(10, 20, {0.0, 241}).start(), -1);
    EXPECT_EQ(MinuteSpan::ofIndices(10, 20, {0.0, 241}).left(kTwo), 21);
}

TEST(MinuteSpan, LiesAtColumnZeroBeforeItIsTaken) {
    EXPECT_EQ(MinuteSpan().left(kTwo), 0);
    EXPECT_EQ(MinuteSpan().right(kOne), 0);
}

} // namespace
