#include "terminal/formula/FormulaRequest.h"

#include "terminal/formula/RequestDays.h"
#include "terminal/threads/SteadyTime.h"

#include <utility>

namespace terminal {
namespace {

constexpr int kHistoryOnly = 1; ///< data demand

} // namespace

FormulaRequest::FormulaRequest(const RequestTools &tools, Worker &home, const TC::CFormulaParam &param, int day,
                               std::shared_ptr<ResultDelivery> delivery)
    : mTools(tools), mHome(home), mParam(param), mDay(day), mIsModel(isScriptModel(param)),
      mBars(tools.feed, home, feedKeyOf(param), day, isAfterHours(param)),
      mDue(mIsModel ? tools.models.pause() : param.mInterval), mDelivery(std::move(delivery)) {}

void FormulaRequest::start() {
    mHome.post([self = shared_from_this()] { self->open(); });
}

void FormulaRequest::withdraw() {
    mDelivery->withdraw();
    mModel.stop();
    mHome.post([self = shared_from_this()] {
        self->mBars.close();
        if (self->mUnderlying) {
            self->mUnderlying->close();
        }
        self->mComputer = SeriesComputer();
        self->mPlaced = PlacedDay();
    });
}

std::optional<bson::BSONObj> FormulaRequest::modelProgress() const {
    return mIsModel ? std::make_optional(mModel.progress()) : std::nullopt;
}

bool FormulaRequest::isStream() const {
    return (mIsModel || mComputer.hasProgram()) && mParam.mDataDemand != kHistoryOnly;
}

void FormulaRequest::open() {
    if (mDelivery->isWithdrawn()) {
        return;
    }
    if (!mIsModel) {
        mComputer = SeriesComputer(mTools.maker(mParam));
    }
    const auto take = [this](const MinuteBar &bar) {
        const SeriesChange change = mPlaced.take(bar);
        // A change within the last minute does not make a model run again: that is for the minute's end.
        note(mIsModel && change == SeriesChange::LastPoint ? SeriesChange::None : change);
    };
    MinuteBars bars = isStream() ? mBars.open(shared_from_this(), take) : mBars.bars();
    mPlaced = PlacedDay(std::move(bars), mTools.positionsOf(mParam, mDay));
    openUnderlying();
    sendSeries(true);
}

/// The bars of the underlying instrument, for a program that reads them, and in a stream their changes.
void FormulaRequest::openUnderlying() {
    const QString key = mComputer.underlying();
    if (key.isEmpty()) {
        return;
    }
    mUnderlying.emplace(mTools.feed, mHome, key, mDay);
    const auto take = [this](const MinuteBar &bar) {
        note(mComputer.takeUnderlying(bar, mPlaced.placed().bars));
    };
    mComputer.setUnderlying(isStream() ? mUnderlying->open(shared_from_this(), take) : mUnderlying->bars());
}

/// Sends what has changed, at once or when it is due.
void FormulaRequest::note(SeriesChange change) {
    mDue.note(change);
    const std::optional<int> wait = mDue.wait(steadyMilliseconds());
    if (mDelivery->isWithdrawn() || !wait) {
        return;
    }
    if (*wait == 0 && !mIsModel) {
        send(mDue.take());
        return;
    }
    // A model takes in first what else has come by now.
    mDue.await();
    mHome.postAfter(*wait, [self = shared_from_this()] { self->send(self->mDue.take()); });
}

void FormulaRequest::send(DueResult::Due due) {
    if (mDelivery->isWithdrawn()) {
        return;
    }
    if (due == DueResult::Due::Point && !mIsModel) {
        mDelivery->postPoint(mComputer.lastPoint(mPlaced.placed()));
        mDue.sent(steadyMilliseconds());
    } else {
        sendSeries(false);
    }
}

void FormulaRequest::sendSeries(bool isFirst) {
    if (mIsModel) {
        runModel(isFirst);
    } else {
        mDelivery->postSeries(mComputer.series(mPlaced.placed()), !isFirst);
    }
    mDue.sent(steadyMilliseconds());
}

/// A later run that fails leaves the series as it was.
void FormulaRequest::runModel(bool isFirst) {
    ScriptModelOutcome outcome =
        mModel.run([this](ScriptModelProcess &process, const ModelRun::Progress &tell) {
            return mTools.models.run(process, mParam, mDay, mPlaced.placed(), tell);
        });
    if (!outcome.stopped && (isFirst || !outcome.error)) {
        mDelivery->postSeries({std::move(outcome.meta), std::move(outcome.result)}, !isFirst);
    }
}

} // namespace terminal
