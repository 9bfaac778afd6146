// Changes of tasks, brought to the thread of whoever shows them.

#include "linkage/TaskFeed.h"

#include "tests/fakehost/FakeHost.h"

#include <QCoreApplication>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>
#include <thread>

namespace {

using StockKeys = std::vector<std::string>;

class TaskFeedTest : public testing::Test {
protected:
    TaskFeedTest() {
        QObject::connect(mFeed.get(), &TC::TaskFeed::changed, mFeed.get(), [this](const StockKeys &keys) {
            mTold.push_back(keys);
            mToldHere = mToldHere && std::this_thread::get_id() == mHome;
        });
    }
    void changeElsewhere(const std::vector<StockKeys> &changes) {
        std::thread([&] {
            for (const StockKeys &keys : changes) {
                mHost.mLinkage.sigTaskChanged(keys);
            }
        }).join();
    }

    fakehost::FakeHost mHost;
    std::unique_ptr<TC::TaskFeed> mFeed = std::make_unique<TC::TaskFeed>(mHost.mLinkage);
    std::vector<StockKeys> mTold;
    const std::thread::id mHome = std::this_thread::get_id();
    bool mToldHere = true;
};

TEST_F(TaskFeedTest, ChangesOfItsOwnThreadAreToldAtOnceAsTheyCome) {
    mHost.mLinkage.sigTaskChanged({"SZ000001", "SH600000"});
    mHost.mLinkage.sigTaskChanged({});
    EXPECT_EQ(mTold, (std::vector<StockKeys>{{"SZ000001", "SH600000"}, {}}));
}

TEST_F(TaskFeedTest, ChangesOfAnotherThreadAreToldTogetherAndHere) {
    changeElsewhere({{"SZ000001"}, {"SH600000", "SZ000001"}, {}, {"SH600001"}});
    EXPECT_TRUE(mTold.empty()) << "not before this thread comes to it";
    ASSERT_TRUE(QTest::qWaitFor([&] { return !mTold.empty(); }, 10000));
    EXPECT_EQ(mTold, (std::vector<StockKeys>{{"SH600000", "SH600001", "SZ000001"}}));
    EXPECT_TRUE(mToldHere);
    QCoreApplication::processEvents();
    EXPECT_EQ(mTold.size(), 1u) << "once";
    changeElsewhere({{"SH600002"}});
    ASSERT_TRUE(QTest::qWaitFor([&] { return mTold.size() > 1; }, 10000));
    EXPECT_EQ(mTold.back(), StockKeys{"SH600002"}) << "what was told is forgotten";
}

TEST_F(TaskFeedTest, EmptyChangeOfAnotherThreadTellsNothing) {
    changeElsewhere({{}});
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_TRUE(mTold.empty());
}

TEST_F(TaskFeedTest, FeedMayGoWithChangesUntold) {
    changeElsewhere({{"SH600000"}});
    mFeed.reset();
    EXPECT_EQ(mHost.mLinkage.sigTaskChanged.num_slots(), 0u);
    changeElsewhere({{"SH600000"}});
    QCoreApplication::processEvents();
    EXPECT_TRUE(mTold.empty());
}

} // namespace
