#pragma once

#include "terminal/formula/FormulaService.h"
#include "terminal/formula/HiddenVariables.h"
#include "terminal/formula/MinuteSeries.h"
#include "terminal/formula/ScriptModel.h"

#include <QElapsedTimer>

#include <atomic>
#include <utility>

namespace terminal {

/// One request of the formula service. What stands under `worker` is touched by its worker thread alone.
struct FormulaService::Request {
    /// What has to be sent.
    enum class Due { Nothing, Point, Whole };

    TC::CFormulaParam param;
    QString id;
    QString key; ///< of the instrument, as the feed knows it
    int day = 0;
    Worker *home = nullptr; ///< where it is worked on
    std::atomic<bool> withdrawn{false};

    std::mutex lock; ///< guards what follows
    std::shared_ptr<const Callbacks> callbacks;
    HiddenVariables hidden;
    std::shared_ptr<ScriptModelProcess> process; ///< of a model that runs
    ScriptModelProgress progress;
    const char *state = "waiting"; ///< of a model

    // worker
    std::unique_ptr<FormulaProgram> program;
    std::vector<qint64> positions;
    MinuteBars bars; ///< as the feed gave them
    PlacedBars placed; ///< the same on the positions of the day
    int subscription = 0;
    MinuteBars underlying; ///< of the instrument that the program reads beside its own
    int underlyingSubscription = 0;
    Due due = Due::Nothing;
    bool scheduled = false;
    QElapsedTimer sent; ///< since the last result

    bool isModel() const { return param.mLanguage == static_cast<qint32>(TC::EFormulaLanguage::Python); }
    std::shared_ptr<const Callbacks> takeCallbacks() {
        std::lock_guard<std::mutex> hold(lock);
        return std::exchange(callbacks, nullptr);
    }
    std::shared_ptr<const Callbacks> copyCallbacks() {
        std::lock_guard<std::mutex> hold(lock);
        return callbacks;
    }
    /// Marks it as withdrawn and ends its model.
    void withdraw() {
        withdrawn = true;
        std::lock_guard<std::mutex> hold(lock);
        if (process) {
            process->stop();
        }
    }
    /// Milliseconds until a result may be sent, when `interval` has to lie between two.
    int wait(qint64 interval) const {
        return sent.isValid() ? static_cast<int>(std::max<qint64>(0, interval - sent.elapsed())) : 0;
    }
};

/// Puts points that are not valid in front of a series, at these times.
void padSeries(se::RPCFormulaResult &series, const std::vector<qint64> &times);

} // namespace terminal
