#include "terminal/replay/ReplayRequest.h"

#include "terminal/formula/ResultType.h"

#include <algorithm>
#include <utility>

namespace terminal {

ReplayRequest::ReplayRequest(const RequestTools &tools, const TC::CFormulaParam &param, int day,
                             TC::FormulaHistoryCallback onHistory, TC::FormulaRealtimeCallback onRealtime,
                             HistoryCache *cache)
    : mTools(tools), mParam(param), mDay(day), mId(QString::fromStdString(param.mRequestId)),
      mIsModel(isScriptModel(param)), mOnHistory(std::move(onHistory)), mOnRealtime(std::move(onRealtime)),
      mCache(cache) {}

/// Not when it is asked for: who adds ten panes gets an answer first, and then one after the other.
void ReplayRequest::readDay() {
    mComputer = mTools.computerOf(mParam, mDay);
    mBars = mTools.barsOf(mParam, mDay);
    mPositions = mTools.positionsOf(mParam, mDay);
    mIsRead = true;
}

void ReplayRequest::begin(qint64 time) {
    if (!mIsRead) {
        readDay();
    }
    const auto first = std::partition_point(mBars.begin(), mBars.end(),
                                            [time](const MinuteBar &bar) { return bar.time <= time; });
    mIsBegun = true;
    mIsShown = false;
    mPlayed = static_cast<size_t>(first - mBars.begin());
    mPlaced = PlacedDay(MinuteBars(mBars.begin(), first), mPositions);
    if (!mIsModel) {
        sendSeries(mComputer.series(mPlaced.placed()));
    }
}

std::optional<qint64> ReplayRequest::nextTime() const {
    return mIsBegun && mPlayed < mBars.size() ? std::make_optional(mBars[mPlayed].time) : std::nullopt;
}

void ReplayRequest::play(qint64 until) {
    while (!mIsWithdrawn && nextTime().value_or(until + 1) <= until) {
        const MinuteBar &bar = mBars[mPlayed++];
        const SeriesChange change = mPlaced.take(bar);
        if (!mIsModel) {
            sendChange(change);
        }
    }
}

/// The first point of a day stands alone as any other.
void ReplayRequest::sendChange(SeriesChange change) {
    const PlacedBars &placed = mPlaced.placed();
    const bool isFirst = placed.leading.empty() && placed.bars.size() == 1;
    if (change == SeriesChange::Whole && !isFirst) {
        sendSeries(mComputer.series(placed));
    } else if (change != SeriesChange::None && mComputer.hasProgram() && mOnRealtime) {
        mOnRealtime(0, mId, std::make_shared<se::RPCFormulaInstantResult>(mComputer.lastPoint(placed)));
    }
}

/// The value range goes on after the first series.
void ReplayRequest::sendSeries(FormulaSeries series) {
    const bool keepRange = std::exchange(mIsShown, true);
    if (mOnHistory) {
        const HistoryCache::Delivery delivery(mCache, HistoryCache::kNoDay);
        mOnHistory(std::make_shared<se::RPCFormulaMetaResult>(std::move(series.meta)),
                   std::make_shared<se::RPCFormulaResult>(std::move(series.result)), mId, kWholeSeries,
                   mParam.mFormulaName, keepRange);
    }
}

ReplayRequest::ModelJob ReplayRequest::modelJob(qint64 until) {
    return [&tools = mTools, param = mParam, day = mDay, placed = mPlaced.placed(), until](ModelRun &run) {
        return run.run([&](ScriptModelProcess &process, const ModelRun::Progress &tell) {
            return tools.models.run(process, param, day, placed, tell, until);
        });
    };
}

void ReplayRequest::sendModel(ScriptModelOutcome outcome) {
    if (!outcome.stopped && !(mIsShown && outcome.error)) {
        sendSeries({std::move(outcome.meta), std::move(outcome.result)});
    }
}

} // namespace terminal
