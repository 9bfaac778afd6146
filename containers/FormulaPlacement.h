#pragma once

#include "host/records/Enumerations.h"

#include <QString>

#include <functional>

namespace TC {

class CRealtimeWidget;
class MainChart;
class PaneRow;
class SelectedPane;
class TemplateBar;

/// Where a formula goes: it replaces the main chart, joins it, or stands in a pane of its own, as its type says. A formula
/// that the catalogue lacks, or of another type, changes nothing.
class FormulaPlacement {
public:
    /// `addPane` adds an empty formula pane, selects it and answers it.
    FormulaPlacement(const PaneRow &panes, const SelectedPane &selected, MainChart &chart, TemplateBar &bar,
                     std::function<CRealtimeWidget *()> addPane);

    /// The user asks for it; one attached to the main chart goes off again.
    void show(const QString &name);
    /// It is applied from the editor: shown, or started anew, in a run mode.
    void apply(const QString &name, corvane::ERunMode mode);
    /// Its parameters were confirmed: requested anew wherever it is shown.
    void confirm(const QString &name);
    /// It was changed: on the main pane it goes to the end.
    void modify(const QString &name);
    /// It leaves all panes.
    void remove(const QString &name);

    // Steps of these, for formulas that the host places under a key

    /// A formula that stood on the main pane leaves it. Whether the ordinary chart is to come back is asked before it goes,
    /// so that of a formula which is the chart nothing comes in its place.
    void takeFromMain(const QString &name);
    void removeFromSubs(const QString &name);
    CRealtimeWidget *addPaneOf(const QString &name);
    /// Puts it in the place of a pane's formula.
    void replaceIn(CRealtimeWidget *pane, const QString &name);

private:
    void replaceIn(CRealtimeWidget *pane, const QString &name, corvane::ERunMode mode);
    void replaceChart(const QString &name, corvane::ERunMode mode);
    void showSub(const QString &name);
    void applySub(const QString &name, corvane::ERunMode mode);
    void confirmAttached(const QString &name);
    void confirmSub(const QString &name);
    void requestMain(corvane::ERunMode mode);

    const PaneRow &mPanes;
    const SelectedPane &mSelected;
    MainChart &mChart;
    TemplateBar &mBar;
    std::function<CRealtimeWidget *()> mAddPane;
};

} // namespace TC
