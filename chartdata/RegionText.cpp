#include "chartdata/RegionText.h"

#include "chartdata/RegionFigures.h"
#include "host/services/CFormulaManager.h"
#include "host/services/ServiceContext.h"
#include "host/services/StockTypeCenter.h"
#include "host/toolkit/Text.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace TC {
namespace {

constexpr int kTypeOfLots = 100003; ///< instruments whose volume is counted in lots
constexpr double kShareOfLot = 100.0;
constexpr int kDecimals = 2;

/// Line 0 of a series as far as it has times; empty when there is none.
std::vector<double> firstLine(const se::RPCFormulaResult &series) {
    if (series.mValues.empty()) {
        return {};
    }
    const std::vector<double> &line = series.mValues.front();
    const std::size_t count = std::min(line.size(), series.mTimes.size());
    return std::vector<double>(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(count));
}

/// Change from the first to the last record, as a ratio; 0 without a first price.
double changeOf(const std::vector<std::shared_ptr<quoter::QuoterBase>> &records) {
    if (records.empty() || !records.front() || !records.back() || !(std::fabs(records.front()->mPrice) > 0.0)) {
        return 0.0;
    }
    return (records.back()->mPrice - records.front()->mPrice) / records.front()->mPrice;
}

/// Change by the cached daily quotes of an instrument between two times, in milliseconds since the epoch.
double cachedChange(const CInstrumentDetailPtr &detail, qint64 from, qint64 to, int count,
                    CFormulaManager &formulas) {
    se::RPCFetchCacheDataParam param;
    param.mMarket = getDetailMarket(detail);
    param.mCodes = {getDetailCode(detail)};
    param.mStart = from;
    param.mEnd = to;
    param.mCount = count;
    std::vector<std::shared_ptr<quoter::QuoterBase>> records;
    formulas.fetchCacheData(param, records);
    return changeOf(records);
}

QString figure(double value, int flags) {
    return GZ::formatDoubleNumber(value, kDecimals, flags, false,
                                  QCoreApplication::translate("TC::CRealtimeData", "非法值"));
}

} // namespace

RegionSeries regionSeries(const PaneSeries::Map &shown) {
    const se::RPCFormulaResult *price = nullptr;
    const se::RPCFormulaResult *volume = nullptr;
    for (auto entry = shown.constBegin(); entry != shown.constEnd(); ++entry) {
        if (entry.key().mFormula == QLatin1String("REALTIME")) {
            price = &entry->result;
        } else if (entry.key().mFormula == QLatin1String("REALTIMEVOL")) {
            volume = &entry->result;
        }
    }
    if (!price || !volume) {
        return {};
    }
    return {firstLine(*price), firstLine(*volume), price->mTimes};
}

QStringList regionTexts(const RegionSeries &series, const CInstrumentDetailPtr &detail, int start, int &end,
                        const ServiceContext &services) {
    const int count = static_cast<int>(series.prices.size());
    if (start < 0 || start >= count || end < 0) {
        return {};
    }
    end = std::min(end, count - 1);
    RegionFigures figures = regionFigures(series.prices, series.volumes, start, end);
    if (services.get<kvservice::StockTypeCenter>().isOfType(kTypeOfLots, getDetailMarket(detail),
                                                            getDetailCode(detail))) {
        figures.amount *= kShareOfLot;
    }
    const auto timeAt = [&series](int index) { return series.times[static_cast<std::size_t>(index)].first; };
    const double cached =
        cachedChange(detail, timeAt(start), timeAt(end), end - start + 1, services.get<CFormulaManager>());
    const double turnover = figures.volume * kShareOfLot / (detail ? detail->mFloatShares : 0.0);
    using namespace utils;
    return {figure(figures.first, eFormatPlain),   figure(figures.high, eFormatPlain),
            figure(figures.low, eFormatPlain),     figure(figures.last, eFormatPlain),
            figure(figures.volume, eFormatScaled), figure(figures.change, eFormatPercent),
            figure(figures.average, eFormatPlain), figure(figures.amplitude, eFormatPercent),
            figure(turnover, eFormatPercent),      figure(figures.amount, eFormatScaled),
            figure(cached, eFormatPercent)};
}

} // namespace TC
