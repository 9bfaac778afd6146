#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <deque>
#include <functional>
#include <mutex>

namespace terminal {

/// Hands work of other threads over to the user-interface thread, in the order of posting.
///
/// It runs what is queued in slices of a few milliseconds and lets the event loop turn in between, so that however
/// much is queued, mouse, keyboard and painting keep their turn.
class DeliveryQueue : public QObject {
    Q_OBJECT
public:
    using Task = std::function<void()>;

    /// Made on the user-interface thread. `sliceMilliseconds` is the longest run between two turns of the event
    /// loop; a task that has begun is finished.
    explicit DeliveryQueue(int sliceMilliseconds = 4);
    ~DeliveryQueue() override;

    /// Queues a task. Any thread; never waits for the tasks.
    void post(Task task);
    /// Tasks that wait.
    int pending() const;

private:
    Q_INVOKABLE void drain();
    bool takeFirst(Task &task);

    const int mSlice;
    QTimer mNextSlice;
    mutable std::mutex mLock; ///< guards what follows
    std::deque<Task> mTasks;
    bool mAwake = false; ///< a slice is due or under way
};

} // namespace terminal
