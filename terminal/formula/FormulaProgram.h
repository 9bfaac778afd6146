#pragma once

#include "host/records/CFormulaParam.h"
#include "host/records/RPCFormulaResult.h"
#include "terminal/market/MinuteBar.h"

#include <functional>
#include <memory>

namespace terminal {

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

    /// Key of the instrument whose bars the program reads beside its own; empty when it reads none.
    virtual QString underlying() const { return {}; }
    /// The bars of that instrument on the same day, for what is evaluated from then on.
    virtual void setUnderlying(const MinuteBars &) {}
};

/// Makes the program of a request, or answers null when there is no such formula.
using FormulaProgramMaker = std::function<std::unique_ptr<FormulaProgram>(const TC::CFormulaParam &)>;

} // namespace terminal
