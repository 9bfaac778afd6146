// The figures of a stretch of the day.

#include "chartdata/CRealtimeData.h"

#include "chartdata/RegionFigures.h"
#include "host/services/StockTypeCenter.h"
#include "host/toolkit/Text.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <boost/thread/lock_guard.hpp>

#include <algorithm>
#include <cmath>

namespace TC {
namespace {

constexpr int kEventInstrumentChart = 3265;
constexpr int kChartOne = 1; ///< arguments of that event
constexpr int kChartPeriod = 60;
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

QString figure(double value, int flags) {
    return GZ::formatDoubleNumber(value, kDecimals, flags, false, CRealtimeData::tr("非法值"));
}

} // namespace

/// Change by the cached daily quotes of the main instrument between two times, in milliseconds since the epoch.
double CRealtimeData::cachedChange(qint64 from, qint64 to, int count) const {
    const CInstrumentDetailPtr detail = mUiParam->getStockDetail();
    se::RPCFetchCacheDataParam param;
    param.mMarket = getDetailMarket(detail);
    param.mCodes = {getDetailCode(detail)};
    param.mStart = from;
    param.mEnd = to;
    param.mCount = count;
    std::vector<std::shared_ptr<quoter::QuoterBase>> records;
    CSingletonT<CFormulaManager>::instance().fetchCacheData(param, records);
    return changeOf(records);
}

QStringList CRealtimeData::statisticRange(int &start, int &end) const {
    std::vector<double> prices;
    std::vector<double> volumes;
    std::vector<se::TimePosition> times;
    {
        const boost::lock_guard<boost::recursive_mutex> hold(mLock);
        const se::RPCFormulaResult *price = nullptr;
        const se::RPCFormulaResult *volume = nullptr;
        for (auto series = mData.constBegin(); series != mData.constEnd(); ++series) {
            if (series.key().mFormula == QLatin1String("REALTIME")) {
                price = &series->result;
            } else if (series.key().mFormula == QLatin1String("REALTIMEVOL")) {
                volume = &series->result;
            }
        }
        if (!price || !volume) {
            return {};
        }
        prices = firstLine(*price);
        volumes = firstLine(*volume);
        times = price->mTimes;
    }
    const int count = static_cast<int>(prices.size());
    if (start < 0 || start >= count || end < 0) {
        return {};
    }
    end = std::min(end, count - 1);

    const CInstrumentDetailPtr detail = mUiParam->getStockDetail();
    RegionFigures figures = regionFigures(prices, volumes, start, end);
    if (kvservice::StockTypeCenter::isTypedStock(kTypeOfLots, getDetailMarket(detail), getDetailCode(detail))) {
        figures.amount *= kShareOfLot;
    }
    const auto timeAt = [&times](int index) { return times[static_cast<std::size_t>(index)].first; };
    const double cached = cachedChange(timeAt(start), timeAt(end), end - start + 1);
    const double turnover = figures.volume * kShareOfLot / (detail ? detail->mFloatShares : 0.0);
    using namespace utils;
    return {figure(figures.first, eFormatPlain),   figure(figures.high, eFormatPlain),
            figure(figures.low, eFormatPlain),     figure(figures.last, eFormatPlain),
            figure(figures.volume, eFormatScaled), figure(figures.change, eFormatPercent),
            figure(figures.average, eFormatPlain), figure(figures.amplitude, eFormatPercent),
            figure(turnover, eFormatPercent),      figure(figures.amount, eFormatScaled),
            figure(cached, eFormatPercent)};
}

void CRealtimeData::showInstrumentChart() {
    const CInstrumentDetailPtr detail = mUiParam->getStockDetail();
    deliverEvent(kEventInstrumentChart, kChartOne, kChartPeriod,
                 getDetailQsCode(detail) + QLatin1Char('.') + getDetailQsMarket(detail), nullptr);
}

} // namespace TC
