#include "terminal/formula/BarStream.h"

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

    ScriptedFeed mFeed;
    Worker mHome;
    std::shared_ptr<BarStream> mStream = std::make_shared<BarStream>(mFeed, mHome, kShare, kToday);
    MinuteBars mTaken;
};

} // namespace

TEST_F(BarStreamTest, ItBeginsWithTheBarsUpToNowAndGoesOnWithChanges) {
    onWorker([this] {
        EXPECT_EQ(mStream->open(mStream, [this](const MinuteBar &bar) { mTaken.push_back(bar); }),
                  MinuteBars({pricedMinute(60, 1)}));
    });
    mFeed.change(kShare, pricedMinute(60, 2));
    mFeed.change(kShare, pricedMinute(120, 3));
    onWorker([this] { EXPECT_EQ(mTaken, MinuteBars({pricedMinute(60, 2), pricedMinute(120, 3)})); });
    onWorker([this] { mStream->close(); });
}

TEST_F(BarStreamTest, NothingIsTakenAfterTheClose) {
    onWorker([this] {
        mStream->open(mStream, [this](const MinuteBar &bar) { mTaken.push_back(bar); });
        mFeed.change(kShare, pricedMinute(60, 2)); // queues up behind this job
        mStream->close();
    });
    onWorker([this] { EXPECT_TRUE(mTaken.empty()); });
    EXPECT_EQ(mFeed.listeners(), 0);
}

TEST_F(BarStreamTest, ItDoesNotKeepItsOwnerAlive) {
    const std::weak_ptr<BarStream> weak = mStream;
    onWorker([this] {
        mStream->open(mStream, [this](const MinuteBar &bar) { mTaken.push_back(bar); });
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
        const MinuteBars bars = stream->open(stream, [&](const MinuteBar &bar) {
            mTaken.push_back(bar);
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
