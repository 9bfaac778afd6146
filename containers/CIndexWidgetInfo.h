#pragma once

#include <QPointer>
#include <QString>

namespace TC {

class CRealtimeWidget;

/// A formula that the host has placed under a key of its own.
struct CIndexWidgetInfo {
    QString mName; ///< of the formula
    QString mKey; ///< of the host
    int mType = 0; ///< as CFormulaDetail::mType, in the host's words; -1 counts as 0
    QPointer<CRealtimeWidget>
        mWidget; ///< pane that shows the formula; null when none was chosen, or it has gone
};

} // namespace TC
