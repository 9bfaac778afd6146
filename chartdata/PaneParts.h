#pragma once

#include "chartdata/DataWarnings.h"
#include "chartdata/FormulaTraffic.h"
#include "chartdata/LinkageListener.h"
#include "chartdata/PaneAxis.h"
#include "chartdata/PaneDrawing.h"
#include "chartdata/PaneFormulas.h"
#include "chartdata/PaneLog.h"
#include "chartdata/PaneNews.h"
#include "chartdata/PaneRanges.h"
#include "chartdata/PaneSeries.h"
#include "chartdata/RequestBook.h"
#include "chartdata/ResultIntake.h"
#include "chartdata/SceneSource.h"
#include "chartdata/ShownDay.h"
#include "chartdata/ValueLookup.h"
#include "host/services/CLinkageManager.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <boost/thread/lock_guard.hpp>
#include <boost/thread/recursive_mutex.hpp>

#include <functional>

namespace TC {

/// What the parts of a pane's data are given of the object that they belong to.
struct PaneOwner {
    IndexBaseData &object;
    CRealtimeUiParam &view;
    EIndexDisplayType displayType;
    QList<QString> &formulas;
    IndexBaseDataReq &ids;
    PaneSeries::Map &series;
    IndexBaseData::MaxMinMap &wanted;
    std::function<bool(const QString &)> isMainGraph;
    LinkageListener::Hear tradesChanged;
};

/// What the data of a pane consist of. A part is given those that it needs, and knows nothing of the others.
struct PaneParts {
    explicit PaneParts(const PaneOwner &of)
        : log(&of.object, of.view, of.displayType), warnings(of.view, day),
          formulas(of.view, of.formulas, of.isMainGraph),
          requests(of.view, of.displayType, of.formulas, of.ids), traffic(of.view, log),
          series(of.view, of.displayType, of.formulas, day, of.series),
          ranges(of.view, of.displayType, day, of.series, of.wanted),
          lookup(of.view, of.displayType, of.series, axis, of.wanted),
          scene(of.view, of.displayType, day, series, ranges, axis),
          picture(scene, of.view, [this] { return news.tellReplayTime(series.shown()); }),
          intake(series, ranges, picture), trades(of.view, of.displayType, day, lookup),
          drawing(picture, trades), news(of.object, ranges, picture, drawing, day),
          changes(of.view.service<CLinkageManager>(), of.tradesChanged) {}

    /// Takes a series off, and its ranges with it.
    void forget(const CFormulaKey &key) {
        picture.settle(key);
        series.remove(key);
        ranges.forget(key);
        picture.noteDamage(eSeriesChanged);
    }
    /// The same for all of them.
    void clear() {
        picture.settleAll();
        series.clear();
        ranges.clear();
        picture.noteDamage(eSeriesChanged);
    }
    /// Takes the overlays of a formula off; their ranges stay.
    void forgetOverlays(const QString &formula) {
        picture.settleAll();
        series.removeOverlays(formula);
        picture.noteDamage(eSeriesChanged);
    }

    /// What there is to say of a point, before it is taken in.
    void note(const CFormulaKey &key, const QString &requestId, const se::RPCFormulaInstantResult &point) {
        if (log.takesPoints() || DataWarnings::isOn()) {
            const se::RPCFormulaResultCache *of = series.find(key, series.roleOf(key));
            log.point(of, requestId, point);
            warnings.point(key, requestId, of, point);
        }
    }

    PaneLog log;
    DataWarnings warnings;
    ShownDay day;
    PaneAxis axis;
    PaneFormulas formulas;
    RequestBook requests;
    FormulaTraffic traffic;
    PaneSeries series;
    PaneRanges ranges;
    ValueLookup lookup;
    SceneSource scene;
    ChartPicture picture;
    ResultIntake intake;
    TradeLayer trades;
    PaneDrawing drawing;
    PaneNews news;
    LinkageListener changes;
};

/// The parts under the lock of their owner, for as long as this lives.
class HeldParts {
public:
    HeldParts(boost::recursive_mutex &lock, PaneParts &parts) : mHold(lock), mParts(parts) {}
    PaneParts *operator->() const { return &mParts; }

private:
    const boost::lock_guard<boost::recursive_mutex> mHold;
    PaneParts &mParts;
};

} // namespace TC
