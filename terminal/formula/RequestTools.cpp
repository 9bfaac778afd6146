#include "terminal/formula/RequestTools.h"

#include "terminal/formula/RequestDays.h"

#include <utility>

namespace terminal {

std::vector<qint64> RequestTools::positionsOf(const TC::CFormulaParam &param, int day) const {
    const bool known = positions && !isAfterHours(param);
    return known ? positions(feedKeyOf(param), day) : std::vector<qint64>();
}

MinuteBars RequestTools::barsOf(const TC::CFormulaParam &param, int day) const {
    const QString key = feedKeyOf(param);
    return isAfterHours(param) ? feed.afterHoursBars(key, day) : feed.dayBars(key, day);
}

SeriesComputer RequestTools::computerOf(const TC::CFormulaParam &param, int day) const {
    SeriesComputer computer(isScriptModel(param) ? nullptr : maker(param));
    if (!computer.underlying().isEmpty()) {
        computer.setUnderlying(feed.dayBars(computer.underlying(), day));
    }
    return computer;
}

FormulaSeries RequestTools::compute(const TC::CFormulaParam &param, int day) const {
    const PlacedBars placed = placeBars(barsOf(param, day), positionsOf(param, day));
    if (!isScriptModel(param)) {
        return computerOf(param, day).series(placed);
    }
    ScriptModelProcess process;
    ScriptModelOutcome outcome = models.run(process, param, day, placed);
    return {std::move(outcome.meta), std::move(outcome.result)};
}

} // namespace terminal
