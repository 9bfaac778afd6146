#include "terminal/formula/SeriesComputer.h"

#include <utility>

namespace terminal {
namespace {

/// Puts a count of values in front of each line that has a list.
template <class Value> void padLines(std::vector<std::vector<Value>> &lines, size_t count, const Value &value) {
    for (std::vector<Value> &line : lines) {
        if (!line.empty()) {
            line.insert(line.begin(), count, value);
        }
    }
}

} // namespace

void padSeries(se::RPCFormulaResult &series, const std::vector<qint64> &times) {
    const size_t count = times.size();
    if (count == 0 || series.mTimes.empty()) {
        return;
    }
    std::vector<se::TimePosition> leading;
    for (const qint64 time : times) {
        leading.emplace_back(time, 0);
    }
    series.mTimes.insert(series.mTimes.begin(), leading.begin(), leading.end());
    series.mValid.insert(series.mValid.begin(), count, 0);
    if (!series.mPointTags.empty()) {
        series.mPointTags.insert(series.mPointTags.begin(), count, 0);
    }
    padLines(series.mValues, count, TC::kUnsetValue);
    padLines(series.mExtra1, count, se::kDefaultColor);
    padLines(series.mTexts, count, std::string());
    padLines(series.mExtra2, count, 0.0);
}

SeriesComputer::SeriesComputer(std::unique_ptr<FormulaProgram> program) : mProgram(std::move(program)) {}

QString SeriesComputer::underlying() const {
    return mProgram ? mProgram->underlying() : QString();
}

void SeriesComputer::setUnderlying(MinuteBars bars) {
    mUnderlying = std::move(bars);
    mProgram->setUnderlying(mUnderlying);
}

SeriesChange SeriesComputer::takeUnderlying(const MinuteBar &bar, const MinuteBars &placed) {
    if (!mProgram || takeBar(mUnderlying, bar) == BarChange::None) {
        return SeriesChange::None;
    }
    mProgram->setUnderlying(mUnderlying);
    if (placed.empty() || placed.back().time < bar.time) {
        return SeriesChange::None; // the minute that is concerned is still to come
    }
    const bool isLastAlone = placed.size() == 1 || placed[placed.size() - 2].time < bar.time;
    return isLastAlone ? SeriesChange::LastPoint : SeriesChange::Whole;
}

FormulaSeries SeriesComputer::series(const PlacedBars &placed) const {
    FormulaSeries series;
    if (mProgram) {
        series.meta = mProgram->describe();
        series.result = mProgram->evaluate(placed.bars);
        padSeries(series.result, placed.leading);
    }
    return series;
}

se::RPCFormulaInstantResult SeriesComputer::lastPoint(const PlacedBars &placed) const {
    return mProgram->evaluateLast(placed.bars);
}

} // namespace terminal
