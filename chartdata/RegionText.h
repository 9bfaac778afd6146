#pragma once

#include "chartdata/PaneSeries.h"
#include "host/records/CInstrumentDetail.h"
#include "host/records/RPCFormulaResult.h"
#include "host/services/ServiceContext.h"

#include <QStringList>

#include <vector>

namespace TC {

/// What the figures of a stretch of the day are taken from.
struct RegionSeries {
    std::vector<double> prices;
    std::vector<double> volumes;
    std::vector<se::TimePosition> times; ///< of the prices
};

/// Prices and volumes among the series of a main pane; nothing when either is missing.
RegionSeries regionSeries(const PaneSeries::Map &shown);

/// The figures between two indices of the prices, both included, as text: first, highest, lowest and last price,
/// volume, change, mean price, amplitude, turnover, amount, change by the cached daily quotes. Empty when `start` lies
/// outside; `end` is brought back into the series. Asks the formula service.
QStringList regionTexts(const RegionSeries &series, const CInstrumentDetailPtr &detail, int start, int &end,
                        const ServiceContext &services);

} // namespace TC
