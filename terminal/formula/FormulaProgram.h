#pragma once

#include "host/records/CFormulaParam.h"
#include "host/records/RPCFormulaResult.h"
#include "terminal/market/MinuteBar.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace terminal {

/// Name and value of something that a formula computes and does not draw.
using HiddenValue = std::pair<std::string, double>;

/// One formula at work for one request: turns the bars of a day into lines. Made and used on one worker thread.
class FormulaProgram {
public:
    virtual ~FormulaProgram() = default;

    /// Description of the lines; its mLineCount is the number of lines of every result.
    virtual se::RPCFormulaMetaResult describe() const = 0;
    /// The lines over all bars, one point per bar.
    virtual se::RPCFormulaResult evaluate(const MinuteBars &bars) const = 0;
    /// The point of the last bar; `bars` is not empty. Of the bars before it, only the last ones differ from those of
    /// the call before. A program that can work the point out without the others does so: this is called with every
    /// trade.
    virtual se::RPCFormulaInstantResult evaluateLast(const MinuteBars &bars) const;
    /// Named values of a bar that are not drawn, of the bars evaluated last; a value may be no number.
    virtual std::vector<HiddenValue> hiddenValues(std::size_t bar) const;
};

/// Makes the program of a request, or answers null when there is no such formula.
using FormulaProgramMaker = std::function<std::unique_ptr<FormulaProgram>(const TC::CFormulaParam &)>;

} // namespace terminal
