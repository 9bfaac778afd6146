#pragma once

#include <QList>
#include <QVector>

namespace TC {

class CRealtimeGraphWidget;

/// The graphs of a view, as what stands beside its panes asks for them: one row a pane.
class IDayRows {
public:
    virtual ~IDayRows() = default;
    /// The main pane's row first; in each row the newest day first.
    virtual QVector<QList<CRealtimeGraphWidget *>> dayRows() const = 0;
};

} // namespace TC
