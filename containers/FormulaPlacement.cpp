#include "containers/FormulaPlacement.h"

#include "containers/CRealtimeWidget.h"
#include "containers/FormulaTypes.h"
#include "containers/MainChart.h"
#include "containers/PaneRow.h"
#include "containers/SelectedPane.h"
#include "containers/TemplateBar.h"

#include <utility>

namespace TC {

FormulaPlacement::FormulaPlacement(const PaneRow &panes, const SelectedPane &selected, MainChart &chart,
                                   TemplateBar &bar, std::function<CRealtimeWidget *()> addPane)
    : mPanes(panes), mSelected(selected), mChart(chart), mBar(bar), mAddPane(std::move(addPane)) {}

void FormulaPlacement::show(const QString &name) {
    switch (formulaType(name, mChart.services())) {
    case eReplacingFormula:
        replaceChart(name, corvane::ERunMode::Ordinary);
        break;
    case eAttachedFormula:
        if (mChart.toggleAttached(name)) {
            requestMain(corvane::ERunMode::Ordinary);
        }
        removeFromSubs(name);
        break;
    case eSubPaneFormula:
        showSub(name);
        break;
    default:
        break;
    }
}

void FormulaPlacement::apply(const QString &name, corvane::ERunMode mode) {
    switch (formulaType(name, mChart.services())) {
    case eReplacingFormula:
        replaceChart(name, mode);
        break;
    case eAttachedFormula:
        mChart.attachAnew(name);
        requestMain(mode);
        removeFromSubs(name);
        break;
    case eSubPaneFormula:
        applySub(name, mode);
        break;
    default:
        break;
    }
}

void FormulaPlacement::confirm(const QString &name) {
    switch (formulaType(name, mChart.services())) {
    case eReplacingFormula:
        replaceChart(name, corvane::ERunMode::Ordinary);
        break;
    case eAttachedFormula:
        confirmAttached(name);
        break;
    case eSubPaneFormula:
        confirmSub(name);
        break;
    default:
        break;
    }
}

void FormulaPlacement::modify(const QString &name) {
    const int type = formulaType(name, mChart.services());
    if (type < eSubPaneFormula || type > eReplacingFormula) {
        return;
    }
    confirmAttached(name);
    for (CRealtimeWidget *pane : mPanes.subs()) {
        if (pane->findIndex(name)) {
            pane->updateIndex(name);
            pane->request(corvane::ERunMode::Ordinary);
        }
    }
}

void FormulaPlacement::remove(const QString &name) {
    mChart.remove(name);
    removeFromSubs(name);
}

// The main chart

void FormulaPlacement::requestMain(corvane::ERunMode mode) {
    mPanes.main()->request(mode);
}

void FormulaPlacement::replaceChart(const QString &name, corvane::ERunMode mode) {
    mChart.replaceBy(name);
    requestMain(mode);
}

void FormulaPlacement::confirmAttached(const QString &name) {
    if (mChart.has(name)) {
        mChart.remove(name);
        mChart.add(name);
        requestMain(corvane::ERunMode::Ordinary);
    }
}

void FormulaPlacement::takeFromMain(const QString &name) {
    if (!mChart.has(name)) {
        return;
    }
    if (mChart.restoreOrdinary()) {
        requestMain(corvane::ERunMode::Ordinary);
    }
    mChart.remove(name);
}

// Formula panes

void FormulaPlacement::removeFromSubs(const QString &name) {
    for (CRealtimeWidget *pane : mPanes.subs()) {
        if (pane->findIndex(name)) {
            pane->delIndex(name);
        }
    }
}

CRealtimeWidget *FormulaPlacement::addPaneOf(const QString &name) {
    CRealtimeWidget *pane = mAddPane();
    pane->addIndex(name);
    return pane;
}

void FormulaPlacement::replaceIn(CRealtimeWidget *pane, const QString &name) {
    mBar.replaced(pane, name);
    pane->updateIndex(name);
}

void FormulaPlacement::replaceIn(CRealtimeWidget *pane, const QString &name, corvane::ERunMode mode) {
    replaceIn(pane, name);
    pane->request(mode);
}

void FormulaPlacement::showSub(const QString &name) {
    takeFromMain(name);
    if (mPanes.subs().isEmpty()) {
        addPaneOf(name)->request(corvane::ERunMode::Ordinary);
    } else if (mSelected.isMain()) {
        mPanes.subs().last()->updateIndex(name); // the template bar does not hear of it
        mPanes.subs().last()->request(corvane::ERunMode::Ordinary);
    } else {
        replaceIn(mSelected.subOrLast(), name, corvane::ERunMode::Ordinary);
    }
}

void FormulaPlacement::applySub(const QString &name, corvane::ERunMode mode) {
    if (mChart.has(name)) {
        mChart.remove(name);
        if (mChart.restoreOrdinary()) {
            requestMain(mode);
        }
    }
    if (mPanes.subs().isEmpty()) {
        addPaneOf(name)->request(mode);
    } else {
        replaceIn(mSelected.subOrLast(), name, mode);
    }
}

void FormulaPlacement::confirmSub(const QString &name) {
    for (CRealtimeWidget *pane : mPanes.subs()) {
        if (pane->findIndex(name)) {
            replaceIn(pane, name, corvane::ERunMode::Ordinary);
        }
    }
}

} // namespace TC
