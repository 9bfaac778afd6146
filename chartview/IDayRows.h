#pragma once

#include "host/Export.h"

#include <QList>
#include <QVector>

namespace TC {

class CRealtimeGraphWidget;

/// The graphs of a view, as what stands beside its panes asks for them: one row a pane.
class TIMESHARE_EXPORT IDayRows {
public:
    virtual ~IDayRows() = default;
    /// The main pane's row first; in each row the newest day first.
    virtual QVector<QList<CRealtimeGraphWidget *>> dayRows() const = 0;
};

} // namespace TC
