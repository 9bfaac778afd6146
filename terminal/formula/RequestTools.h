#pragma once

#include "terminal/formula/FormulaCosts.h"
#include "terminal/formula/RunShare.h"
#include "terminal/formula/ScriptModelRunner.h"
#include "terminal/formula/SeriesComputer.h"

#include <memory>
#include <vector>

namespace terminal {

/// What the requests of a service work with. Any thread.
struct RequestTools {
    MarketFeed &feed;
    FormulaProgramMaker maker;
    DayPositions positions; ///< may be empty
    ScriptModelRunner models;
    RunShareLimits share{};
    FormulaErrorSink tell{}; ///< hears of formulas that are slow; may be empty
    std::shared_ptr<FormulaCosts> costs = std::make_shared<FormulaCosts>();

    /// The positions of the day that a request stands on; none after hours.
    std::vector<qint64> positionsOf(const TC::CFormulaParam &param, int day) const;
    /// The bars of the day of a request up to now.
    MinuteBars barsOf(const TC::CFormulaParam &param, int day) const;
    /// The program of a request with the bars that it reads beside its own, as of now.
    SeriesComputer computerOf(const TC::CFormulaParam &param, int day) const;
    /// The series of a request as of now, computed on the calling thread.
    FormulaSeries compute(const TC::CFormulaParam &param, int day) const;
};

} // namespace terminal
