#pragma once

#include "terminal/formula/DueResult.h"
#include "terminal/replay/ReplayRequest.h"
#include "terminal/threads/DeliveryQueue.h"
#include "terminal/threads/Worker.h"

#include <QObject>

#include <memory>

namespace terminal {

/// The runs of a replayed script model, on a worker: one when it begins, and after minutes have been played another one,
/// with the pause between two that the models have. One run is under way at a time, and what comes of it after the end
/// of this object is dropped.
///
/// On the user-interface thread.
class ReplayModel : public QObject {
    Q_OBJECT
public:
    /// The worker and the queue have to outlive it.
    ReplayModel(std::shared_ptr<ReplayRequest> request, Worker &worker, DeliveryQueue &queue,
                int pauseMilliseconds);
    ~ReplayModel() override;

    /// Minutes have been played up to a time, the first call up to the beginning.
    void played(qint64 until);

private:
    void runWhenDue();
    void run();
    void finish(ScriptModelOutcome outcome);

    const std::shared_ptr<ReplayRequest> mRequest;
    Worker &mWorker;
    DeliveryQueue &mQueue;
    const std::shared_ptr<ModelRun> mModel = std::make_shared<ModelRun>();
    DueResult mDue;
    qint64 mPlayedUntil = 0;
};

} // namespace terminal
