#include "terminal/replay/ReplayModel.h"

#include "terminal/threads/SteadyTime.h"

#include <QPointer>
#include <QTimer>

#include <utility>

namespace terminal {

ReplayModel::ReplayModel(std::shared_ptr<ReplayRequest> request, Worker &worker, DeliveryQueue &queue,
                         int pauseMilliseconds)
    : mRequest(std::move(request)), mWorker(worker), mQueue(queue), mDue(pauseMilliseconds) {}

ReplayModel::~ReplayModel() {
    mModel->stop();
}

void ReplayModel::played(qint64 until) {
    mPlayedUntil = until;
    mDue.note(SeriesChange::Whole);
    runWhenDue();
}

void ReplayModel::runWhenDue() {
    if (const std::optional<int> wait = mDue.wait(steadyMilliseconds())) {
        mDue.await(); // until the run has ended
        QTimer::singleShot(*wait, this, &ReplayModel::run);
    }
}

void ReplayModel::run() {
    mDue.take();
    mDue.await();
    // The worker owns nothing that has callbacks: they would be released there.
    mWorker.post([job = mRequest->modelJob(mPlayedUntil), model = mModel, &queue = mQueue,
                  self = QPointer<ReplayModel>(this)] {
        const auto outcome = std::make_shared<ScriptModelOutcome>(job(*model));
        queue.post([self, outcome] {
            if (self) {
                self->finish(std::move(*outcome));
            }
        });
    });
}

void ReplayModel::finish(ScriptModelOutcome outcome) {
    const bool again = mDue.take() != DueResult::Due::Nothing;
    mDue.sent(steadyMilliseconds());
    if (!mRequest->isWithdrawn()) {
        mRequest->sendModel(std::move(outcome));
    }
    if (again) {
        mDue.note(SeriesChange::Whole);
        runWhenDue();
    }
}

} // namespace terminal
