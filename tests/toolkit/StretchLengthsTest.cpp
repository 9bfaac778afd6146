#include "toolkit/widgets/StretchLengths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <random>

namespace {

using GZ::divideLength;
using GZ::movedLength;
using Lengths = std::vector<int>;

constexpr int kHuge = std::numeric_limits<int>::max();

TEST(StretchLengths, SharesTheLengthByStretch) {
    EXPECT_EQ(divideLength(400, {{-1, 2}, {-1, 1}, {-1, 1}}), (Lengths{200, 100, 100}));
    EXPECT_EQ(divideLength(90, {{-1, 1}}), (Lengths{90}));
    EXPECT_TRUE(divideLength(100, {}).empty());
}

TEST(StretchLengths, FixedOnesComeFirst) {
    EXPECT_EQ(divideLength(400, {{50, 0}, {-1, 1}, {50, 7}}), (Lengths{50, 300, 50}));
    EXPECT_EQ(divideLength(80, {{50, 0}, {-1, 1}, {50, 0}}), (Lengths{50, 0, 30}));
    EXPECT_EQ(divideLength(30, {{50, 0}, {50, 0}}), (Lengths{30, 0}));
}

TEST(StretchLengths, RoundingLosesNoPixel) {
    // 100 in three: the ends lie at 33.3, 66.7 and 100.
    EXPECT_EQ(divideLength(100, {{-1, 1}, {-1, 1}, {-1, 1}}), (Lengths{33, 33, 34}));
    EXPECT_EQ(divideLength(2, {{-1, 1}, {-1, 1}, {-1, 1}}), (Lengths{0, 1, 1}));
}

TEST(StretchLengths, StretchOfZeroGetsNothingAndLeavesTheRestToTheOthers) {
    EXPECT_EQ(divideLength(100, {{-1, 0}, {-1, 3}}), (Lengths{0, 100}));
    EXPECT_EQ(divideLength(100, {{-1, 0}, {-1, -4}}), (Lengths{0, 0}));
}

TEST(StretchLengths, StretchesThatArePixelsAreSharesToo) {
    // A maximised pane beside the main one: 300 and 500 over 780 pixels.
    EXPECT_EQ(divideLength(780, {{-1, 300}, {-1, 500}}), (Lengths{292, 488}));
}

TEST(StretchLengths, HugeStretchesDoNotOverflow) {
    EXPECT_EQ(divideLength(300, {{-1, kHuge}, {-1, kHuge}, {-1, kHuge}}), (Lengths{100, 100, 100}));
    EXPECT_EQ(divideLength(kHuge, {{-1, kHuge}}), (Lengths{kHuge}));
    EXPECT_EQ(divideLength(100, {{kHuge, 0}, {-1, 1}}), (Lengths{100, 0}));
}

TEST(StretchLengths, NoRoomGivesNobodyAnything) {
    EXPECT_EQ(divideLength(0, {{10, 0}, {-1, 1}}), (Lengths{0, 0}));
    EXPECT_EQ(divideLength(-50, {{10, 0}, {-1, 1}}), (Lengths{0, 0}));
}

TEST(StretchLengths, AnyMixFillsTheLengthExactly) {
    std::mt19937 random(7);
    const auto upTo = [&](int most) { return std::uniform_int_distribution<int>(0, most)(random); };
    for (int round = 0; round < 2000; ++round) {
        std::vector<GZ::LengthWish> wishes{{-1, 1 + upTo(1000)}};
        for (int i = upTo(8); i > 0; --i) {
            wishes.push_back(upTo(2) ? GZ::LengthWish{-1, upTo(3) ? upTo(kHuge - 1) : 0}
                                     : GZ::LengthWish{upTo(60), upTo(3)});
        }
        const int length = upTo(2000);
        const Lengths lengths = divideLength(length, wishes);
        EXPECT_EQ(std::accumulate(lengths.begin(), lengths.end(), 0), length);
        EXPECT_GE(*std::min_element(lengths.begin(), lengths.end()), 0);
    }
}

TEST(StretchLengths, MovesPixelsBetweenTwoNeighbours) {
    EXPECT_EQ(movedLength(200, 100, 30, 16), 230);
    EXPECT_EQ(movedLength(200, 100, -30, 16), 170);
    EXPECT_EQ(movedLength(200, 100, 500, 16), 284);
    EXPECT_EQ(movedLength(200, 100, -500, 16), 16);
    EXPECT_EQ(movedLength(200, 100, kHuge, 16), 284);
    EXPECT_EQ(movedLength(200, 100, -kHuge - 1, 16), 16);
}

TEST(StretchLengths, NeighbourThatIsSmallerAlreadyKeepsWhatItHas) {
    EXPECT_EQ(movedLength(5, 100, -50, 16), 5);
    EXPECT_EQ(movedLength(100, 5, 50, 16), 100);
    EXPECT_EQ(movedLength(0, 0, 10, 16), 0);
}

} // namespace
