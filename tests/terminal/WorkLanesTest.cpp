#include "terminal/threads/WorkLanes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <future>
#include <vector>

using namespace terminal;

namespace {

/// Holds a lane up while it lives.
class HeldLane {
public:
    HeldLane(WorkLanes &lanes, WorkLane lane) {
        lanes.post(lane, [wait = mRelease.get_future().share()] { wait.wait(); });
    }
    ~HeldLane() { mRelease.set_value(); }
    HeldLane(const HeldLane &) = delete;
    HeldLane &operator=(const HeldLane &) = delete;

private:
    std::promise<void> mRelease;
};

} // namespace

TEST(WorkLanes, AHeldLaneHoldsUpNoOther) {
    WorkLanes lanes(1);
    for (const WorkLane held : {WorkLane::Quick, WorkLane::First, WorkLane::Slow}) {
        const HeldLane hold(lanes, held);
        for (const WorkLane other :
             {WorkLane::Price, WorkLane::Quick, WorkLane::First, WorkLane::Slow, WorkLane::Model}) {
            if (other != held) {
                std::promise<void> done;
                ASSERT_TRUE(lanes.post(other, [&] { done.set_value(); }));
                done.get_future().wait();
            }
        }
    }
    lanes.finish();
}

TEST(WorkLanes, FinishingRunsWhatIsPostedAndWhatThatPostsAndDropsTheRest) {
    WorkLanes lanes(2);
    std::atomic<int> runs{0};
    const auto work = std::make_shared<SerialWork>(lanes, WorkLane::Price);
    for (int i = 0; i < 20; ++i) {
        work->post([&, i] {
            ++runs;
            work->setLane(i % 2 == 0 ? WorkLane::Slow : WorkLane::Quick);
            work->post([&] { ++runs; });
        });
    }
    lanes.finish();
    EXPECT_EQ(runs, 40);
    EXPECT_FALSE(lanes.post(WorkLane::Price, [&] { ++runs; }));
    const auto held = std::make_shared<int>(1);
    work->post([held] {});
    EXPECT_EQ(held.use_count(), 1) << "a dropped job lets go of what it holds";
    EXPECT_EQ(runs, 40);
}

TEST(WorkLanes, SerialWorkRunsInOrderOnWhateverLane) {
    WorkLanes lanes(3);
    std::vector<int> order;
    const auto work = std::make_shared<SerialWork>(lanes, WorkLane::Quick);
    for (int i = 0; i < 300; ++i) {
        work->post([&, i] {
            order.push_back(i); // no lock: one at a time
            work->setLane(i % 3 == 0 ? WorkLane::First : WorkLane::Quick);
        });
    }
    lanes.finish();
    ASSERT_EQ(order.size(), 300u);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST(WorkLanes, AJobForLaterComesThoughItsLaneIsHeld) {
    WorkLanes lanes(1);
    const HeldLane hold(lanes, WorkLane::Slow);
    const auto work = std::make_shared<SerialWork>(lanes, WorkLane::Slow);
    std::promise<void> done;
    work->postAfter(1, [&] { done.set_value(); });
    work->setLane(WorkLane::Quick);
    done.get_future().wait();
}
