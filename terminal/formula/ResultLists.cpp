#include "terminal/formula/ResultLists.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace terminal {
namespace {

/// A value as a list of a result has it: a number, or unset.
double shown(double value) {
    return std::isfinite(value) ? value : TC::kUnsetValue;
}

// A list is made longer and then written: putting elements behind it one by one takes a look at its room for each.

void appendTimes(std::vector<se::TimePosition> &list, const MinuteBars &bars, std::size_t end) {
    const std::size_t from = list.size();
    list.resize(end);
    se::TimePosition *const times = list.data();
    for (std::size_t i = from; i < end; ++i) {
        times[i].first = bars[i].time;
    }
}

void appendShown(std::vector<double> &list, const Operand &operand, std::size_t end) {
    const std::size_t from = list.size();
    list.resize(end, shown(operand.number));
    if (operand.isNumber()) {
        return;
    }
    double *const elements = list.data();
    const double *const values = operand.node->values().data();
    for (std::size_t i = from; i < end; ++i) {
        elements[i] = shown(values[i]);
    }
}

bool hasColors(const FormulaDrawing &line) {
    return !line.colors.empty();
}
bool hasTexts(const FormulaDrawing &line) {
    return !line.texts.empty();
}
bool hasSecond(const FormulaDrawing &line) {
    return line.second.has_value();
}

} // namespace

DrawnParts::DrawnParts(const std::vector<FormulaDrawing> &lines, bool mayChange)
    : mayChange(mayChange), colors(mayChange || std::any_of(lines.begin(), lines.end(), hasColors)),
      texts(mayChange || std::any_of(lines.begin(), lines.end(), hasTexts)),
      seconds(mayChange || std::any_of(lines.begin(), lines.end(), hasSecond)) {}

ResultLists::ResultLists(const MinuteBars &bars, const std::vector<FormulaDrawing> &lines,
                         const DrawnParts &parts)
    : mBars(bars), mLines(lines), mParts(parts) {
    mResult.mTimes.reserve(bars.size());
    mResult.mValid.reserve(bars.size());
    for (std::size_t line = 0; line < lines.size(); ++line) {
        mResult.mValues.emplace_back().reserve(bars.size());
        mResult.mExtra1.emplace_back().reserve(mParts.colors ? bars.size() : 0);
        mResult.mTexts.emplace_back();
        mResult.mExtra2.emplace_back().reserve(mParts.seconds ? bars.size() : 0);
    }
}

void ResultLists::writeTo(std::size_t end) {
    const std::size_t from = mResult.mTimes.size();
    appendTimes(mResult.mTimes, mBars, end);
    mResult.mValid.resize(end, 1);
    for (std::size_t line = 0; line < mLines.size(); ++line) {
        writeLine(line, from, end);
    }
}

void ResultLists::writeLine(std::size_t line, std::size_t from, std::size_t end) {
    const FormulaDrawing &drawing = mLines[line];
    appendShown(mResult.mValues[line], drawing.values, end);
    if (mParts.seconds) {
        appendShown(mResult.mExtra2[line], drawing.second.value_or(kNoValue), end);
    }
    for (std::size_t i = from; i < end && mParts.colors; ++i) {
        mResult.mExtra1[line].push_back(drawing.colorAt(i));
    }
    for (std::size_t i = from; i < end && (mParts.mayChange || hasTexts(drawing)); ++i) {
        mResult.mTexts[line].push_back(drawing.textAt(i));
    }
}

se::RPCFormulaResult ResultLists::take() {
    writeTo(mBars.size());
    return std::move(mResult);
}

se::RPCFormulaInstantResult lastPointOf(const MinuteBars &bars, const std::vector<FormulaDrawing> &lines,
                                        const DrawnParts &parts) {
    const std::size_t last = bars.size() - 1;
    se::RPCFormulaInstantResult point;
    point.mTime = {bars[last].time, 0};
    point.mValues.resize(lines.size());
    point.mExtra1.resize(parts.colors ? lines.size() : 0);
    point.mTexts.resize(parts.texts ? lines.size() : 0);
    point.mExtra2.resize(parts.seconds ? lines.size() : 0);
    for (std::size_t line = 0; line < lines.size(); ++line) {
        const FormulaDrawing &drawing = lines[line];
        point.mValues[line] = shown(drawing.values.at(last));
        if (parts.colors) {
            point.mExtra1[line] = drawing.colorAt(last);
        }
        if (parts.texts) {
            point.mTexts[line] = drawing.textAt(last);
        }
        if (parts.seconds) {
            point.mExtra2[line] = shown(drawing.second.value_or(kNoValue).at(last));
        }
    }
    return point;
}

} // namespace terminal
