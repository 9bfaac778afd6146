#include "terminal/formula/FormulaProgram.h"

namespace terminal {
namespace {

/// Last element of each line, or the default where a line has none.
template <class Value>
std::vector<Value> lastOfLines(const std::vector<std::vector<Value>> &lines, size_t count,
                               const Value &missing) {
    std::vector<Value> values(count, missing);
    for (size_t i = 0; i < count && i < lines.size(); ++i) {
        if (!lines[i].empty()) {
            values[i] = lines[i].back();
        }
    }
    return values;
}

} // namespace

se::RPCFormulaInstantResult FormulaProgram::evaluateLast(const MinuteBars &bars) const {
    const se::RPCFormulaResult whole = evaluate(bars);
    se::RPCFormulaInstantResult point;
    if (whole.mTimes.empty()) {
        return point;
    }
    const size_t lines = whole.mValues.size();
    point.mTime = whole.mTimes.back();
    point.mValues = lastOfLines(whole.mValues, lines, TC::kUnsetValue);
    point.mExtra1 = lastOfLines(whole.mExtra1, lines, se::kDefaultColor);
    point.mTexts = lastOfLines(whole.mTexts, lines, std::string());
    point.mExtra2 = lastOfLines(whole.mExtra2, lines, 0.0);
    return point;
}

} // namespace terminal
