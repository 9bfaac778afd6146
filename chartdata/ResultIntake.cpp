#include "chartdata/ResultIntake.h"

#include "chartdata/ChartPicture.h"
#include "chartdata/PaneRanges.h"

#include <algorithm>

namespace TC {
namespace {

constexpr std::size_t kAverageLine = 1;

/// Newest average of a series; 0 when it has none.
double averageOf(const se::RPCFormulaResult &result) {
    const bool has = result.mValues.size() > kAverageLine && !result.mValues[kAverageLine].empty();
    return has ? result.mValues[kAverageLine].back() : 0.0;
}

int lastIndex(const se::RPCFormulaResult &result) {
    return std::max(static_cast<int>(result.mTimes.size()) - 1, 0);
}

} // namespace

bool ResultIntake::updateRange(const CFormulaKey &key, int first) {
    return mRanges.update(key, first, mPicture.rect());
}

void ResultIntake::align(const CFormulaKey &key, int first) {
    mPicture.settle(key);
    mPicture.notePoint(mSeries.align(key, first));
}

/// Aligns all overlays after the main series changed; true when a wanted range changed. With `untilChanged` no further
/// range is computed then.
bool ResultIntake::realignOverlays(int first, bool untilChanged) {
    bool changed = false;
    for (const CFormulaKey &key : mSeries.overlays()) {
        align(key, first);
        if (!(changed && untilChanged)) {
            changed = updateRange(key, first) || changed;
        }
    }
    return changed;
}

int ResultIntake::follow(const CFormulaKey &key, ESeriesRole role, int first, bool isNew) {
    bool changed = false;
    if (role == ESeriesRole::Overlay) {
        align(key, first);
    }
    if (role == ESeriesRole::Main) {
        changed = realignOverlays(first, false);
    }
    if (isNew && role != ESeriesRole::Overlay) {
        mRanges.forget(key);
        changed = true;
    }
    changed = updateRange(key, first) || changed;
    return changed ? eRangeChanged : eNothingChanged;
}

Intake ResultIntake::history(const CFormulaKey &key, const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                             bool keepRange) {
    const ESeriesRole role = mSeries.roleOf(key);
    mPicture.settle(key);
    mSeries.store(key, role, meta, result);
    Intake intake{eSeriesChanged | follow(key, role, 0, !keepRange), {}};
    if (role == ESeriesRole::Main) {
        intake.average = result ? averageOf(*result) : 0.0;
    }
    return intake;
}

Intake ResultIntake::pushed(const CFormulaKey &key, const FormulaMetaPtr &meta,
                            const FormulaResultPtr &result) {
    const ESeriesRole role = mSeries.roleOf(key);
    mPicture.settle(key);
    se::RPCFormulaResultCache *series = mSeries.find(key, role);
    const bool merged = series && result && !result->mTimes.empty();
    Intake intake{eSeriesChanged, {}};
    int first = 0;
    if (merged) {
        if (mSeries.mergeLast(*series, role, *result) == EPushOutcome::Nothing) {
            intake.flags = eNothingChanged;
        }
        first = lastIndex(series->result);
    } else {
        mSeries.store(key, role, meta, result);
    }
    intake.flags |= follow(key, role, first, !merged);
    if (role == ESeriesRole::Main) {
        series = mSeries.find(key, role);
        intake.average = series ? averageOf(series->result) : 0.0;
    }
    return intake;
}

Intake ResultIntake::point(const CFormulaKey &key, const se::RPCFormulaInstantResult &point) {
    const ESeriesRole role = mSeries.roleOf(key);
    se::RPCFormulaResultCache *series = mSeries.find(key, role);
    if (!series) {
        return {};
    }
    const PointPlace place = findPlace(series->result.mTimes, point.mTime);
    if (place.kind == EPointPlace::None) {
        return {};
    }
    const bool overlay = role == ESeriesRole::Overlay;
    mPicture.settle(key);
    mPicture.notePoint(mSeries.merge(*series, role, place, point));
    int flags = ePointChanged;
    if (place.kind == EPointPlace::New || (place.kind == EPointPlace::Older && !overlay)) {
        flags |= eSeriesChanged;
    }
    const int first = overlay ? lastIndex(series->result) : static_cast<int>(place.index);
    if (overlay) {
        align(key, first);
    }
    if ((role == ESeriesRole::Main && realignOverlays(first, true)) || updateRange(key, first)) {
        flags |= eRangeChanged;
    }
    Intake intake{flags, {}};
    if (role == ESeriesRole::Main) {
        intake.average = point.mValues.size() > kAverageLine ? point.mValues[kAverageLine] : 0.0;
    }
    return intake;
}

} // namespace TC
