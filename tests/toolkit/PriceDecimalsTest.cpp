#include "host/toolkit/PriceDecimals.h"

#include "host/records/Enumerations.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using TC::decimals;
using TC::volumeDecimals;

TEST(PriceDecimals, CountsTheDecimalsOfAPriceStep) {
    EXPECT_EQ(decimals(1.0), 0);
    EXPECT_EQ(decimals(5.0), 0);
    EXPECT_EQ(decimals(0.5), 1);
    EXPECT_EQ(decimals(0.2), 1);
    EXPECT_EQ(decimals(0.01), 2);
    EXPECT_EQ(decimals(0.05), 2);
    EXPECT_EQ(decimals(0.001), 3);
    EXPECT_EQ(decimals(0.005), 3);
    EXPECT_EQ(decimals(0.0001), 4);
    EXPECT_EQ(decimals(0.0), 0);
}

TEST(PriceDecimals, UnsetStepHasTwo) {
    EXPECT_EQ(decimals(TC::kUnsetValue), 2);
}

TEST(PriceDecimals, StepsAreWholeWithinATolerance) {
    EXPECT_EQ(decimals(1.000009), 0);
    EXPECT_EQ(decimals(0.0100001), 2) << "0.0001 hundredths of a price are lost in the tolerance";
    // From 1e-5 down the tolerance is ten times finer: 1e-5 itself is not yet whole.
    EXPECT_EQ(decimals(0.00001), 5);
    EXPECT_EQ(decimals(0.0000005), 0);
}

TEST(PriceDecimals, StopsAtEleven) {
    EXPECT_EQ(decimals(1.0 / 3.0), 11);
    EXPECT_EQ(decimals(std::nan("")), 11);
    EXPECT_EQ(decimals(std::numeric_limits<double>::infinity()), 11);
}

TEST(PriceDecimals, NegativeStepHasTheFineTolerance) {
    EXPECT_EQ(decimals(-0.01), 2);
    EXPECT_EQ(decimals(-2.0), 0);
}

TEST(VolumeDecimals, FollowsTheUnitAndItsMagnitude) {
    EXPECT_EQ(volumeDecimals(0), 0);
    EXPECT_EQ(volumeDecimals(9999), 0);
    EXPECT_EQ(volumeDecimals(10000), 2);
    EXPECT_EQ(volumeDecimals(10000 - 5e-6), 2) << "within the tolerance of ten thousand";
    EXPECT_EQ(volumeDecimals(9999999), 2);
    EXPECT_EQ(volumeDecimals(10000000), 1);
    EXPECT_EQ(volumeDecimals(99999999), 1);
    EXPECT_EQ(volumeDecimals(1e8), 2);
    EXPECT_EQ(volumeDecimals(999.9e8), 2);
    EXPECT_EQ(volumeDecimals(1000e8), 1);
    EXPECT_EQ(volumeDecimals(9999e8), 1);
    EXPECT_EQ(volumeDecimals(1e12), 2);
    EXPECT_EQ(volumeDecimals(5e15), 2);
}

TEST(VolumeDecimals, NegativeVolumesNeverReachAThousandUnits) {
    EXPECT_EQ(volumeDecimals(-9999), 0);
    EXPECT_EQ(volumeDecimals(-5e7), 2);
    EXPECT_EQ(volumeDecimals(-5e11), 2);
}

TEST(VolumeDecimals, TakesWhatIsNoNumber) {
    EXPECT_EQ(volumeDecimals(std::nan("")), 2);
    EXPECT_EQ(volumeDecimals(std::numeric_limits<double>::infinity()), 2);
}

} // namespace
