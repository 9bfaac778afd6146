#include "terminal/market/CompositeFeed.h"

#include "tests/terminal/Samples.h"
#include "tests/terminal/ScriptedFeed.h"

#include <QMap>

#include <gtest/gtest.h>

using namespace terminal;
using tests::kOpen;
using tests::kToday;

namespace {

qint64 timeAfterOpen(int minute) {
    return kOpen + minute * 60000LL;
}

MinuteBar memberBar(int minute, double price, double average = 0.0, double volume = 0.0, double open = 0.0) {
    MinuteBar made;
    made.time = timeAfterOpen(minute);
    made.open = open;
    made.price = price;
    made.average = average > 0.0 ? average : price;
    made.volume = volume;
    made.amount = volume * price;
    return made;
}

std::vector<double> pricesOf(const MinuteBars &bars) {
    std::vector<double> prices;
    for (const MinuteBar &each : bars) {
        prices.push_back(each.price);
    }
    return prices;
}

/// 2 of A and 1 short of B.
const std::vector<CompositeMember> kPair{{"A", 2.0, 9.0}, {"B", -1.0, 5.0}};

} // namespace

TEST(CompositeBars, AMinuteIsTheWeightedSumAndMembersStandAtTheirLastPrice) {
    const std::vector<MinuteBars> bars{{memberBar(0, 10, 10, 100), memberBar(2, 12, 11, 50)},
                                       {memberBar(1, 6, 6, 7), memberBar(2, 7, 6.5, 3)}};
    const MinuteBars composite = composeBars(kPair, bars);
    // 2*10-5 (before its first bar: the close before), 2*10-6, 2*12-7
    EXPECT_EQ(pricesOf(composite), (std::vector<double>{15, 14, 17}));
    EXPECT_EQ(composite[0].average, 2 * 10 - 5.0);
    EXPECT_EQ(composite[1].average, 2 * 10 - 6.0);
    EXPECT_EQ(composite[2].average, 2 * 11 - 6.5);
    EXPECT_EQ(composite[0].volume, 100);
    EXPECT_EQ(composite[1].volume, 7);
    EXPECT_EQ(composite[2].volume, 53);
    EXPECT_EQ(composite[2].amount, 50 * 12 + 3 * 7.0);
}

TEST(CompositeBars, OpeningPricesComposeToo) {
    const std::vector<MinuteBars> bars{{memberBar(0, 10, 10, 1, 9.5), memberBar(1, 11)},
                                       {memberBar(0, 6, 6, 1, 5.5)}};
    const MinuteBars composite = composeBars(kPair, bars);
    EXPECT_EQ(composite[0].open, 2 * 9.5 - 5.5);
    EXPECT_EQ(composite[0].price, 14.0);
    EXPECT_EQ(composite[0].high, 14.0);
    EXPECT_EQ(composite[0].low, 13.5);
    EXPECT_EQ(composite[1].open, 2 * 11 - 6.0)
        << "without an opening price the price; a member without a bar stands";
}

TEST(CompositeBars, WithoutACloseBeforeAMemberStandsAtItsFirstOpeningPrice) {
    const std::vector<CompositeMember> members{{"A", 1.0, 0.0}, {"B", 1.0, 0.0}};
    EXPECT_EQ(
        pricesOf(composeBars(members, {{memberBar(0, 10), memberBar(1, 11)}, {memberBar(1, 6, 6, 1, 5.5)}})),
        (std::vector<double>{15.5, 17}));
    EXPECT_EQ(pricesOf(composeBars(members, {{memberBar(0, 10)}, {}})), (std::vector<double>{10}));
}

TEST(CompositeBars, NoMembersAndNoBarsMakeNoMinutes) {
    EXPECT_TRUE(composeBars({}, {}).empty());
    EXPECT_TRUE(composeBars(kPair, {{}, {}}).empty());
}

TEST(CompositeBars, TakingABarGivesTheSameAsComposingAnew) {
    std::vector<CompositeMember> members{{"A", 2.0, 9.0}, {"B", -1.0, 0.0}, {"C", 0.5, 3.0}};
    std::vector<MinuteBars> bars{{memberBar(0, 10), memberBar(2, 12)}, {memberBar(3, 6)}, {}};
    MinuteBars composite = composeBars(members, bars);
    const std::vector<std::pair<size_t, MinuteBar>> changes{
        {0, memberBar(3, 13)}, {1, memberBar(3, 7)},  {2, memberBar(1, 4)},
        {0, memberBar(0, 9)},  {1, memberBar(1, 5)},  {2, memberBar(5, 6)},
        {0, memberBar(5, 1)},  {0, memberBar(2, 12)}, {1, memberBar(0, 8)}};
    for (const auto &[member, change] : changes) {
        const MinuteBars before = composite;
        const MinuteBars told = takeMemberBar(members, bars, composite, member, change);
        EXPECT_EQ(composite, composeBars(members, bars));
        // What is told is what differs.
        QMap<qint64, MinuteBar> shown;
        for (const MinuteBar &minute : before) {
            shown[minute.time] = minute;
        }
        for (const MinuteBar &minute : told) {
            EXPECT_TRUE(!shown.contains(minute.time) || shown[minute.time] != minute);
            shown[minute.time] = minute;
        }
        EXPECT_EQ(MinuteBars(shown.begin(), shown.end()), composite);
    }
}

namespace {

class CompositeFeedTest : public ::testing::Test {
protected:
    CompositeFeedTest() {
        mInner.setRunningDay(kToday);
        mInner.setBars("A", kToday, {memberBar(0, 10)});
        mInner.setBars("B", kToday, {memberBar(0, 6)});
        mInner.setAfterHours("A", kToday, {memberBar(335, 10)});
    }

    MarketFeed::Listener listener() {
        return [this](const MinuteUpdate &update) { mUpdates.push_back(update); };
    }

    tests::ScriptedFeed mInner;
    std::vector<MinuteUpdate> mUpdates;
    CompositeFeed mFeed{mInner, [](const QString &key, int) {
                            return key == "PAIR" ? std::make_optional(kPair) : std::nullopt;
                        }};
};

} // namespace

TEST_F(CompositeFeedTest, InstrumentsAreThoseOfTheOtherFeed) {
    EXPECT_EQ(pricesOf(mFeed.dayBars("A", kToday)), (std::vector<double>{10}));
    EXPECT_EQ(mFeed.afterHoursBars("A", kToday).size(), 1u);
    const MarketFeed::Subscription subscription = mFeed.subscribe("A", kToday, listener());
    mInner.change("A", memberBar(1, 11));
    ASSERT_EQ(mUpdates.size(), 1u);
    EXPECT_EQ(mUpdates[0].key, "A");
    mFeed.unsubscribe(subscription.id);
    EXPECT_EQ(mInner.listeners(), 0);
}

TEST_F(CompositeFeedTest, ADayOfACompositeComesFromItsMembers) {
    EXPECT_EQ(pricesOf(mFeed.dayBars("PAIR", kToday)), (std::vector<double>{14}));
    EXPECT_TRUE(mFeed.afterHoursBars("PAIR", kToday).empty());
}

TEST_F(CompositeFeedTest, ATickOfAMemberMovesTheLastMinute) {
    const MarketFeed::Subscription subscription = mFeed.subscribe("PAIR", kToday, listener());
    EXPECT_EQ(pricesOf(subscription.bars), (std::vector<double>{14}));
    mInner.change("B", memberBar(0, 7));
    mInner.change("A", memberBar(1, 11));
    mInner.change("B", memberBar(1, 7.5));
    ASSERT_EQ(mUpdates.size(), 3u);
    EXPECT_EQ(mUpdates[0].key, "PAIR");
    EXPECT_EQ(mUpdates[0].day, kToday);
    EXPECT_EQ(mUpdates[0].bar.time, timeAfterOpen(0));
    EXPECT_EQ(mUpdates[0].bar.price, 13);
    EXPECT_EQ(mUpdates[1].bar.time, timeAfterOpen(1));
    EXPECT_EQ(mUpdates[1].bar.price, 15);
    EXPECT_EQ(mUpdates[2].bar.price, 14.5);
    mFeed.unsubscribe(subscription.id);
    mInner.change("A", memberBar(2, 12));
    EXPECT_EQ(mUpdates.size(), 3u);
    EXPECT_EQ(mInner.listeners(), 0);
}

TEST_F(CompositeFeedTest, ARevisedMinuteOfAMemberChangesThoseInWhichItStandsAtIt) {
    mInner.setBars("A", kToday, {memberBar(0, 10), memberBar(2, 12)});
    mInner.setBars("B", kToday, {memberBar(0, 6), memberBar(1, 6), memberBar(2, 6)});
    mFeed.subscribe("PAIR", kToday, listener());
    mInner.change("A", memberBar(0, 9));
    ASSERT_EQ(mUpdates.size(), 2u);
    EXPECT_EQ(mUpdates[0].bar.time, timeAfterOpen(0));
    EXPECT_EQ(mUpdates[0].bar.price, 12);
    EXPECT_EQ(mUpdates[1].bar.time, timeAfterOpen(1));
    EXPECT_EQ(mUpdates[1].bar.price, 12);
}

TEST_F(CompositeFeedTest, ADayThatDoesNotRunHasNoSubscription) {
    const int yesterday = kToday - 86400;
    mInner.setBars("A", yesterday, {memberBar(-1440, 10)});
    const MarketFeed::Subscription subscription = mFeed.subscribe("PAIR", yesterday, listener());
    EXPECT_EQ(subscription.id, 0);
    EXPECT_EQ(pricesOf(subscription.bars), (std::vector<double>{15}));
    mFeed.unsubscribe(-77); // unknown ids are harmless
}
