#pragma once

#include "host/records/CFormulaParam.h"
#include "terminal/formula/ModelRun.h"
#include "terminal/market/MarketFeed.h"

#include <limits>

namespace terminal {

/// Whether a request names a script model.
bool isScriptModel(const TC::CFormulaParam &param);

/// Runs the script models that requests name, over the bars of a market. Any thread; set up before the first run.
class ScriptModelRunner {
public:
    /// The feed has to outlive it.
    explicit ScriptModelRunner(MarketFeed &feed) : mFeed(feed) {}

    /// Who hears of the models' errors, on the thread that runs them.
    void setUp(const ScriptModelSettings &settings, FormulaErrorSink onError);
    /// Milliseconds between the end of a run and the next one of the same request.
    int pause() const { return mSettings.pauseMilliseconds; }
    /// Blocks. The series has a point for every placed bar, and one that is not valid for each position in front. The
    /// bars of a group go up to `until`.
    ScriptModelOutcome run(ScriptModelProcess &process, const TC::CFormulaParam &param, int day,
                           const PlacedBars &placed, const ModelRun::Progress &onProgress = {},
                           qint64 until = std::numeric_limits<qint64>::max()) const;

private:
    MarketFeed &mFeed;
    ScriptModelSettings mSettings;
    FormulaErrorSink mOnError;
};

} // namespace terminal
