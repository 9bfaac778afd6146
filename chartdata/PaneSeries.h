#pragma once

#include "chartdata/PointMerge.h"
#include "host/records/CFormulaKey.h"
#include "host/records/Enumerations.h"
#include "host/records/RPCFormulaResult.h"
#include "host/services/CFormulaManager.h"

#include <QList>
#include <QMap>
#include <QString>

#include <cstddef>
#include <vector>

namespace TC {

class CRealtimeUiParam;
class ShownDay;

/// What a series is for its pane. Worked out anew whenever it is asked for, since it follows what the view shows.
enum class ESeriesRole {
    Main, ///< the main instrument's chart
    Overlay, ///< the chart of an instrument laid over it
    Ordinary,
};

/// A point of a shown series. Null when nothing is shown differently.
struct SeriesPoint {
    const se::RPCFormulaResultCache *series = nullptr;
    std::size_t index = 0;
};

/// The series of a pane.
///
/// An overlay is kept twice: raw, on its own time stamps, and among the shown series with the points of the main one,
/// where a gap keeps what stood there. Where gaps are filled it is shown as it came. No series is ever sorted or cut,
/// and only a whole result starts one. While the day is live the length of the main series is the view's data count.
class PaneSeries {
public:
    using Map = QMap<CFormulaKey, se::RPCFormulaResultCache>;

    /// `formulas` and `shown` are those of the pane.
    PaneSeries(CRealtimeUiParam &view, EIndexDisplayType displayType, const QList<QString> &formulas,
               const ShownDay &day, Map &shown)
        : mView(view), mDisplayType(displayType), mFormulas(formulas), mDay(day), mShown(shown) {}

    ESeriesRole roleOf(const CFormulaKey &key) const;
    /// The series that results of this key and role go to; null before the first.
    se::RPCFormulaResultCache *find(const CFormulaKey &key, ESeriesRole role);
    const Map &shown() const { return mShown; }

    /// Stores a series whole, in place of the one that its key has. An overlay draws its first line in its own colour,
    /// and no second one.
    void store(const CFormulaKey &key, ESeriesRole role, const FormulaMetaPtr &meta,
               const FormulaResultPtr &result);
    /// Merges the last point of a whole series, which has points, into the one that is there.
    EPushOutcome mergeLast(se::RPCFormulaResultCache &series, ESeriesRole role,
                           const se::RPCFormulaResult &result);
    /// Stores a point at its place. The answer is null when it changes no shown series, or nothing.
    SeriesPoint merge(se::RPCFormulaResultCache &series, ESeriesRole role, const PointPlace &place,
                      const se::RPCFormulaInstantResult &point);

    /// Brings an overlay onto the points of the main series, from index `first` of both on. The answer is the first
    /// point that is shown differently.
    SeriesPoint align(const CFormulaKey &key, int first);
    /// Keys of the overlays that have come.
    std::vector<CFormulaKey> overlays() const;

    void setFillsGaps(bool fill) { mFillsGaps = fill; }
    bool fillsGaps() const { return mFillsGaps; }
    void remove(const CFormulaKey &key) { mShown.remove(key); }
    /// Forgets all overlays; the main instrument stays, though it be one of them.
    void removeOverlays(const QString &formula);
    void clear();

private:
    Map &mapOf(ESeriesRole role) { return role == ESeriesRole::Overlay ? mOverlays : mShown; }
    void publishCount(ESeriesRole role, const se::RPCFormulaResult &series) const;
    Map::const_iterator mainSeries() const;

    CRealtimeUiParam &mView;
    const EIndexDisplayType mDisplayType;
    const QList<QString> &mFormulas;
    const ShownDay &mDay;
    Map &mShown;
    Map mOverlays; ///< raw
    bool mFillsGaps = false;
};

} // namespace TC
