#include "terminal/formula/ScriptModelRunner.h"

#include "terminal/formula/SeriesComputer.h"

#include <algorithm>
#include <utility>

namespace terminal {

bool isScriptModel(const TC::CFormulaParam &param) {
    return param.mLanguage == static_cast<qint32>(TC::EFormulaLanguage::Python);
}

void ScriptModelRunner::setUp(const ScriptModelSettings &settings, FormulaErrorSink onError) {
    mSettings = settings;
    mOnError = std::move(onError);
}

ScriptModelOutcome ScriptModelRunner::run(ScriptModelProcess &process, const TC::CFormulaParam &param, int day,
                                          const PlacedBars &placed, const ModelRun::Progress &onProgress,
                                          qint64 until) const {
    ScriptModelInput input;
    input.file = scriptModelPath(param.mFormulaName);
    input.key = param.mMarket + param.mCode;
    input.day = day;
    input.arguments = param.mArguments;
    input.bars = placed.bars;
    for (const QString &key : scriptModelGroup(param.mArguments)) {
        MinuteBars bars = mFeed.dayBars(key, day);
        bars.erase(std::partition_point(bars.begin(), bars.end(),
                                        [until](const MinuteBar &bar) { return bar.time <= until; }),
                   bars.end());
        if (!bars.empty()) {
            input.group.push_back({key, std::move(bars)});
        }
    }
    ScriptModelOutcome outcome = runScriptModel(process, input, mSettings, onProgress);
    padSeries(outcome.result, placed.leading);
    if (outcome.error && mOnError) {
        mOnError(*outcome.error);
    }
    return outcome;
}

} // namespace terminal
