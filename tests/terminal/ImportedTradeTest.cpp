#include "terminal/trade/ImportedTrade.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace terminal;

namespace {

ImportedTrade line() {
    return {"80010001", "SH600000", "k7", 9.87, 300, 1763690400, kSell};
}

} // namespace

TEST(ImportedTrade, ASoundLineIsTaken) {
    EXPECT_EQ(troubleOf(line()), nullptr);
}

TEST(ImportedTrade, EachFaultHasItsReason) {
    const auto faulty = [](auto change) {
        ImportedTrade imported = line();
        change(imported);
        const char *trouble = troubleOf(imported);
        return std::string(trouble ? trouble : "");
    };
    EXPECT_EQ(faulty([](ImportedTrade &i) { i.account.clear(); }), "no account");
    EXPECT_EQ(faulty([](ImportedTrade &i) { i.instrument.clear(); }), "no instrument");
    for (const double price : {0.0, -1.0, 1e9 + 1.0, std::nan(""), HUGE_VAL}) {
        EXPECT_EQ(faulty([price](ImportedTrade &i) { i.price = price; }), "the price is no positive number");
    }
    EXPECT_EQ(faulty([](ImportedTrade &i) { i.volume = 0; }), "the volume is no positive whole number");
    for (const long long time : {86399LL, 2147385601LL}) {
        EXPECT_EQ(faulty([time](ImportedTrade &i) { i.time = time; }), "the time cannot be read");
    }
    EXPECT_EQ(faulty([](ImportedTrade &i) { i.direction = 50; }),
              "the direction is neither 48, buy, nor 49, sell");
}

TEST(ImportedTrade, TheBoundsOfTimeAreTaken) {
    for (const long long time : {86400LL, 2147385600LL}) {
        ImportedTrade imported = line();
        imported.time = time;
        EXPECT_EQ(troubleOf(imported), nullptr) << time;
    }
}

TEST(ImportedTrade, ARecordHasItsFields) {
    const auto deal = recordOf<TradeDeal>(line(), 1763654400, 5);
    EXPECT_EQ(deal.account, "80010001");
    EXPECT_EQ(deal.instrument, "SH600000");
    EXPECT_EQ(deal.key, "k7");
    EXPECT_EQ(deal.price, 9.87);
    EXPECT_EQ(deal.volume, 300);
    EXPECT_EQ(deal.time, 1763690400000);
    EXPECT_EQ(deal.day, 1763654400);
    EXPECT_EQ(deal.direction, kSell);
    EXPECT_EQ(deal.source, TradeSource::Imported);
}

TEST(ImportedTrade, AnEmptyKeyIsMadeOfTimeAndNumber) {
    ImportedTrade imported = line();
    imported.key.clear();
    EXPECT_EQ(recordOf<TradeOrder>(imported, 0, 5).key, "import-1763690400-5");
}
