#pragma once

#include "tests/containers/MainWidgetFixture.h"

#include <atomic>
#include <random>
#include <thread>

namespace tests {

constexpr int kServedPoints = 100; ///< minutes that the service knows

/// A whole view whose formula service has threads of its own: they answer whatever is requested, histories and points
/// mixed, as often as they are allowed to.
class ServedView : public MainWidgetFixture {
protected:
    ServedView() { mHost.mLog.setRecording(false); }
    ~ServedView() override { stopService(); }

    void startService() {
        constexpr unsigned kThreads = 3;
        mStop = false;
        mAllowed = mDelivered.load();
        for (unsigned seed = 0; seed < kThreads; ++seed) {
            mService.emplace_back([this, seed] { serve(seed); });
        }
    }
    void stopService() {
        mStop = true;
        for (std::thread &thread : mService) {
            thread.join();
        }
        mService.clear();
    }
    void allow(int deliveries) { mAllowed += deliveries; }
    int delivered() const { return mDelivered; }
    bool hasDeliveredAll() const { return mDelivered >= mAllowed; }

    static void deliver(const fakehost::LiveRequest &request, int points, double price, bool last) {
        const std::vector<double> values(static_cast<std::size_t>(points), price);
        request.onHistory(makeMeta(2), makeResult(minuteTimes(dayOf(request), 570, points), values, values),
                          request.id(), 1, QString(), last);
    }

private:
    void serve(unsigned seed) {
        std::mt19937 random(seed);
        while (!mStop) {
            const QList<fakehost::LiveRequest> live = mHost.mFormulas.mLive.all();
            if (live.isEmpty() || hasDeliveredAll()) {
                std::this_thread::yield();
                continue;
            }
            ++mDelivered;
            deliverAny(live[static_cast<int>(random() % unsigned(live.size()))], random);
        }
    }
    static void deliverAny(const fakehost::LiveRequest &request, std::mt19937 &random) {
        const double price = 9.0 + static_cast<double>(random() % 200) / 100.0;
        if (random() % 6 == 0) {
            const int points = static_cast<int>(random() % kServedPoints) + 1;
            deliver(request, points, price, random() % 2 == 0);
        } else {
            const int minute = 570 + static_cast<int>(random() % kServedPoints);
            request.onRealtime(0, request.id(), makePoint(minuteTime(dayOf(request), minute), {price, price}));
        }
    }
    static int dayOf(const fakehost::LiveRequest &request) {
        return static_cast<int>(request.param.mStart.first / 1000);
    }

    std::vector<std::thread> mService;
    std::atomic<int> mDelivered{0};
    std::atomic<int> mAllowed{0}; ///< how many deliveries there may be by now
    std::atomic<bool> mStop{false};
};

} // namespace tests
