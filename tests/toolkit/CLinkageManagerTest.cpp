#include "host/services/CLinkageManager.h"

#include <gtest/gtest.h>

namespace {

TEST(TradeSides, Direction48BuysWhateverTheOffset) {
    EXPECT_TRUE(kvservice::isBuyByDirection(48, 48));
    EXPECT_TRUE(kvservice::isBuyByDirection(48, 49));
    EXPECT_FALSE(kvservice::isBuyByDirection(49, 48));
    EXPECT_FALSE(kvservice::isBuyByDirection(0, 48));
}

TEST(TradeSides, BothBuyingOperationsBuy) {
    using kvservice::EOperationType;
    EXPECT_TRUE(kvservice::DataHelper::isBuy(EOperationType::Buy));
    EXPECT_TRUE(kvservice::DataHelper::isBuy(EOperationType::BuyByAmount));
    EXPECT_FALSE(kvservice::DataHelper::isBuy(EOperationType::Sell));
    EXPECT_FALSE(kvservice::DataHelper::isBuy(static_cast<EOperationType>(1000)));
}

} // namespace
