#pragma once

#include "host/records/RPCFormulaResult.h"
#include "viewmodel/TradingSessions.h"

#include <QString>

#include <optional>
#include <vector>

namespace TC {

/// \file
/// What cannot be right in the results of a formula service, in words for the developer of the host. A doubt changes
/// nothing: results are shown as they come.

/// Kinds of doubt; of each the first one is told.
enum class EDoubt {
    Shape, ///< lists that do not fit the description or each other
    Order, ///< times that do not go forward
    Axis, ///< times that are no minute ends of the trading day
    Gap, ///< minutes that are missing, or that are there twice
    Close, ///< no previous close
};

struct ResultDoubt {
    EDoubt kind;
    QString words;
};

/// What is doubtful in a whole series. Axis and gaps are looked at where the day has positions.
std::vector<ResultDoubt> doubtsOfSeries(const se::RPCFormulaMetaResult &meta,
                                        const se::RPCFormulaResult &result, const TradingDay &day);
/// What is doubtful in a point that is to follow a series or to take the place of one of its points.
std::vector<ResultDoubt> doubtsOfPoint(const se::RPCFormulaResultCache &series,
                                       const se::RPCFormulaInstantResult &point, const TradingDay &day);

} // namespace TC
