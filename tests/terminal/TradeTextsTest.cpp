#include "terminal/trade/TradeTexts.h"

#include "tests/terminal/TradeFixture.h"

using namespace terminal;

TEST(TradeTexts, EveryStatusOfATaskHasAWord) {
    EXPECT_EQ(taskStatusText(3), QStringLiteral("未开始"));
    EXPECT_EQ(taskStatusText(4), QStringLiteral("执行中"));
    EXPECT_EQ(taskStatusText(5), QStringLiteral("已撤销"));
    EXPECT_EQ(taskStatusText(8), QStringLiteral("已完成"));
    EXPECT_EQ(taskStatusText(10), QStringLiteral("已到期"));
    EXPECT_EQ(taskStatusText(-7), QStringLiteral("状态 -7"));
}

TEST(TradeTexts, OperationsAndPriceTypesHaveWords) {
    EXPECT_EQ(operationText(23), QStringLiteral("买入"));
    EXPECT_EQ(operationText(24), QStringLiteral("卖出"));
    EXPECT_EQ(operationText(25), QStringLiteral("按金额买入"));
    EXPECT_EQ(operationText(1000), QStringLiteral("操作 1000"));
    EXPECT_EQ(priceTypeText(11), QStringLiteral("限价"));
    EXPECT_EQ(priceTypeText(0), QStringLiteral("价格类型 0"));
}

class TradeTextsOfTheService : public TradeFixture {};

TEST_F(TradeTextsOfTheService, UnitIsThatOfTheInstrumentsKind) {
    TC::CLinkageManager *before = TC::CSingletonT<TC::CLinkageManager>::install(mTrade.get());
    EXPECT_EQ(kvservice::getStockUnit("SH", "600000"), "股");
    EXPECT_EQ(kvservice::getStockUnit("HK", "00700"), "股");
    EXPECT_EQ(kvservice::getStockUnit("SH", "510300"), "份");
    EXPECT_EQ(kvservice::getStockUnit("SH", "113050"), "张");
    EXPECT_EQ(kvservice::getStockUnit("SHFE", "AU2612"), "手");
    EXPECT_EQ(kvservice::getStockUnit("SHFE", "unknown"), "手");
    EXPECT_EQ(kvservice::getStockUnit("SZ", "unknown"), "股");
    EXPECT_EQ(kvservice::operationValueToString(24), "卖出");
    EXPECT_EQ(TC::getTaskStatusQString(4), QStringLiteral("执行中"));
    EXPECT_EQ(TC::getPriceTypeQString(11), QStringLiteral("限价"));
    TC::CSingletonT<TC::CLinkageManager>::install(before);
}
