#pragma once

#include "host/services/CFormulaManager.h"
#include "terminal/formula/HistoryCache.h"
#include "terminal/formula/RequestTools.h"

#include <atomic>
#include <functional>
#include <memory>
#include <optional>

namespace terminal {

/// One request of a replay: the whole day, and as much of it as has been played. What has been played stands on the
/// positions of the day, and nothing after it reaches a callback. What is sent is of no day that views share.
///
/// On the user-interface thread, but for withdraw().
class ReplayRequest {
public:
    /// The tools and the cache have to outlive it; the cache may be null.
    ReplayRequest(const RequestTools &tools, const TC::CFormulaParam &param, int day,
                  TC::FormulaHistoryCallback onHistory, TC::FormulaRealtimeCallback onRealtime,
                  HistoryCache *cache);

    const QString &id() const { return mId; }
    bool isModel() const { return mIsModel; }
    /// Nothing is sent afterwards. Any thread.
    void withdraw() { mIsWithdrawn = true; }
    bool isWithdrawn() const { return mIsWithdrawn; }

    bool isBegun() const { return mIsBegun; }
    /// It plays nothing until it is begun anew.
    void reset() { mIsBegun = false; }
    /// Begins with the minutes up to a time, and sends the series of a formula.
    void begin(qint64 time);
    /// Time of the next minute; nothing when all are played or it has not begun.
    std::optional<qint64> nextTime() const;
    /// Plays the minutes up to a time, and sends them of a formula.
    void play(qint64 until);

    /// Runs a script model over what has been played when it was asked for. It blocks; on any thread, and touches
    /// nothing of the request.
    using ModelJob = std::function<ScriptModelOutcome(ModelRun &run)>;
    ModelJob modelJob(qint64 until);
    /// Sends what came of a run; one that fails leaves the series as it was.
    void sendModel(ScriptModelOutcome outcome);

private:
    void readDay();
    void sendSeries(FormulaSeries series);
    void sendChange(SeriesChange change);

    const RequestTools &mTools;
    const TC::CFormulaParam mParam;
    const int mDay;
    const QString mId;
    const bool mIsModel;
    const TC::FormulaHistoryCallback mOnHistory;
    const TC::FormulaRealtimeCallback mOnRealtime;
    HistoryCache *const mCache;
    SeriesComputer mComputer; ///< as what follows, since the first beginning
    MinuteBars mBars; ///< the whole day
    std::vector<qint64> mPositions;
    bool mIsRead = false; ///< the day
    PlacedDay mPlaced; ///< what has been played
    size_t mPlayed = 0;
    bool mIsBegun = false;
    bool mIsShown = false; ///< a series has been sent since the beginning
    std::atomic<bool> mIsWithdrawn{false};
};

} // namespace terminal
