#include "chartdata/PaneNews.h"

#include "chartdata/PaneDrawing.h"
#include "chartdata/PaneRanges.h"
#include "chartdata/ResultIntake.h"
#include "chartdata/ShownDay.h"
#include "host/drawing/IndexBaseData.h"
#include "host/toolkit/Events.h"

namespace TC {
namespace {

constexpr int kChartOne = 1; ///< arguments of eInstrumentChartAsked
constexpr int kChartPeriod = 60;

} // namespace

int PaneNews::tellAverage(const Intake &intake) {
    if (intake.average) {
        mFrom.deliverEvent(eLastValueChanged, 0, 0, QString::number(*intake.average, 'g', 6), &mFrom);
    }
    return intake.flags;
}

void PaneNews::react(int flags, void *sender, bool isPoint) {
    if (flags == eNothingChanged) {
        return;
    }
    mPicture.noteDamage(isPoint ? ePointChanged : flags);
    if ((flags & eRangeChanged) && mRanges.isOutgrown()) {
        mFrom.deliverEvent(eRangeOutgrown, 0, 0, QString(), nullptr);
        return;
    }
    if (!mDrawing.isEnabled()) {
        return;
    }
    if (flags & (eRangeChanged | eSeriesChanged)) {
        isPoint ? mDrawing.follow() : mDrawing.redraw();
    }
    mFrom.deliverEvent(eDataChanged, 0, 0, QString(), sender);
}

bool PaneNews::tellReplayTime(const PaneSeries::Map &series) {
    if (!mDay.isReplayed() || mIsTellingReplay || series.isEmpty() || series.last().result.mTimes.empty()) {
        return false;
    }
    mIsTellingReplay = true;
    mDay.setReplayTime(series.last().result.mTimes.back().first);
    mFrom.deliverEvent(eRegionBoundMoved, eReplayTime, 0, QString(), &mDay.replayTime());
    mIsTellingReplay = false;
    return true;
}

void PaneNews::askForChart(const CInstrumentDetailPtr &detail) {
    mFrom.deliverEvent(eInstrumentChartAsked, kChartOne, kChartPeriod,
                       getDetailQsCode(detail) + QLatin1Char('.') + getDetailQsMarket(detail), nullptr);
}

} // namespace TC
