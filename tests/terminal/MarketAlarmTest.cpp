#include "terminal/market/MarketAlarm.h"
#include "terminal/market/MarketCalendar.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/SimulatedTicks.h"
#include "tests/terminal/Samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>

using namespace terminal;
using tests::clockTime;
using tests::kFriday;

namespace {

/// A thread that waits for a time of the market.
class WaitingThread {
public:
    WaitingThread(MarketAlarm &alarm, qint64 due)
        : mThread([this, &alarm, due] {
              alarm.waitUntil(due);
              mIsOver = true;
          }) {}
    ~WaitingThread() { join(); }
    void join() {
        if (mThread.joinable()) {
            mThread.join();
        }
    }
    bool isOver() const { return mIsOver; }

private:
    std::atomic<bool> mIsOver{false};
    std::thread mThread; // last
};

} // namespace

TEST(MarketAlarm, EndsWhenTheTimeHasCome) {
    const SimulatedClock clock(clockTime(kFriday, 15, 0), 600.0);
    MarketAlarm alarm(clock);
    alarm.waitUntil(clockTime(kFriday, 15, 3)); // 300 milliseconds
    EXPECT_GE(clock.now(), clockTime(kFriday, 15, 3));
}

TEST(MarketAlarm, WaitsWhileTheClockStandsStillUntilItIsSet) {
    SimulatedClock clock(clockTime(kFriday, 15, 0));
    clock.pause();
    MarketAlarm alarm(clock);
    WaitingThread waiting(alarm, clockTime(kFriday, 20, 0));
    EXPECT_FALSE(waiting.isOver());
    clock.setTime(clockTime(kFriday, 20, 0));
    waiting.join();
}

TEST(MarketAlarm, AnotherPaceIsLookedAt) {
    SimulatedClock clock(clockTime(kFriday, 15, 0));
    MarketAlarm alarm(clock);
    WaitingThread waiting(alarm, clockTime(kFriday, 15, 5)); // five minutes of real time
    clock.setPace(600.0);
    waiting.join();
}

TEST(MarketAlarm, WhatWakesBeforeTheWaitEndsIt) {
    SimulatedClock clock(clockTime(kFriday, 15, 0));
    MarketAlarm alarm(clock);
    alarm.nudge();
    alarm.waitUntil(clockTime(kFriday, 20, 0));
    alarm.ring();
    alarm.waitUntil(clockTime(kFriday, 20, 0));
    clock.setTime(clockTime(kFriday, 16, 0));
    alarm.waitUntil(clockTime(kFriday, 20, 0));
}

TEST(MarketAlarm, FollowsARealTimeThatIsToldByHand) {
    std::atomic<qint64> real{0};
    const SimulatedClock clock(clockTime(kFriday, 15, 0), 1.0, [&real] { return real.load(); });
    MarketAlarm alarm(clock);
    WaitingThread waiting(alarm, clockTime(kFriday, 15, 1));
    EXPECT_FALSE(waiting.isOver());
    real = kMinuteLength;
    waiting.join();
}

TEST(SimulatedClock, TellsHowMuchRealTimeATimeOfTheMarketIsAway) {
    qint64 real = 0;
    SimulatedClock clock(clockTime(kFriday, 9, 30), 60.0, [&real] { return real; });
    EXPECT_EQ(clock.realTimeUntil(clockTime(kFriday, 9, 31)), std::optional<qint64>(1000));
    EXPECT_EQ(clock.realTimeUntil(clockTime(kFriday, 9, 30) + 1), std::optional<qint64>(1))
        << "no less than one";
    EXPECT_EQ(clock.realTimeUntil(clockTime(kFriday, 9, 30)), std::optional<qint64>(0));
    EXPECT_EQ(clock.realTimeUntil(clockTime(kFriday, 9, 29)), std::optional<qint64>(0));
    clock.pause();
    EXPECT_EQ(clock.realTimeUntil(clockTime(kFriday, 9, 31)), std::nullopt);
    EXPECT_FALSE(clock.isMachineTime());
    EXPECT_TRUE(SimulatedClock(0).isMachineTime());
}

TEST(SimulatedClock, TellsOnlyRealChanges) {
    qint64 real = 0;
    SimulatedClock clock(clockTime(kFriday, 9, 30), 1.0, [&real] { return real; });
    int told = 0;
    const int id = clock.changes().add([&told] { ++told; });
    clock.setPace(1.0);
    clock.resume();
    EXPECT_EQ(told, 0);
    clock.setPace(2.0);
    clock.pause();
    EXPECT_EQ(told, 2);
    clock.pause();
    clock.setTime(clockTime(kFriday, 9, 30));
    EXPECT_EQ(told, 2) << "it stands there already";
    clock.setTime(clockTime(kFriday, 9, 40));
    clock.resume();
    EXPECT_EQ(told, 4);
    clock.changes().remove(id);
    clock.pause();
    EXPECT_EQ(told, 4);
}

TEST(SimulatedTicks, TheNextOneIsTheFirstOfAllThatAreToCome) {
    constexpr quint64 kSeed = 11;
    MinuteBars day;
    for (int i = 0; i < 90; ++i) {
        const double price = 10.0 + 0.01 * (i % 7);
        day.push_back({clockTime(kFriday, 9, 30) + i * qint64(kMinuteLength), price, price + 0.02, price - 0.02,
                       price, 10.0, i % 9 == 8 ? 0.0 : 5000.0, 50000.0});
    }
    std::vector<qint64> moments;
    for (size_t i = 0; i < day.size(); ++i) {
        for (const SimulatedTick &tick : ticksOfBar(day, i, kSeed)) {
            moments.push_back(tick.at);
        }
    }
    std::sort(moments.begin(), moments.end());
    for (qint64 time = day.front().time - 10 * kMinuteLength; time < day.back().time + 2 * kLongestLag;
         time += 500) {
        const auto after = std::upper_bound(moments.begin(), moments.end(), time);
        ASSERT_EQ(nextTickAfter(day, time, kSeed),
                  after == moments.end() ? std::nullopt : std::optional<qint64>(*after))
            << time - day.front().time;
    }
    EXPECT_EQ(nextTickAfter({}, 0, kSeed), std::nullopt);
}

TEST(MarketCalendar, AnotherDayComesAtMidnightOrWithTheAuctionOfTheEvening) {
    const qint64 midnight = timeOf(kFriday.addDays(1), 0);
    const qint64 auction = timeOf(kFriday, 20 * 60 + 55);
    EXPECT_EQ(MarketCalendar::nextChangeAfter(timeOf(kFriday, 0)), auction);
    EXPECT_EQ(MarketCalendar::nextChangeAfter(auction - 1), auction);
    EXPECT_EQ(MarketCalendar::nextChangeAfter(auction), midnight);
    EXPECT_EQ(MarketCalendar::nextChangeAfter(midnight - 1), midnight);
    const MarketCalendar calendar;
    for (const bool night : {false, true}) { // a fortnight, minute by minute
        for (qint64 time = timeOf(kFriday, 0); time < timeOf(kFriday.addDays(14), 0); time += kMinuteLength) {
            if (calendar.dayAt(time, night) != calendar.dayAt(time - 1, night)) {
                ASSERT_EQ(MarketCalendar::nextChangeAfter(time - 1), time);
            }
        }
    }
}
