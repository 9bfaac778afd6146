#pragma once

#include "chartdata/ChangeFlags.h"
#include "chartdata/PaneSeries.h"

#include <optional>

namespace TC {

class ChartPicture;
class PaneRanges;

/// What a result came to.
struct Intake {
    int flags = eNothingChanged; ///< EChangeFlag
    std::optional<double> average; ///< newest average price, 0 without one; only of the main instrument's chart
};

/// Takes results into the parts of a pane: series first, then the overlays that follow the main one, then ranges.
class ResultIntake {
public:
    ResultIntake(PaneSeries &series, PaneRanges &ranges, ChartPicture &picture)
        : mSeries(series), mRanges(ranges), mPicture(picture) {}

    /// A whole series. Without `keepRange` the ranges that the key had no longer hold.
    Intake history(const CFormulaKey &key, const FormulaMetaPtr &meta, const FormulaResultPtr &result,
                   bool keepRange);
    /// A whole series of which only the last point counts once there is one.
    Intake pushed(const CFormulaKey &key, const FormulaMetaPtr &meta, const FormulaResultPtr &result);
    /// One point; none can start a series.
    Intake point(const CFormulaKey &key, const se::RPCFormulaInstantResult &point);
    /// Brings an overlay onto the points of the main series, from index `first` on.
    void align(const CFormulaKey &key, int first);

private:
    bool realignOverlays(int first, bool untilChanged);
    bool updateRange(const CFormulaKey &key, int first);
    /// What follows when a series has changed from index `first` on; `isNew` when its ranges no longer hold.
    int follow(const CFormulaKey &key, ESeriesRole role, int first, bool isNew);

    PaneSeries &mSeries;
    PaneRanges &mRanges;
    ChartPicture &mPicture;
};

} // namespace TC
