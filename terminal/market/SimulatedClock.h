#pragma once

#include "host/services/CHostClock.h"
#include "terminal/threads/Listeners.h"

#include <functional>
#include <mutex>
#include <optional>

namespace terminal {

/// The clock of a simulated market: from a start on, market time runs at a pace, until it is paused. May be used
/// from any thread.
class SimulatedClock : public TC::CHostClock {
public:
    /// Answers milliseconds that only grow, at the speed of real time.
    using RealTime = std::function<qint64()>;

    static constexpr double kSlowest = 1.0;
    static constexpr double kFastest = 600.0;

    /// Starts at a market time, in milliseconds since the epoch, and runs at once. Without a source of real time it
    /// takes the machine's steady clock.
    explicit SimulatedClock(qint64 start, double pace = 1.0, RealTime real = {});

    QDateTime currentDateTime() const override;
    /// The market time in milliseconds since the epoch.
    qint64 now() const;

    /// Market seconds a real second, held within 1 and 600.
    void setPace(double pace);
    double pace() const;
    void pause();
    void resume();
    bool isPaused() const;
    /// Jumps to a market time.
    void setTime(qint64 time);

    /// Milliseconds of real time until the clock shows a market time, if nobody sets it: 0 when that has passed, nothing
    /// while the clock stands still.
    std::optional<qint64> realTimeUntil(qint64 time) const;
    /// Whether real time is that of the machine's steady clock.
    bool isMachineTime() const { return mIsMachineTime; }
    /// Called when time goes on otherwise than before: it was set, paused or resumed, or has another pace.
    Listeners &changes() const { return mChanges; }

private:
    qint64 nowLocked() const;

    const bool mIsMachineTime;
    const RealTime mReal;
    mutable Listeners mChanges;
    mutable std::mutex mLock;
    qint64 mMarketBase;
    qint64 mRealBase;
    double mPace;
    bool mPaused = false;
};

} // namespace terminal
