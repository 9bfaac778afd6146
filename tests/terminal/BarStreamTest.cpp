#include "terminal/formula/BarStream.h"

#include "terminal/threads/Worker.h"
#include "tests/terminal/Samples.h"
#include "tests/terminal/ScriptedFeed.h"

#include <gtest/gtest.h>

#include <future>

using namespace terminal;
using tests::kShare;
using tests::kToday;
using tests::pricedMinute;
using tests::ScriptedFeed;

namespace {

class BarStreamTest : public ::testing::Test {
protected:
    BarStreamTest() {
        mFeed.setRunningDay(kToday);
        mFeed.setBars(kShare, kToday, {pricedMinute(60, 1)});
    }
    /// Runs a job on the worker and waits for it, and for all that were posted before.
    template <class Job> void onWorker(Job job) {
        std::promise<void> done;
        mHome.post([&] {
            job();
            done.set_value();
        });
        done.get_future().wait();
    }

    BarStream::Take taking() {
        return [this](const MinuteBars &bars) { mTaken.insert(mTaken.end(), bars.begin(), bars.end()); };
    }

    ScriptedFeed mFeed;
    Worker mHome;
    std::shared_ptr<BarStream> mStream = std::make_shared<BarStream>(mFeed, mHome, kShare, kToday);
    MinuteBars mTaken;
};

} // namespace

TEST_F(BarStreamTest, ItBeginsWithTheBarsUpToNowAndGoesOnWithChanges) {
    onWorker([this] { EXPECT_EQ(mStream->open(mStream, taking()), MinuteBars({pricedMinute(60, 1)})); });
    mFeed.change(kShare, pricedMinute(60, 2));
    mFeed.change(kShare, pricedMinute(120, 3));
    onWorker([this] { EXPECT_EQ(mTaken, MinuteBars({pricedMinute(60, 2), pricedMinute(120, 3)})); });
    onWorker([this] { mStream->close(); });
}

TEST_F(BarStreamTest, WhatComesWhileThePlaceIsBusyIsOneTakeOfTheNewestState) {
    int takes = 0;
    onWorker([&] {
        mStream->open(mStream, [&](const MinuteBars &bars) {
            ++takes;
            mTaken = bars;
        });
        for (int i = 0; i < 1000; ++i) {
            mFeed.change(kShare, pricedMinute(60, i));
        }
        mFeed.change(kShare, pricedMinute(120, 7));
        EXPECT_EQ(mHome.load(), 2) << "this job and one for all changes";
    });
    onWorker([&] {
        EXPECT_EQ(takes, 1);
        EXPECT_EQ(mTaken, MinuteBars({pricedMinute(60, 999), pricedMinute(120, 7)}));
        mStream->close();
    });
}

TEST_F(BarStreamTest, NothingIsTakenAfterTheClose) {
    onWorker([this] {
        mStream->open(mStream, taking());
        mFeed.change(kShare, pricedMinute(60, 2)); // queues up behind this job
        mStream->close();
    });
    onWorker([this] { EXPECT_TRUE(mTaken.empty()); });
    EXPECT_EQ(mFeed.listeners(), 0);
}

TEST_F(BarStreamTest, ItDoesNotKeepItsOwnerAlive) {
    const std::weak_ptr<BarStream> weak = mStream;
    onWorker([this] {
        mStream->open(mStream, taking());
        mStream.reset();
    });
    EXPECT_TRUE(weak.expired());
    mFeed.change(kShare, pricedMinute(120, 3));
    onWorker([this] { EXPECT_TRUE(mTaken.empty()); });
}

TEST_F(BarStreamTest, TheMinutesAfterHoursAreLookedAtAgain) {
    mFeed.setAfterHours(kShare, kToday, {pricedMinute(900, 5)});
    const auto stream = std::make_shared<BarStream>(mFeed, mHome, kShare, kToday, true);
    std::promise<void> looked;
    onWorker([&] {
        const MinuteBars bars = stream->open(stream, [&](const MinuteBars &taken) {
            mTaken.insert(mTaken.end(), taken.begin(), taken.end());
            if (mTaken.size() == 1) {
                looked.set_value();
            }
        });
        EXPECT_EQ(bars, MinuteBars({pricedMinute(900, 5)}));
    });
    looked.get_future().wait();
    onWorker([&] {
        EXPECT_EQ(mTaken.front(), pricedMinute(900, 5));
        stream->close();
    });
    EXPECT_EQ(mFeed.listeners(), 0);
}
