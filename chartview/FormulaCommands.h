#pragma once

#include "host/Export.h"

#include <QCoreApplication>
#include <QString>

namespace GZ {
class CBaseWidget;
} // namespace GZ

namespace TC {

class CModifyModelParamDialog;
class CRealtimeUiParam;
struct GraphSubject;

/// What the entries of a graph's menus do with its formulas.
class TIMESHARE_EXPORT FormulaCommands {
    Q_DECLARE_TR_FUNCTIONS(TC::FormulaCommands)
public:
    FormulaCommands(GZ::CBaseWidget &graph, const GraphSubject &subject) : mGraph(graph), mSubject(subject) {}

    /// Whether the catalogue has the formula as one that stands over the chart.
    static bool isAttached(const QString &formula, const CRealtimeUiParam &uiParam);

    /// Opens the editor of the pane's formula.
    void edit();
    /// Shows the parameters of the pane's last formula.
    void modifyParameters();
    /// Takes all formulas but the main ones off the pane and asks to close it.
    void closeAll();
    /// Ask for a formula over the chart, and for its end. Of a main pane alone.
    void putOn(const QString &formula);
    void takeOff(const QString &formula);
    void exportFirst();
    /// Puts the text of all series on the clipboard.
    void copyResults();
    /// Puts instrument, formulas and request ids on the clipboard.
    void copyRequestInfo();

private:
    GZ::CBaseWidget &mGraph;
    const GraphSubject &mSubject;
    CModifyModelParamDialog *mModifyParamDialog = nullptr; ///< made on first use, child of the graph
};

} // namespace TC
