#include "terminal/formula/FormulaRequest.h"

#include "terminal/formula/RequestDays.h"
#include "terminal/threads/SteadyTime.h"
#include "terminal/threads/ThreadTime.h"

#include <QCoreApplication>

#include <utility>

namespace terminal {
namespace {

constexpr int kHistoryOnly = 1; ///< data demand

struct SlowWords {
    Q_DECLARE_TR_FUNCTIONS(FormulaRequest)
};

/// The title of the pane tells it behind the name of the first line.
void markAsSlow(se::RPCFormulaMetaResult &meta) {
    if (!meta.mLineNames.empty()) {
        meta.mLineNames.front() += SlowWords::tr("（计算慢）").toStdString();
    }
}

} // namespace

FormulaRequest::FormulaRequest(const RequestTools &tools, std::shared_ptr<SerialWork> home, bool isPrice,
                               const TC::CFormulaParam &param, int day,
                               std::shared_ptr<ResultDelivery> delivery)
    : mTools(tools), mHome(std::move(home)), mIsPrice(isPrice), mParam(param), mDay(day),
      mIsModel(isScriptModel(param)), mBars(tools.feed, *mHome, feedKeyOf(param), day, isAfterHours(param)),
      mDue(mIsModel ? tools.models.pause() : param.mInterval), mShare(tools.share),
      mDelivery(std::move(delivery)) {}

void FormulaRequest::start() {
    mHome->post([self = shared_from_this()] { self->open(); });
}

void FormulaRequest::withdraw() {
    mDelivery->withdraw();
    mModel.stop();
    mHome->post([self = shared_from_this()] {
        self->mBars.close();
        if (self->mUnderlying) {
            self->mUnderlying->close();
        }
        self->mComputer = SeriesComputer();
        self->mPlaced = PlacedDay();
    });
}

std::optional<size_t> FormulaRequest::keptBytes() const {
    const std::optional<size_t> hidden = mIsFinished ? mDelivery->hiddenBytes() : std::nullopt;
    return hidden && mIsModel ? std::make_optional(*hidden + sizeof(FormulaRequest)) : hidden;
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
    const auto take = [this](const MinuteBars &changed) { note(changed); };
    MinuteBars bars = isStream() ? mBars.open(shared_from_this(), take) : mBars.bars();
    mPlaced = PlacedDay(std::move(bars), mTools.positionsOf(mParam, mDay));
    openUnderlying();
    const bool goesOn = isStream() && (mBars.isLive() || (mUnderlying && mUnderlying->isLive()));
    sendSeries(true);
    if (!goesOn) {
        finish();
    }
}

void FormulaRequest::finish() {
    mDelivery->finish();
    mUnderlying.reset();
    mComputer = SeriesComputer();
    mPlaced = PlacedDay();
    mIsFinished = true;
}

/// The bars of the underlying instrument, for a program that reads them, and in a stream their changes.
void FormulaRequest::openUnderlying() {
    const QString key = mComputer.underlying();
    if (key.isEmpty()) {
        return;
    }
    mUnderlying.emplace(mTools.feed, *mHome, key, mDay);
    const auto take = [this](const MinuteBars &changed) { noteUnderlying(changed); };
    mComputer.setUnderlying(isStream() ? mUnderlying->open(shared_from_this(), take) : mUnderlying->bars());
}

void FormulaRequest::note(const MinuteBars &bars) {
    for (const MinuteBar &bar : bars) {
        const SeriesChange change = mPlaced.take(bar);
        // A change within the last minute does not make a model run again: that is for the minute's end.
        mDue.note(mIsModel && change == SeriesChange::LastPoint ? SeriesChange::None : change);
    }
    sendWhenDue();
}

void FormulaRequest::noteUnderlying(const MinuteBars &bars) {
    for (const MinuteBar &bar : bars) {
        mDue.note(mComputer.takeUnderlying(bar, mPlaced.placed().bars));
    }
    sendWhenDue();
}

/// Sends what has changed, at once or when it is due.
void FormulaRequest::sendWhenDue() {
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
    mHome->postAfter(*wait, [self = shared_from_this()] { self->send(self->mDue.take()); });
}

void FormulaRequest::send(DueResult::Due due) {
    if (mDelivery->isWithdrawn()) {
        return;
    }
    if (due != DueResult::Due::Point || mIsModel || mIsMarked != mShare.isTold()) {
        sendSeries(false);
        return;
    }
    const std::chrono::nanoseconds before = threadTime();
    mDelivery->postPoint(mComputer.lastPoint(mPlaced.placed()));
    settle(threadTime() - before, false);
}

void FormulaRequest::sendSeries(bool isFirst) {
    if (mIsModel) {
        runModel(isFirst);
        mDue.sent(steadyMilliseconds());
        return;
    }
    const std::chrono::nanoseconds before = threadTime();
    FormulaSeries series = mComputer.series(mPlaced.placed());
    const std::chrono::nanoseconds taken = threadTime() - before;
    mIsMarked = mShare.isTold();
    if (mIsMarked) {
        markAsSlow(series.meta);
    }
    mDelivery->postSeries(std::move(series), !isFirst);
    settle(taken, true);
}

/// Looks at what a run has taken: the next one goes to the lane where it holds nobody up, and waits its pause.
void FormulaRequest::settle(std::chrono::nanoseconds taken, bool isSeries) {
    const bool wasTold = mShare.isTold();
    const qint64 now = steadyMilliseconds();
    mShare.note(taken, isSeries, now);
    mDue.sent(now, mShare.pause());
    mTools.costs->note(mParam.mFormulaName, mShare.isLong());
    mHome->setLane(mShare.isLong() ? WorkLane::Slow : mIsPrice ? WorkLane::Price : WorkLane::Quick);
    if (mShare.isTold() && !wasTold && mTools.tell) {
        mTools.tell({mParam.mFormulaName, 0, SlowWords::tr("计算太慢，已降低刷新频率")});
    }
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
