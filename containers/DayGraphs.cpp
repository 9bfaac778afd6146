#include "containers/DayGraphs.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CGraphAxisWidget.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/CWidgetList.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <boost/make_shared.hpp>

#include <utility>

namespace TC {

DayGraphs::DayGraphs(GZ::CBaseWidget *pane, boost::shared_ptr<CRealtimeData> mainData,
                     boost::shared_ptr<CRealtimeUiParam> uiParam, EIndexDisplayType displayType,
                     EIndexViewType viewType, CGraphAxisWidget *strip)
    : mPane(pane), mMainData(std::move(mainData)), mUiParam(std::move(uiParam)), mDisplayType(displayType),
      mViewType(viewType), mStrip(strip), mList(new GZ::CWidgetList(Qt::Horizontal, pane)) {
    mList->setMargin(0);
    mList->setSpacing(0);
    mList->setTellsActivation(true);
    mMain = new CRealtimeGraphWidget(mLastId, mMainData, mUiParam, mDisplayType, mViewType, mPane, true);
    mList->addStretchWidget(mMain, 1, GZ::CWidgetList::eAnchorBoth, true);
    mIds.insert(mMain, mLastId);
}

DayGraphs::~DayGraphs() {
    delete std::exchange(mMain, nullptr); // the graphs that are left move up, and tell of it
}

int DayGraphs::count() const {
    return mList->count();
}

CRealtimeGraphWidget *DayGraphs::at(int position) const {
    return qobject_cast<CRealtimeGraphWidget *>(mList->widgetAt(position));
}

QList<CRealtimeGraphWidget *> DayGraphs::newestFirst() const {
    QList<CRealtimeGraphWidget *> graphs;
    for (int i = 0; i < count(); ++i) {
        if (CRealtimeGraphWidget *graph = at(i)) {
            graphs.prepend(graph);
        }
    }
    return graphs;
}

int DayGraphs::positionUnderMouse() const {
    int position = -1;
    for (int i = 0; i < count(); ++i) {
        const CRealtimeGraphWidget *graph = at(i);
        if (graph && graph->isCrossActive()) {
            position = i;
        }
    }
    return position;
}

// Days that come and go

boost::shared_ptr<CRealtimeData> DayGraphs::makeData() const {
    auto data = boost::make_shared<CRealtimeData>(mUiParam, mDisplayType, mPane);
    data->setAxisWidget(mStrip);
    return data;
}

CRealtimeGraphWidget *DayGraphs::insert(int id, const boost::shared_ptr<CRealtimeData> &data, QWidget *parent) {
    auto *graph = new CRealtimeGraphWidget(id, data, mUiParam, mDisplayType, mViewType, parent, false);
    mList->insertStretchWidget(0, graph, 1, GZ::CWidgetList::eAnchorBoth, true);
    return graph;
}

void DayGraphs::joinDays(int paneId) {
    const int date = newestDate();
    mMainData->setTradeDate(date);
    for (int day = 1; day < mUiParam->mDayCount; ++day) {
        const boost::shared_ptr<CRealtimeData> data = makeData();
        data->setTradeDate(dateBack(date, day));
        insert(paneId, data, mPane);
    }
}

void DayGraphs::addOlder() {
    const boost::shared_ptr<CRealtimeData> data = makeData();
    CRealtimeGraphWidget *graph = insert(++mLastId, data, mList);
    mIds.insert(graph, mLastId);
    data->setTradeDate(dateBack(newestDate(), mUiParam->mDayCount - 1));
    for (const QString &formula : mMainData->getFormulas()) {
        data->addFormula(formula);
    }
    graph->show();
    graph->request(corvane::ERunMode::Ordinary);
}

CRealtimeGraphWidget *DayGraphs::removeOldest() {
    auto *graph = count() > 1 ? qobject_cast<CRealtimeGraphWidget *>(mList->popWidgetAt(0)) : nullptr;
    if (!graph) {
        return nullptr;
    }
    if (mIds.remove(graph) > 0) {
        --mLastId;
    }
    if (mSelected == graph) {
        mSelected = nullptr;
    }
    graph->hide();
    graph->deleteLater();
    return graph;
}

void DayGraphs::shareWidth() {
    mList->updateWidgetLength();
}

void DayGraphs::select(int id) {
    for (auto entry = mIds.constBegin(); entry != mIds.constEnd(); ++entry) {
        if (entry.value() == id) {
            mSelected = entry.key();
        } else {
            entry.key()->setRegionLineHide();
        }
    }
}

// Dates

QString DayGraphs::market() const {
    return getDetailQsMarket(mUiParam->getStockDetail());
}

int DayGraphs::newestDate() const {
    return mUiParam->mGetTradeDateFunc ? mUiParam->mGetTradeDateFunc()
                                       : mUiParam->service<CStockManager>().getLastTradingDay(market());
}

int DayGraphs::dateBack(int date, int days) const {
    return mUiParam->service<CStockManager>().getShiftTradeDate(market(), date, -days);
}

void DayGraphs::forEachDay(int date, const std::function<void(CRealtimeGraphWidget &)> &action) {
    const QList<CRealtimeGraphWidget *> graphs = newestFirst();
    for (int i = 0; i < graphs.size(); ++i) {
        graphs[i]->getData()->setTradeDate(dateBack(date, i));
        action(*graphs[i]);
    }
}

} // namespace TC
