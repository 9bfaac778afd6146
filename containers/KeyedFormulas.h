#pragma once

#include "containers/CIndexWidgetInfo.h"
#include "host/services/CFormulaManager.h"

#include <QMap>
#include <QString>

namespace TC {

class CRealtimeWidget;
class FormulaPlacement;
class MainChart;
class PaneRow;
class SelectedPane;

/// The formulas that the host has placed under keys of its own, and whose results it pushes.
class KeyedFormulas {
public:
    KeyedFormulas(const PaneRow &panes, const SelectedPane &selected, MainChart &chart,
                  FormulaPlacement &placement);

    /// Places a formula of a type, and keeps the pane that shows it under the key. Another type does nothing.
    void place(const QString &key, int type, const QString &name);
    /// Asks for the pane of a key to be closed.
    void close(const QString &key) const;
    /// Results of a key's formula.
    void push(const QString &key, const FormulaMetaPtr &meta, const FormulaResultPtr &result) const;
    /// A pane has gone: the first key that it stood under goes too.
    void forget(const CRealtimeWidget *pane);

private:
    CRealtimeWidget *placeAttached(const QString &name);
    CRealtimeWidget *placeSub(const QString &key, const QString &name);

    const PaneRow &mPanes;
    const SelectedPane &mSelected;
    MainChart &mChart;
    FormulaPlacement &mPlacement;
    QMap<QString, CIndexWidgetInfo> mInfos; ///< by key
};

} // namespace TC
