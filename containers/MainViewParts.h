#pragma once

#include "containers/CrossLines.h"
#include "containers/FormulaPlacement.h"
#include "containers/HistoryDownload.h"
#include "containers/KeyedFormulas.h"
#include "containers/MainChart.h"
#include "containers/PaneRow.h"
#include "containers/RecordWindows.h"
#include "containers/RegionStatistics.h"
#include "containers/SelectedPane.h"
#include "containers/TemplateBar.h"
#include "containers/TradeFormula.h"
#include "containers/TradeSettings.h"

namespace TC {

class CRealtimeMainWidget;
class CRealtimeTimeWidget;

/// What a view is made of, each part with a state of its own, and how they are put together.
struct MainViewParts {
    /// Makes the panes, the time scale and the template bar, and lays them out in `view`.
    MainViewParts(CRealtimeMainWidget &view, const boost::shared_ptr<CRealtimeUiParam> &uiParam,
                  EIndexViewType viewType);
    /// Deletes all widgets, in an order in which none hears of another that has gone.
    void close();
    void refreshTimeScale();

    PaneRow mPanes;
    SelectedPane mSelected;
    TemplateBar mBar;
    CrossLines mCrossLines;
    MainChart mChart;
    FormulaPlacement mPlacement;
    KeyedFormulas mKeyed;
    TradeFormula mTradeFormula;
    TradeSettings mTradeSettings;
    RecordWindows mRecords;
    RegionStatistics mRegion;
    HistoryDownload mDownload;
    bool mReplay = false; ///< a market replay is on, for panes to come
    CRealtimeTimeWidget *mTimeScale = nullptr; ///< null in a view without time scale

private:
    void layOut(CRealtimeMainWidget &view, const boost::shared_ptr<CRealtimeUiParam> &uiParam,
                EIndexViewType viewType);
};

} // namespace TC
