#pragma once

#include "bench/MarketPublisher.h"

#include <vector>

namespace terminal {
class ChartView;
}

/// What of a view is on the screen, and how late its changes came there.
class ShownChanges {
public:
    /// The view is the one of this number among those of the published market. What it shows already does not count.
    ShownChanges(terminal::ChartView &view, MarketTimes &times, int number);

    QObject *graph() const;
    /// The graph is about to be painted with what its data is now.
    void onPaint();
    /// What has been painted is in the window: how late every change up to it was, in milliseconds, is added.
    void onShown(double time, std::vector<double> &late);

private:
    terminal::ChartView &mView;
    const std::atomic<double> *const mTimes;
    quint64 mPainted = 0;
    quint64 mShown = 0;
};
