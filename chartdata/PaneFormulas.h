#pragma once

#include <QList>
#include <QString>

#include <functional>

namespace TC {

class CRealtimeUiParam;

/// The formulas of a pane, in the order of adding: names in capitals, each once.
class PaneFormulas {
public:
    /// `names` are those of the pane; `isMainGraph` tells a formula of the main chart.
    PaneFormulas(const CRealtimeUiParam &view, QList<QString> &names,
                 std::function<bool(const QString &)> isMainGraph)
        : mView(view), mNames(names), mIsMainGraph(std::move(isMainGraph)) {}

    void add(const QString &name);
    bool has(const QString &name) const { return mNames.contains(name.toUpper()); }
    void remove(const QString &name) { mNames.removeAll(name); }
    /// Leaves the main formulas of the kind shown, and a new one.
    void replace(const QString &name);
    /// Those that are no formulas of the main chart.
    QList<QString> sub() const;
    /// The first formula of the main chart that is no volume formula; empty when there is none.
    QString mainGraph() const;

private:
    const CRealtimeUiParam &mView;
    QList<QString> &mNames;
    const std::function<bool(const QString &)> mIsMainGraph;
};

} // namespace TC
