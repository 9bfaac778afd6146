#pragma once

#include "terminal/formula/ScriptModelRunner.h"
#include "terminal/formula/SeriesComputer.h"

#include <vector>

namespace terminal {

/// What the requests of a service work with. Any thread.
struct RequestTools {
    MarketFeed &feed;
    FormulaProgramMaker maker;
    DayPositions positions; ///< may be empty
    ScriptModelRunner models;

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
