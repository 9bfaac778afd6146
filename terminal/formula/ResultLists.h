#pragma once

#include "host/records/RPCFormulaResult.h"
#include "terminal/formula/FormulaDrawing.h"
#include "terminal/market/MinuteBar.h"

#include <cstddef>
#include <vector>

namespace terminal {

/// What the points of a formula's lines have beside values. Of what no line ever has there are no lists, which would
/// take as much as those of the values.
struct DrawnParts {
    DrawnParts() = default;
    /// `mayChange` when the next bar may take lines with other parts.
    DrawnParts(const std::vector<FormulaDrawing> &lines, bool mayChange);

    bool mayChange = false;
    bool colors = false;
    bool texts = false;
    bool seconds = false;
};

/// The result of a formula's lines, to be written as their vectors are computed, while those are in the processor's
/// cache.
class ResultLists {
public:
    /// Refers to the bars and the lines.
    ResultLists(const MinuteBars &bars, const std::vector<FormulaDrawing> &lines, const DrawnParts &parts);

    /// Writes the points before `end` that are not written yet. They are computed.
    void writeTo(std::size_t end);
    /// The result with all points.
    se::RPCFormulaResult take();

private:
    void writeLine(std::size_t line, std::size_t from, std::size_t end);

    const MinuteBars &mBars;
    const std::vector<FormulaDrawing> &mLines;
    const DrawnParts mParts;
    se::RPCFormulaResult mResult;
};

/// The last point of a formula's lines alone. There has to be a bar.
se::RPCFormulaInstantResult lastPointOf(const MinuteBars &bars, const std::vector<FormulaDrawing> &lines,
                                        const DrawnParts &parts);

} // namespace terminal
