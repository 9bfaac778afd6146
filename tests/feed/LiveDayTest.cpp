#include "terminal/feed/LiveDay.h"
#include "terminal/feeder/InstrumentTape.h"
#include "terminal/market/SimulatedTicks.h"

#include <gtest/gtest.h>

#include <random>

using namespace terminal;

namespace {

constexpr int kFriday = 1763654400; // 2025-11-21
constexpr quint64 kRun = 1000;

qint64 minuteTime(int minute) {
    return (kFriday + minute * 60) * 1000LL;
}

MinuteBar barOf(int minute, double price) {
    return {minuteTime(minute), price, price, price, price, price, 100.0, 100.0 * price};
}

WireBar changeOf(quint64 sequence, int minute, double price, qint32 span = 0) {
    WireBar record;
    record.run = kRun;
    record.sequence = sequence;
    record.span = span;
    record.day = kFriday;
    record.bar = barOf(minute, price);
    return record;
}

WireBar keptOf(quint64 sequence, int minute, double price, qint32 span = 0) {
    WireBar record = changeOf(sequence, minute, price, span);
    record.kind = WireKind::Minute;
    return record;
}

constexpr auto kLive = LiveDay::Origin::Live;
constexpr auto kStream = LiveDay::Origin::Stream;

/// A day that has read the stream, with change 1 of 09:31.
LiveDay begunDay() {
    LiveDay day;
    day.take(changeOf(1, 571, 10.0), kLive);
    day.endReading();
    return day;
}

} // namespace

TEST(LiveDayTest, TheFirstRecordNeedsTheStream) {
    LiveDay day;
    EXPECT_TRUE(day.isBehind());
    const LiveDay::Taken taken = day.take(changeOf(1, 571, 10.0), kLive);
    EXPECT_TRUE(taken.isNews);
    EXPECT_TRUE(taken.needsStream);
    EXPECT_EQ(day.day(), kFriday);
    day.endReading();
    EXPECT_FALSE(day.isBehind());
}

TEST(LiveDayTest, ChangesInOrderMissNothing) {
    LiveDay day = begunDay();
    EXPECT_FALSE(day.take(changeOf(2, 571, 10.1, 1), kLive).needsStream);
    EXPECT_FALSE(day.take(changeOf(3, 572, 10.2), kLive).needsStream);
    EXPECT_FALSE(day.isBehind());
    EXPECT_EQ(day.bars(), (MinuteBars{barOf(571, 10.1), barOf(572, 10.2)}));
}

TEST(LiveDayTest, ADoubledChangeIsNoNews) {
    LiveDay day = begunDay();
    day.take(changeOf(2, 572, 10.2), kLive);
    const LiveDay::Taken again = day.take(changeOf(2, 572, 10.2), kLive);
    EXPECT_FALSE(again.isNews);
    EXPECT_FALSE(again.needsStream);
    EXPECT_FALSE(day.isBehind());
}

TEST(LiveDayTest, ALateChangeDoesNotReplaceANewerOne) {
    LiveDay day = begunDay();
    day.take(changeOf(3, 571, 10.3, 2), kLive);
    EXPECT_FALSE(day.take(changeOf(2, 571, 10.2, 1), kLive).isNews);
    EXPECT_EQ(day.bars(), MinuteBars{barOf(571, 10.3)});
    EXPECT_FALSE(day.isBehind()); // the third replaced both
}

TEST(LiveDayTest, AGapWithinAMinuteMissesNothing) {
    LiveDay day = begunDay();
    EXPECT_FALSE(day.take(changeOf(6, 571, 10.5, 5), kLive).needsStream);
    EXPECT_FALSE(day.isBehind());
}

TEST(LiveDayTest, AGapOverMinutesIsNoPriceAndIsFilledFromTheStream) {
    LiveDay day = begunDay();
    // 2 of 09:31 and 3 of 09:32 are lost.
    EXPECT_TRUE(day.take(changeOf(4, 573, 10.4), kLive).needsStream);
    EXPECT_TRUE(day.isBehind());
    EXPECT_EQ(day.bars(), (MinuteBars{barOf(571, 10.0), barOf(573, 10.4)})); // no minute of 09:32
    // The stream has 09:31 alone so far, which does not tell 3.
    day.take(keptOf(2, 571, 10.2), kStream);
    day.endReading();
    EXPECT_TRUE(day.isBehind());
    // Its next minute covers the gap: the stream is read once more.
    EXPECT_TRUE(day.take(keptOf(3, 572, 10.3), kLive).needsStream);
    day.take(keptOf(2, 571, 10.2), kStream);
    day.take(keptOf(3, 572, 10.3), kStream);
    day.endReading();
    EXPECT_FALSE(day.isBehind());
    EXPECT_EQ(day.bars(), (MinuteBars{barOf(571, 10.2), barOf(572, 10.3), barOf(573, 10.4)}));
}

TEST(LiveDayTest, AMinuteTellsOfChangesThatWereLost) {
    LiveDay day = begunDay();
    EXPECT_TRUE(day.take(keptOf(4, 573, 10.4), kLive).needsStream); // 2 and 3 are unknown
    EXPECT_TRUE(day.isBehind());
    LiveDay other = begunDay();
    EXPECT_FALSE(other.take(keptOf(2, 571, 10.1), kLive).needsStream); // it is the lost one itself
    EXPECT_FALSE(other.isBehind());
}

TEST(LiveDayTest, ARestartedFeedNeedsTheStreamAndHoldsOverTheOneBefore) {
    LiveDay day = begunDay();
    WireBar record = changeOf(1, 571, 11.0);
    record.run = kRun + 1;
    EXPECT_TRUE(day.take(record, kLive).needsStream);
    EXPECT_TRUE(day.isBehind());
    EXPECT_EQ(day.bars(), MinuteBars{barOf(571, 11.0)});
    EXPECT_FALSE(day.take(changeOf(9, 571, 10.9), kLive).isNews); // of the run before
    EXPECT_TRUE(day.take(changeOf(9, 570, 10.0), kStream).isNews); // a minute that the new run has not told
}

TEST(LiveDayTest, TheNextDayBeginsEmpty) {
    LiveDay day = begunDay();
    WireBar monday = changeOf(2, 571, 12.0);
    monday.day = kFriday + 3 * 86400;
    monday.bar.time += 3 * 86400 * 1000LL;
    EXPECT_TRUE(day.take(monday, kLive).isNews);
    EXPECT_EQ(day.day(), monday.day);
    EXPECT_EQ(day.bars(), MinuteBars{monday.bar});
    EXPECT_FALSE(day.take(changeOf(3, 572, 10.0), kStream).isNews); // of the day before
    EXPECT_EQ(day.bars().size(), 1u);
}

TEST(LiveDayTest, WhatIsNewIsToldByRevision) {
    LiveDay day = begunDay();
    const quint64 before = day.revision();
    day.take(changeOf(2, 572, 10.2), kLive);
    EXPECT_EQ(day.barsSince(before), MinuteBars{barOf(572, 10.2)});
    EXPECT_EQ(day.barsSince(day.revision()), MinuteBars{});
}

// Messages that are lost, doubled and in another order: at the end the day is as it was sent, and before that no minute is
// one that was never sent.
TEST(LiveDayTest, WhateverHappensToTheMessagesTheDayIsAsItWasSent) {
    MinuteBars whole;
    for (int minute = 570; minute < 630; ++minute) {
        whole.push_back(
            {minuteTime(minute), 10.0, 10.5, 9.5, 10.0 + minute % 7 * 0.05, 10.0, 1000.0 + minute, 5.0});
    }
    for (unsigned seed = 1; seed <= 10; ++seed) {
        std::mt19937 random(seed);
        const auto chance = [&random](unsigned of) { return random() % of == 0; };
        InstrumentTape tape(kRun);
        LiveDay day;
        std::vector<WireBar> stream;
        std::vector<WireBar> held;
        std::map<qint64, std::vector<MinuteBar>> sent;
        std::map<qint64, quint64> last; // change of a minute
        quint64 heard = 0; // a loss is seen by what comes after it
        tape.beginDay(kFriday, {}, 0);
        bool isReadingWanted = true;
        const auto deliver = [&](const WireBar &record) {
            isReadingWanted = day.take(record, kLive).needsStream || isReadingWanted;
            heard = std::max(heard, record.sequence);
        };
        qint64 from = minuteTime(500);
        for (qint64 now = minuteTime(560); now <= minuteTime(640); now += 10000) {
            for (const SimulatedTick &tick : ticksBetween(whole, from, now, seed)) {
                sent[tick.bar.time].push_back(tick.bar);
                const WireBar record = tape.change(tick.bar);
                last[tick.bar.time] = record.sequence;
                if (chance(4)) {
                    continue; // lost
                }
                if (chance(8)) {
                    held.push_back(record); // late
                    continue;
                }
                deliver(record);
                if (chance(8)) {
                    deliver(record);
                }
            }
            from = now;
            for (const WireBar &record : tape.finished(now)) {
                stream.push_back(record);
                if (!chance(4)) {
                    deliver(record);
                }
            }
            if (chance(3)) {
                for (const WireBar &record : std::exchange(held, {})) {
                    deliver(record);
                }
            }
            if (isReadingWanted && chance(2)) {
                isReadingWanted = false;
                for (const WireBar &record : stream) {
                    day.take(record, kStream);
                }
                day.endReading();
            }
            for (const MinuteBar &bar : day.bars()) {
                const auto &known = sent[bar.time];
                ASSERT_NE(std::find(known.begin(), known.end(), bar), known.end()) << seed;
            }
            if (!day.isBehind()) { // every minute that is over and was heard of is there, as it was told last
                for (const MinuteBar &bar : tape.bars()) {
                    if (bar.time <= now && last[bar.time] <= heard) {
                        const MinuteBars bars = day.bars();
                        ASSERT_NE(std::find(bars.begin(), bars.end(), bar), bars.end()) << seed << " " << now;
                    }
                }
            }
        }
        day.loseTouch();
        for (const WireBar &record : stream) {
            day.take(record, kStream);
        }
        day.endReading();
        EXPECT_FALSE(day.isBehind()) << seed;
        EXPECT_EQ(day.bars(), whole) << seed;
    }
}
