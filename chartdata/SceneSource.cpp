#include "chartdata/SceneSource.h"

#include "chartdata/ChartLayout.h"
#include "chartdata/GapFilling.h"
#include "chartdata/PaneAxis.h"
#include "chartdata/PaneRanges.h"
#include "chartdata/PaneSeries.h"
#include "chartdata/ShownDay.h"
#include "host/drawing/DrawStyles.h"
#include "host/drawing/IndexBaseData.h"
#include "host/services/CConfigService.h"
#include "host/services/CStockManager.h"
#include "host/services/StockTypeCenter.h"
#include "host/toolkit/PriceDecimals.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <algorithm>
#include <cmath>

namespace TC {
namespace {

int pointCount(const se::RPCFormulaResultCache &entry) {
    return static_cast<int>(entry.result.mTimes.size());
}

int lineCount(const se::RPCFormulaResultCache &entry) {
    return std::min(entry.meta.mLineCount, static_cast<int>(entry.result.mValues.size()));
}

int styleOf(const se::RPCFormulaMetaResult &meta, int line) {
    return std::size_t(line) < meta.mLineStyles.size() ? meta.mLineStyles[std::size_t(line)] : eLineStyle;
}

int candleDigits(const CRealtimeUiParam &view, const QString &stock) {
    const CInstrumentDetailPtr detail = view.service<CStockManager>().getInstrumentDetail(stock);
    return detail ? std::max(decimals(getDetailPriceTick(detail)), 2) : 2;
}

} // namespace

bool SceneSource::hasVolume() const {
    return mDisplayType == EIndexDisplayType::Main && mView.mShowVolume;
}

int SceneSource::lastStill() const {
    int count = 0;
    if (mDisplayType == EIndexDisplayType::Main && mDay.isLive()) {
        count = mSeries.shown().isEmpty() ? 0 : mView.dataCount();
    } else {
        for (const se::RPCFormulaResultCache &entry : mSeries.shown()) {
            count = std::max(count, pointCount(entry));
        }
    }
    return std::max(mDay.isLive() ? count - 2 : count - 1, -1);
}

ChartScene SceneSource::still(const QSize &pane, double ratio) const {
    ChartScene scene;
    scene.pane = pane;
    scene.ratio = ratio;
    const AxisShown axis = mAxis.shown();
    scene.columns = axis.timeLines;
    scene.rows.reserve(axis.ticks.size());
    for (const AxisTick &tick : axis.ticks) {
        scene.rows.append(tick.y);
    }
    scene.hasVolumeBand = hasVolume() && !mSeries.fillsGaps() && ratio == std::floor(ratio);
    scene.end = lastStill();
    if (scene.end >= 0) {
        scene.lines = lines(pane, 0, scene.end);
    }
    return scene;
}

void SceneSource::findSeries(SceneLines &lines) const {
    for (SceneSeries &drawn : lines) {
        const auto held = mSeries.shown().constFind(drawn.key);
        if (!drawn.filled) {
            drawn.series = held != mSeries.shown().constEnd() ? &*held : nullptr;
        }
    }
    const auto isGone = [](const SceneSeries &drawn) { return !drawn.series; };
    lines.erase(std::remove_if(lines.begin(), lines.end(), isGone), lines.end());
}

int SceneSource::tailCount() const {
    return mDay.isLive() ? mView.dataCount() : 0;
}

SceneLines SceneSource::tail(const QSize &pane, int only) const {
    const int count = tailCount();
    return count != 0 ? lines(pane, std::max(count - 2, 0), count - 1, only) : SceneLines();
}

int SceneSource::orderOf(const se::RPCFormulaResultCache &series) const {
    int order = 0;
    for (const se::RPCFormulaResultCache &shown : mSeries.shown()) {
        if (&shown == &series) {
            return order;
        }
        ++order;
    }
    return kEverySeries;
}

bool SceneSource::isAhead(int order) const {
    int at = 0;
    return std::all_of(mSeries.shown().begin(), mSeries.shown().end(), [&](const auto &series) {
        return at++ == order || pointCount(series) < mView.dataCount();
    });
}

bool SceneSource::isSpread(const se::RPCFormulaResultCache &series) const {
    bool spread = mSeries.fillsGaps();
    for (int line = 0; line < lineCount(series); ++line) {
        spread |= styleOf(series.meta, line) == eTextExStyle;
    }
    return spread;
}

/// Indices grow with a series whose gaps are filled, and stay grown for the series after it.
SceneLines SceneSource::lines(const QSize &pane, int start, int end, int only) const {
    SceneLines lines;
    lines.reserve(only == kEverySeries ? static_cast<std::size_t>(mSeries.shown().size()) : 1);
    int order = 0;
    for (auto entry = mSeries.shown().constBegin(); entry != mSeries.shown().constEnd(); ++entry, ++order) {
        if (only != kEverySeries && only != order) {
            continue;
        }
        SceneSeries &drawn = lines.emplace_back();
        drawn.key = entry.key();
        drawn.order = order;
        drawn.series = &*entry;
        if (mSeries.fillsGaps()) {
            fill(drawn);
            const int grown = pointCount(*drawn.series) - end;
            end += grown;
            start = start > 0 ? std::max(start + grown, 0) : start;
        }
        drawn.start = start;
        drawn.end = end;
        drawn.last = mView.mPointCount - 1;
        if (!describe(drawn, pane)) {
            lines.pop_back();
        }
    }
    return lines;
}

/// Puts a copy without gaps in place of a series.
void SceneSource::fill(SceneSeries &drawn) const {
    const auto secondsAt = [this](int index) { return mView.getDateTimeByIndex(index).toSecsSinceEpoch(); };
    drawn.filled = std::make_shared<const se::RPCFormulaResultCache>(
        fillGaps(*drawn.series, mView.mPointCount, secondsAt));
    drawn.series = drawn.filled.get();
}

/// Where a series lies, and its lines; false when it is not drawn.
bool SceneSource::describe(SceneSeries &drawn, const QSize &pane) const {
    const bool volume = mView.isVolFormula(drawn.key.mFormula);
    const auto range = mRanges.drawn().constFind(drawn.key);
    if ((volume && !mView.mShowVolume) || range == mRanges.drawn().constEnd()) {
        return false;
    }
    const ChartLayout layout = chartLayout(pane, hasVolume());
    drawn.inVolumeBand = volume;
    drawn.target = volume && hasVolume() ? layout.volume : layout.price;
    addLines(drawn, *range, pane);
    return true;
}

void SceneSource::addLines(SceneSeries &to, const CDrawStyle::Range &shared, const QSize &pane) const {
    const se::RPCFormulaResultCache &series = *to.series;
    const CFormulaKey &key = to.key;
    const QLatin1String kVolume("REALTIMEVOL");
    const bool isVolume =
        key.mFormula.size() > kVolume.size() ? key.mFormula.contains(kVolume) : key.mFormula == kVolume;
    const bool isChart = mDisplayType == EIndexDisplayType::Main && key.mFormula == QLatin1String("REALTIME");
    to.lines.reserve(static_cast<std::size_t>(std::max(lineCount(series), 0)));
    for (int i = 0; i < lineCount(series); ++i) {
        SceneLine line;
        line.line = i;
        line.range = shared;
        if (!IndexBaseData::isNeedYAxis(series, i) &&
            !CDrawStyle::calcMaxMin(line.range.first, line.range.second, 0, to.end, series, i,
                                    QRect(QPoint(0, 0), pane))) {
            continue; // on an axis of its own, without a value to measure
        }
        if (isHiddenNetValue(key, series.meta, i)) {
            continue;
        }
        line.style = styleOf(series.meta, i);
        line.gradient = line.style == eLineStyle && i == 0 && isChart &&
                        mView.service<CConfigService>().indexUserConfig().read().mShowGradient;
        line.volume = isVolume;
        line.digits = line.style == eKLineStyle ? candleDigits(mView, key.mStock) : 0;
        to.lines.push_back(line);
    }
}

/// The net value of a fund is shown only where one is published.
bool SceneSource::isHiddenNetValue(const CFormulaKey &key, const se::RPCFormulaMetaResult &meta,
                                   int line) const {
    static const std::string kNetValue = QStringLiteral("基金份额参考净值").toStdString();
    if (std::size_t(line) >= meta.mLineNames.size() ||
        meta.mLineNames[std::size_t(line)].find(kNetValue) == std::string::npos ||
        key.mFormula.compare(QLatin1String("REALTIME"), Qt::CaseInsensitive) != 0) {
        return false;
    }
    const CInstrumentDetailPtr detail = mView.service<CStockManager>().getInstrumentDetail(key.mStock);
    const auto isTyped = [&](const char *market, int type) {
        return detail->mMarket == market &&
               mView.service<kvservice::StockTypeCenter>().isOfType(type, detail->mMarket, detail->mCode);
    };
    return detail && !isTyped("SH", 105) && !isTyped("SZ", 10008);
}

} // namespace TC
