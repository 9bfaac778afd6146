#pragma once

#include <QCoreApplication>
#include <QString>
#include <QVector>

class QAction;
class QMenu;
class QWidget;

namespace TC {

class CRealtimeGraphWidget;
class MinuteSpan;
struct GraphSubject;

/// The accounts of a menu: what its entries show, and whether all of them are.
struct GraphMenuAccounts {
    QVector<QAction *> actions;
    bool allShown = false;
};

/// Fills the context menus of a graph: which entries there are, in which order, and which are checked.
class GraphMenu {
    Q_DECLARE_TR_FUNCTIONS(TC::GraphMenu)
public:
    /// The entries call the slots of `graph`.
    GraphMenu(CRealtimeGraphWidget &graph, const GraphSubject &subject) : mGraph(graph), mSubject(subject) {}

    /// Of a view of a pair.
    void addPaired(QMenu &menu) const;
    void addMain(QMenu &menu) const;
    /// Of a region of the graph.
    void addRegion(QMenu &menu, const MinuteSpan &region) const;
    void addSub(QMenu &menu) const;
    void addExport(QMenu &menu) const;
    /// The formulas that can take the place of the present ones; null when there is none.
    QMenu *makeReplaceMenu(QWidget *parent) const;
    /// What all menus end with but those of a pair.
    GraphMenuAccounts addClosing(QMenu &menu) const;

private:
    /// Adds an entry for a slot of the graph.
    template <class Slot> QAction *add(QMenu &menu, const QString &text, Slot slot) const;
    void addOverlays(QMenu &menu) const;
    void addShownFormulas(QMenu &menu) const;
    void addSectorLevels(QMenu &menu, bool checkable) const;
    void addInstruments(QMenu &menu) const;
    void addSwitches(QMenu &menu) const;
    void addEditing(QMenu &menu) const;
    GraphMenuAccounts addAccounts(QMenu &menu) const;
    bool hasFixedPriceDeal() const;
    bool isConvertible() const;

    CRealtimeGraphWidget &mGraph;
    const GraphSubject &mSubject;
};

} // namespace TC
