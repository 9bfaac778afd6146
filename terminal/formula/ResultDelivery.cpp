#include "terminal/formula/ResultDelivery.h"

#include "terminal/formula/ResultType.h"

#include <QThread>

#include <utility>

namespace terminal {

ResultDelivery::ResultDelivery(DeliveryQueue &queue, Subject subject,
                               std::shared_ptr<const ResultCallbacks> callbacks)
    : mQueue(queue), mSubject(std::move(subject)), mCallbacks(std::move(callbacks)) {}

void ResultDelivery::post(std::function<void(const ResultCallbacks &)> call) {
    mQueue.post([self = shared_from_this(), call = std::move(call)] {
        std::shared_ptr<const ResultCallbacks> callbacks;
        {
            std::lock_guard<std::mutex> hold(self->mLock);
            callbacks = self->mCallbacks;
        }
        if (callbacks && !self->mIsWithdrawn) {
            call(*callbacks);
        }
    });
}

template <class... Result> void ResultDelivery::takeHidden(const Result &...result) {
    std::lock_guard<std::mutex> hold(mLock);
    mHidden.take(result...);
}

void ResultDelivery::postSeries(FormulaSeries series, bool keepRange) {
    const auto meta = std::make_shared<se::RPCFormulaMetaResult>(std::move(series.meta));
    const auto result = std::make_shared<se::RPCFormulaResult>(std::move(series.result));
    post([this, meta, result, keepRange](const ResultCallbacks &callbacks) {
        takeHidden(*meta, *result);
        if (callbacks.onHistory) {
            const HistoryCache::Delivery delivery(mSubject.cache, mSubject.day);
            callbacks.onHistory(meta, result, mSubject.requestId, kWholeSeries, mSubject.formula, keepRange);
        }
    });
}

void ResultDelivery::postPoint(se::RPCFormulaInstantResult made) {
    const auto point = std::make_shared<se::RPCFormulaInstantResult>(std::move(made));
    post([this, point](const ResultCallbacks &callbacks) {
        takeHidden(*point);
        if (callbacks.onRealtime) {
            callbacks.onRealtime(0, mSubject.requestId, point);
        }
    });
}

void ResultDelivery::finish() {
    mQueue.post([self = shared_from_this()] {
        std::shared_ptr<const ResultCallbacks> callbacks; // released without the lock
        std::lock_guard<std::mutex> hold(self->mLock);
        std::swap(callbacks, self->mCallbacks);
    });
}

void ResultDelivery::withdraw() {
    mIsWithdrawn = true;
    std::shared_ptr<const ResultCallbacks> callbacks;
    {
        std::lock_guard<std::mutex> hold(mLock);
        callbacks = std::exchange(mCallbacks, nullptr);
    }
    if (QThread::currentThread() != mQueue.thread()) {
        // The last owner of a chart's data must not be a thread that cannot destroy it.
        mQueue.post([callbacks = std::move(callbacks)] {});
    }
}

std::optional<size_t> ResultDelivery::hiddenBytes() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mCallbacks ? std::nullopt : std::make_optional(mHidden.bytes());
}

QString ResultDelivery::hiddenAt(int index) const {
    std::lock_guard<std::mutex> hold(mLock);
    return mHidden.textAt(index);
}

} // namespace terminal
