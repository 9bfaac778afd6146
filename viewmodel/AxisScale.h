#pragma once

#include "host/Export.h"
#include "host/drawing/IndexBaseData.h"
#include "viewmodel/AxisTicks.h"

#include <QMap>

#include <functional>
#include <memory>
#include <mutex>

namespace TC {

class CGraphAxisWidget;

/// What the axis of a pane is worked out from, beside its ranges.
struct AxisLayout {
    EIndexDisplayType displayType = EIndexDisplayType::Main;
    int height = 0; ///< pixels of the strip
    int fontHeight = 0; ///< of its labels
    CFormulaKey key; ///< whose range the ticks show
    CFormulaKey volumeKey; ///< that of the volume band
    bool volume = false; ///< the main chart shows that band
    Sessions sessions;
    double dayWidth = 0.0; ///< pixels of one day's graph
    int pointCount = 0; ///< positions of a day
    std::function<double()> lastClose; ///< value of a main pane without a range; asked for then only
    std::function<double()>
        onlyValue; ///< value of the tick of a main pane too low for two; asked for then only
};

/// An axis at one moment: all three belong together.
struct AxisShown {
    IndexBaseData::MaxMinMap ranges; ///< of the pane, merged
    QVector<AxisTick> ticks; ///< top down
    QVector<int> timeLines; ///< columns of a day graph
};

/// The axis of a pane that has these ranges. A sub pane without its range stands at 0; a main pane with room for fewer
/// than two ticks has one in the middle.
AxisShown planAxis(const IndexBaseData::MaxMinMap &ranges, const AxisLayout &layout);

/// The axis of a pane as arithmetic: what its strip shows, and what charts draw their grid and look values up by. Any
/// thread may ask; one thread says what is shown. A reader that may outlive the strip holds it weakly.
class TIMESHARE_EXPORT AxisScale {
public:
    void show(AxisShown shown);
    AxisShown shown() const;

private:
    mutable std::mutex mLock; ///< guards the following; nothing else is locked under it
    AxisShown mShown;
};

/// The scales of the strips of a view. Whoever has a strip's address finds what it shows here, and needs to know
/// nothing of the widget. User-interface thread.
class StripScales {
public:
    using Scale = std::shared_ptr<const AxisScale>;

    void enter(const CGraphAxisWidget *strip, const Scale &scale) { mScales.insert(strip, scale); }
    void remove(const CGraphAxisWidget *strip) { mScales.remove(strip); }
    /// Null for a strip that is not there, or has gone.
    Scale of(const CGraphAxisWidget *strip) const { return mScales.value(strip).lock(); }

private:
    QMap<const CGraphAxisWidget *, std::weak_ptr<const AxisScale>> mScales;
};

} // namespace TC
