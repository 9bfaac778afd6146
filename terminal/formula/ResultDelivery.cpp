#include "terminal/formula/ResultDelivery.h"

#include "terminal/formula/ResultType.h"

#include <QThread>

#include <utility>

namespace terminal {

ResultDelivery::ResultDelivery(DeliveryQueue &queue, Subject subject,
                               std::shared_ptr<const ResultCallbacks> callbacks)
    : mQueue(queue), mSubject(std::move(subject)), mCallbacks(std::move(callbacks)) {}

void ResultDelivery::post(Call call) {
    mQueue.post([self = shared_from_this(), call = std::move(call)]() mutable {
        self->mIsQuiet = false;
        self->deliver(call, false);
        std::lock_guard<std::mutex> hold(self->mLock);
        self->mLast = self->mCallbacks ? std::move(call) : nullptr;
    });
}

void ResultDelivery::repeat() {
    mQueue.post([self = shared_from_this()] {
        Call last;
        {
            std::lock_guard<std::mutex> hold(self->mLock);
            last = self->mLast;
        }
        if (last) {
            self->deliver(last, true);
        }
    });
}

void ResultDelivery::deliver(const Call &call, bool isAgain) {
    const std::shared_ptr<const ResultCallbacks> callbacks = this->callbacks();
    if (callbacks && !mIsWithdrawn) {
        call(*callbacks, isAgain);
    }
}

std::shared_ptr<const ResultCallbacks> ResultDelivery::callbacks() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mCallbacks;
}

template <class... Result> void ResultDelivery::takeHidden(const Result &...result) {
    std::lock_guard<std::mutex> hold(mLock);
    mHidden.take(result...);
}

void ResultDelivery::postSeries(FormulaSeries series, bool keepRange) {
    const auto meta = std::make_shared<se::RPCFormulaMetaResult>(std::move(series.meta));
    const auto result = std::make_shared<se::RPCFormulaResult>(std::move(series.result));
    {
        std::lock_guard<std::mutex> hold(mLock);
        mWaiting = nullptr; // points that follow come behind the series
    }
    post([this, meta, result, keepRange](const ResultCallbacks &callbacks, bool isAgain) {
        takeHidden(*meta, *result);
        if (callbacks.onHistory) {
            const HistoryCache::Delivery delivery(mSubject.cache, mSubject.day);
            callbacks.onHistory(meta, result, mSubject.requestId, kWholeSeries, mSubject.formula,
                                keepRange || isAgain);
        }
    });
}

void ResultDelivery::postPoint(se::RPCFormulaInstantResult made) {
    if (const auto point = newWaiting(std::move(made))) {
        post([this, point](const ResultCallbacks &callbacks, bool) {
            settle(point);
            takeHidden(*point);
            if (callbacks.onRealtime) {
                callbacks.onRealtime(0, mSubject.requestId, point);
            }
        });
    }
}

ResultDelivery::PointPtr ResultDelivery::newWaiting(se::RPCFormulaInstantResult made) {
    std::lock_guard<std::mutex> hold(mLock);
    if (mWaiting && mWaiting->mTime == made.mTime) {
        *mWaiting = std::move(made);
        return nullptr;
    }
    mWaiting = std::make_shared<se::RPCFormulaInstantResult>(std::move(made));
    return mWaiting;
}

void ResultDelivery::settle(const PointPtr &point) {
    std::lock_guard<std::mutex> hold(mLock);
    if (mWaiting == point) {
        mWaiting = nullptr;
    }
}

void ResultDelivery::finish() {
    mQueue.post([self = shared_from_this()] {
        std::shared_ptr<const ResultCallbacks> callbacks; // released without the lock
        std::lock_guard<std::mutex> hold(self->mLock);
        std::swap(callbacks, self->mCallbacks);
        self->mLast = nullptr;
    });
}

void ResultDelivery::withdraw() {
    mIsWithdrawn = true;
    std::shared_ptr<const ResultCallbacks> callbacks;
    {
        std::lock_guard<std::mutex> hold(mLock);
        callbacks = std::exchange(mCallbacks, nullptr);
        mLast = nullptr;
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
