#include "containers/MainViewEvents.h"

#include "containers/CRealtimeMainWidget.h"
#include "containers/MainViewParts.h"
#include "host/toolkit/Events.h"

#include <QPointer>

#include <algorithm>
#include <iterator>

namespace TC {

namespace {

using View = CRealtimeMainWidget;
using Parts = MainViewParts;
using Event = ArrivedEvent;

constexpr bool kEndsHere = true;
constexpr bool kTravelsOn = false;
constexpr int kTemplate = 1; ///< second argument of eTemplateChosen

void closePane(View &view, Parts &parts, const Event &event) {
    view.delIndexWidget(event.mFirst);
    const QPointer<View> alive(&view); // the host may close the view
    view.deliverEvent(ePaneCloseAsked, event.mFirst, event.mSecond, event.mText, event.mData);
    if (alive) {
        parts.mBar.givenUp(event.mText);
    }
}

void showChosen(View &view, Parts &parts, const Event &event) {
    if (!parts.mBar.widget()) {
        return;
    }
    QVector<QString> formulas{event.mText};
    if (event.mSecond == kTemplate) {
        view.delAllIndexWidgets();
        formulas = parts.mBar.templateFormulas();
    }
    for (const QString &formula : qAsConst(formulas)) {
        view.addIndexWidget();
        view.handleDoubleClickedFormula(formula);
    }
}

void scaleDays(View &view, Parts &parts, const Event &event) {
    if (event.mSecond != eBackToOneDay) {
        view.scaleView(event.mSecond == eOneDayFewer);
        return;
    }
    for (CRealtimeWidget *pane : parts.mPanes.all()) {
        pane->clearScaleView();
    }
    parts.refreshTimeScale();
    parts.mCrossLines.realign();
    view.downloadData();
}

void moveRegionBound(View & /*view*/, Parts &parts, const Event &event) {
    const auto *time = static_cast<const RegionBoundTime *>(event.mData);
    if (time && (event.mFirst == eRegionStart || event.mFirst == eRegionEnd)) {
        parts.mRegion.moveBound(static_cast<ERegionBound>(event.mFirst), *time);
    }
}

void followGraph(View & /*view*/, Parts &parts, const Event &event) {
    const auto *activated = static_cast<const ActivatedWidget *>(event.mData);
    parts.mCrossLines.followGraph(activated ? *activated : nullptr);
}

struct Rule {
    EEvent mNumber;
    bool mEndsHere;
    void (*mAct)(View &view, Parts &parts, const Event &event);
};

const Rule kRules[] = {
    {eWidgetActivated, kTravelsOn, followGraph},
    {eStatisticAsked, kEndsHere,
     [](View &view, Parts &, const Event &event) { view.statisticSelectRegion(event.mFirst, event.mText); }},
    {eSubPaneDoubleClicked, kEndsHere,
     [](View &, Parts &parts, const Event &event) { parts.mPanes.toggleMaximised(event.mFirst); }},
    {ePaneCloseAsked, kEndsHere, closePane},
    {eOrdinaryChartAsked, kEndsHere,
     [](View &view, Parts &, const Event &) { view.handleDoubleClickedFormula(QStringLiteral("REALTIME")); }},
    {ePaneAsked, kEndsHere, [](View &view, Parts &, const Event &) { view.addIndexWidget(); }},
    {eCrossLineMoved, kEndsHere,
     [](View &, Parts &parts, const Event &event) {
         parts.mCrossLines.moveByMouse(event.mSecond, event.mFirst);
     }},
    {ePanePressed, kEndsHere,
     [](View &view, Parts &, const Event &event) { view.highlightWidget(event.mFirst); }},
    {eGraphResized, kEndsHere,
     [](View &view, Parts &parts, const Event &) { view.highlightWidget(parts.mSelected.id()); }},
    {eTemplateChosen, kEndsHere, showChosen},
    {eRangeOutgrown, kEndsHere,
     [](View &, Parts &, const Event &) {}}, // statistics that are shown would follow
    {eLinkageAsked, kEndsHere, [](View &view, Parts &, const Event &) { view.showLinkageSetting(); }},
    {eLinkageChosen, kEndsHere, [](View &view, Parts &, const Event &) { view.updateLinkageSetting(); }},
    {eLinkageClosed, kEndsHere, [](View &view, Parts &, const Event &) { view.closeLinkageSetting(); }},
    {eLinkageDatasChanged, kEndsHere, [](View &view, Parts &, const Event &) { view.updateLinkageDatas(); }},
    {eMarkDoubleClicked, kEndsHere,
     [](View &view, Parts &, const Event &event) {
         view.showLinkageDatas(event.mData, event.mText, event.mFirst, event.mSecond);
     }},
    {eViewUpdateAsked, kEndsHere, [](View &view, Parts &, const Event &) { view.updateWidgetsView(); }},
    {eDaysAsked, kEndsHere, scaleDays},
    {ePaneSettingsAsked, kEndsHere,
     [](View &view, Parts &, const Event &event) {
         view.deliverEvent(ePaneSettingsAsked, event.mFirst, event.mSecond, event.mText, event.mData);
     }},
    {eTemplateSaveAsked, kEndsHere,
     [](View &, Parts &parts, const Event &) { parts.mBar.save(parts.mPanes.subFormulas()); }},
    {eRegionBoundMoved, kEndsHere, moveRegionBound},
    {eRegionEnded, kEndsHere, [](View &view, Parts &, const Event &) { view.setRegionLineHide(); }},
};

} // namespace

std::optional<bool> handleMainViewEvent(CRealtimeMainWidget &view, MainViewParts &parts,
                                        const ArrivedEvent &event) {
    const auto *rule = std::find_if(std::begin(kRules), std::end(kRules),
                                    [&event](const Rule &one) { return one.mNumber == event.mNumber; });
    if (rule == std::end(kRules)) {
        return std::nullopt;
    }
    const bool endsHere = rule->mEndsHere;
    rule->mAct(view, parts, event); // the view may have gone by now
    return endsHere;
}

} // namespace TC
