// Script models: running them, again while the day runs, and their progress.

#include "terminal/formula/FormulaServiceRequest.h"

#include <utility>

namespace terminal {

void FormulaService::setScriptModels(const ScriptModelSettings &settings, FormulaErrorSink onError) {
    mModels = settings;
    mOnError = std::move(onError);
}

ScriptModelOutcome FormulaService::runOnce(ScriptModelProcess &process, const TC::CFormulaParam &param, int day,
                                           const PlacedBars &placed,
                                           const std::function<void(const ScriptModelProgress &)> &onProgress) {
    ScriptModelInput input;
    input.file = scriptModelPath(param.mFormulaName);
    input.key = param.mMarket + param.mCode;
    input.day = day;
    input.arguments = param.mArguments;
    input.bars = placed.bars;
    for (const QString &key : scriptModelGroup(param.mArguments)) {
        MinuteBars bars = mFeed.dayBars(key, day);
        if (!bars.empty()) {
            input.group.push_back({key, std::move(bars)});
        }
    }
    ScriptModelOutcome outcome = runScriptModel(process, input, mModels, onProgress);
    padSeries(outcome.result, placed.leading);
    if (outcome.error && mOnError) {
        mOnError(*outcome.error);
    }
    return outcome;
}

void FormulaService::runModel(const RequestPtr &request, bool again) {
    const auto process = std::make_shared<ScriptModelProcess>();
    const auto setState = [&request](const char *state, std::shared_ptr<ScriptModelProcess> running) {
        std::lock_guard<std::mutex> hold(request->lock);
        request->state = state;
        request->process = std::move(running);
    };
    setState("running", process);
    if (request->withdrawn) {
        return; // whoever withdrew it may have come before the process was there to be stopped
    }
    request->placed = placeBars(request->bars, request->positions);
    ScriptModelOutcome outcome = runOnce(*process, request->param, request->day, request->placed,
                                         [&request](const ScriptModelProgress &progress) {
                                             std::lock_guard<std::mutex> hold(request->lock);
                                             request->progress = progress;
                                         });
    setState(outcome.error ? "failed" : "finished", nullptr);
    request->sent.start();
    if (!outcome.stopped && !(again && outcome.error)) {
        sendSeries(request, std::move(outcome.meta), std::move(outcome.result), again);
    }
}

/// A change within the last minute does not make a model run again: that is for the minute's end.
void FormulaService::noteModelChange(const RequestPtr &request, bool isNewMinute) {
    if (!isNewMinute || request->scheduled) {
        return;
    }
    request->scheduled = true;
    request->home->postAfter(request->wait(mModels.pauseMilliseconds), [this, request] {
        request->scheduled = false;
        if (!request->withdrawn) {
            runModel(request, true);
        }
    });
}

bool FormulaService::groupRunProgress(const std::string &requestId, bson::BSONObj &progress) {
    const RequestPtr request = find(QString::fromStdString(requestId));
    if (!request || !request->isModel()) {
        return false;
    }
    std::lock_guard<std::mutex> hold(request->lock);
    bson::BSONObjBuilder builder;
    builder.append("done", request->progress.done);
    builder.append("total", request->progress.total);
    builder.append("text", request->progress.text.toStdString());
    builder.append("state", request->state);
    progress = builder.obj();
    return true;
}

} // namespace terminal
