#include "terminal/trade/TradeBatch.h"

#include <gtest/gtest.h>

using namespace terminal;

namespace {

TradeOrder batchOrder(const char *account, int day, TradeSource source) {
    TradeOrder made;
    made.account = account;
    made.day = day;
    made.source = source;
    return made;
}

} // namespace

TEST(TradeBatch, WhatIsForgottenLaterIsNotWritten) {
    TradeBatch batch;
    batch.changes.orders = {batchOrder("a", 1, TradeSource::Own), batchOrder("a", 1, TradeSource::Imported),
                            batchOrder("a", 2, TradeSource::Own), batchOrder("b", 1, TradeSource::Own)};
    batch.finishedDays = {{"a", 1}, {"a", 2}};
    TradeBatch later;
    later.forgottenDays = {{"a", 1}};
    later.changes.orders = {batchOrder("a", 1, TradeSource::Own)};
    batch.append(later);
    EXPECT_EQ(batch.changes.orders.size(), 4U); // all but the first, and the new one
    EXPECT_EQ(batch.changes.orders.front().source, TradeSource::Imported);
    EXPECT_EQ(batch.finishedDays, (std::set<TradeBatch::AccountDay>{{"a", 2}}));
    EXPECT_EQ(batch.forgottenDays, later.forgottenDays);
}

TEST(TradeBatch, ImportsThatAreForgottenLaterAreNotWritten) {
    TradeBatch batch;
    batch.accounts = {{"own", "own", 2, TradeSource::Own}, {"out", "out", 2, TradeSource::Imported}};
    batch.changes.orders = {batchOrder("own", 1, TradeSource::Own),
                            batchOrder("own", 1, TradeSource::Imported)};
    TradeBatch later;
    later.forgetImports = true;
    batch.append(later);
    EXPECT_TRUE(batch.forgetImports);
    ASSERT_EQ(batch.accounts.size(), 1U);
    EXPECT_EQ(batch.accounts.front().id, "own");
    EXPECT_EQ(batch.changes.orders.size(), 1U);
}

TEST(TradeBatch, EveryPartMakesItMoreThanEmpty) {
    EXPECT_TRUE(TradeBatch().isEmpty());
    TradeBatch batch;
    batch.cancels.push_back({1, 1, 1, {}});
    EXPECT_FALSE(batch.isEmpty());
    batch = {};
    batch.forgetImports = true;
    EXPECT_FALSE(batch.isEmpty());
    batch = {};
    batch.finishedDays = {{"a", 1}};
    EXPECT_FALSE(batch.isEmpty());
}
