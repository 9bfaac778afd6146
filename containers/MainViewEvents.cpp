#include "containers/MainViewEvents.h"

#include "containers/CrossLines.h"
#include "containers/PaneRow.h"
#include "containers/RegionStatistics.h"
#include "containers/SelectedPane.h"
#include "containers/TemplateBar.h"
#include "host/toolkit/Events.h"

#include <QPointer>

#include <algorithm>
#include <iterator>

namespace TC {

namespace {

constexpr bool kEndsHere = true;
constexpr bool kTravelsOn = false;
constexpr int kTemplate = 1; ///< second argument of eTemplateChosen

} // namespace

struct CRealtimeMainWidget::Events::Rule {
    EEvent mNumber;
    bool mEndsHere;
    void (*mAct)(CRealtimeMainWidget &view, const Arrived &event);
};

using View = CRealtimeMainWidget;

const View::Events::Rule View::Events::kRules[] = {
    {eWidgetActivated, kTravelsOn,
     [](View &view, const Arrived &event) {
         const auto *activated = static_cast<const ActivatedWidget *>(event.mData);
         view.mCrossLines->followGraph(activated ? *activated : nullptr);
     }},
    {eStatisticAsked, kEndsHere,
     [](View &view, const Arrived &event) { view.statisticSelectRegion(event.mFirst, event.mText); }},
    {eSubPaneDoubleClicked, kEndsHere,
     [](View &view, const Arrived &event) { view.mPanes->toggleMaximised(event.mFirst); }},
    {ePaneCloseAsked, kEndsHere, closePane},
    {eOrdinaryChartAsked, kEndsHere,
     [](View &view, const Arrived &) { view.handleDoubleClickedFormula(QStringLiteral("REALTIME")); }},
    {ePaneAsked, kEndsHere, [](View &view, const Arrived &) { view.addIndexWidget(); }},
    {eCrossLineMoved, kEndsHere,
     [](View &view, const Arrived &event) { view.mCrossLines->moveByMouse(event.mSecond, event.mFirst); }},
    {ePanePressed, kEndsHere, [](View &view, const Arrived &event) { view.highlightWidget(event.mFirst); }},
    {eGraphResized, kEndsHere, [](View &view, const Arrived &) { view.highlightWidget(view.mSelected->id()); }},
    {eTemplateChosen, kEndsHere, showChosen},
    {eRangeOutgrown, kEndsHere, [](View &view, const Arrived &) { view.mRegion->refresh(); }},
    {eLinkageAsked, kEndsHere, [](View &view, const Arrived &) { view.showLinkageSetting(); }},
    {eLinkageChosen, kEndsHere, [](View &view, const Arrived &) { view.updateLinkageSetting(); }},
    {eLinkageClosed, kEndsHere, [](View &view, const Arrived &) { view.closeLinkageSetting(); }},
    {eLinkageDatasChanged, kEndsHere, [](View &view, const Arrived &) { view.updateLinkageDatas(); }},
    {eMarkDoubleClicked, kEndsHere,
     [](View &view, const Arrived &event) {
         view.showLinkageDatas(event.mData, event.mText, event.mFirst, event.mSecond);
     }},
    {eViewUpdateAsked, kEndsHere, [](View &view, const Arrived &) { view.updateWidgetsView(); }},
    {eDaysAsked, kEndsHere, scaleDays},
    {ePaneSettingsAsked, kEndsHere,
     [](View &view, const Arrived &event) {
         view.deliverEvent(ePaneSettingsAsked, event.mFirst, event.mSecond, event.mText, event.mData);
     }},
    {eTemplateSaveAsked, kEndsHere,
     [](View &view, const Arrived &) { view.mBar->save(view.mPanes->subFormulas()); }},
    {eRegionBoundMoved, kEndsHere, moveRegionBound},
    {eRegionEnded, kEndsHere, [](View &view, const Arrived &) { view.setRegionLineHide(); }},
};

std::optional<bool> View::Events::handle(CRealtimeMainWidget &view, const Arrived &event) {
    const auto *rule = std::find_if(std::begin(kRules), std::end(kRules),
                                    [&event](const Rule &one) { return one.mNumber == event.mNumber; });
    if (rule == std::end(kRules)) {
        return std::nullopt;
    }
    rule->mAct(view, event); // the view may have gone then
    return rule->mEndsHere;
}

void View::Events::closePane(CRealtimeMainWidget &view, const Arrived &event) {
    view.delIndexWidget(event.mFirst);
    const QPointer<View> alive(&view); // the host may close the view
    view.deliverEvent(ePaneCloseAsked, event.mFirst, event.mSecond, event.mText, event.mData);
    if (alive) {
        view.mBar->givenUp(event.mText);
    }
}

void View::Events::showChosen(CRealtimeMainWidget &view, const Arrived &event) {
    if (!view.mBar->widget()) {
        return;
    }
    QVector<QString> formulas{event.mText};
    if (event.mSecond == kTemplate) {
        view.delAllIndexWidgets();
        formulas = view.mBar->templateFormulas();
    }
    for (const QString &formula : qAsConst(formulas)) {
        view.addIndexWidget();
        view.handleDoubleClickedFormula(formula);
    }
}

void View::Events::moveRegionBound(CRealtimeMainWidget &view, const Arrived &event) {
    const auto *time = static_cast<const RegionBoundTime *>(event.mData);
    if (time && event.mFirst >= eRegionStart && event.mFirst <= eReplayTime) {
        view.mRegion->moveBound(static_cast<ERegionBound>(event.mFirst), *time);
    }
}

void View::Events::scaleDays(CRealtimeMainWidget &view, const Arrived &event) {
    if (event.mSecond == eBackToOneDay) {
        view.backToOneDay();
    } else {
        view.scaleView(event.mSecond == eOneDayFewer);
    }
}

} // namespace TC
