#include "terminal/trade/TradeRecords.h"

#include <gtest/gtest.h>

using namespace terminal;

TEST(TradeRecords, OrdersAndDealsTellTheirInstrumentAndDealsTheirOrder) {
    TradeOrder order;
    order.key = "20261120-00007";
    order.instrument = "SH600000";
    order.price = 9.8;
    order.volume = 300;
    EXPECT_EQ(detailOf(order)->mStockKey, "SH600000");
    EXPECT_EQ(detailOf(order)->mContractNo, "20261120-00007");
    TradeDeal deal;
    deal.key = "20261120-00007-1";
    deal.order = "20261120-00007";
    deal.instrument = "SFAU2612";
    EXPECT_EQ(detailOf(deal)->mStockKey, "SFAU2612");
    EXPECT_EQ(detailOf(deal)->getKey(), "20261120-00007-1");
    EXPECT_EQ(detailOf(deal)->mContractNo, "20261120-00007");
}
