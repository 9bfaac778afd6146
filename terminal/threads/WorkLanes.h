#pragma once

#include "terminal/threads/WorkerPool.h"

#include <condition_variable>
#include <mutex>

namespace terminal {

/// Kinds of work that have workers of their own, so that one never waits for another.
enum class WorkLane {
    Price, ///< short and always wanted: one worker
    Quick, ///< known to be short
    First, ///< not known yet: one worker
    Slow, ///< known to be long: one worker, which leaves the processor to all others
    Model, ///< waits for another process: two workers
};

/// The workers of all lanes. Any thread.
class WorkLanes {
public:
    /// With so many workers for what is quick, at least one.
    explicit WorkLanes(int quickWorkers);

    /// False when the lanes are closed: the job is dropped.
    bool post(WorkLane lane, WorkPlace::Job job);
    void postAfter(int milliseconds, WorkPlace::Job job);
    /// Runs all that is posted, and what that posts, closes the lanes and ends the threads. Not from a job.
    void finish();

private:
    WorkerPool &poolOf(WorkLane lane);
    void ended();

    std::mutex mLock; ///< guards what follows
    std::condition_variable mIdle;
    int mUnderWay = 0; ///< jobs that wait or run
    bool mIsClosed = false;

    // The threads use what is above.
    WorkerPool mPrice{1};
    WorkerPool mQuick;
    WorkerPool mFirst{1};
    WorkerPool mSlow;
    WorkerPool mModel;
};

/// Jobs that run one after the other, each on the lane that is set when its turn comes. Any thread. Owned by shared
/// pointers; the lanes have to outlive it.
class SerialWork : public WorkPlace, public std::enable_shared_from_this<SerialWork> {
public:
    SerialWork(WorkLanes &lanes, WorkLane lane) : mLanes(lanes), mLane(lane) {}

    void post(Job job) override;
    void postAfter(int milliseconds, Job job) override;
    /// For the jobs whose turn comes from now on.
    void setLane(WorkLane lane) { mLane = lane; }

private:
    void runFirst();
    void postFirst();

    WorkLanes &mLanes;
    std::atomic<WorkLane> mLane;
    std::mutex mLock; ///< guards what follows
    std::deque<Job> mJobs; ///< the first one has been posted, or runs
};

} // namespace terminal
