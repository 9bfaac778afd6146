#pragma once

#include "host/records/Enumerations.h"

#include <QString>
#include <QVector>

#include <utility>

class QAction;
class QMenu;
class QWidget;

namespace TC {

class CRealtimeData;
class CRealtimeGraphWidget;
class CRealtimeUiParam;

/// What a graph tells for its menus.
struct GraphMenuSubject {
    CRealtimeGraphWidget &graph; ///< whose slots the entries call
    const CRealtimeData &data;
    const CRealtimeUiParam &uiParam;
    QString stock; ///< key of the graph's instrument
    EIndexDisplayType displayType = EIndexDisplayType::Main;
    bool replay = false;
    bool history = false; ///< a past day
    bool createNewWork = true; ///< the host has groups of work
};

/// The accounts of a menu: what its entries show, and whether all of them are.
struct GraphMenuAccounts {
    QVector<QAction *> actions;
    bool allShown = false;
};

/// Fills the context menus of a graph: which entries there are, in which order, and which are checked.
class GraphMenu {
public:
    explicit GraphMenu(GraphMenuSubject subject) : mSubject(std::move(subject)) {}

    /// Of a view of a pair.
    void addPaired(QMenu &menu, bool hasCounterpart) const;
    void addMain(QMenu &menu) const;
    /// Of the columns `left` to `right` of the graph.
    void addRegion(QMenu &menu, int left, int right) const;
    void addSub(QMenu &menu) const;
    void addExport(QMenu &menu) const;
    /// The formulas that can take the place of the present ones; null when there is none.
    QMenu *makeReplaceMenu(QWidget *parent) const;
    /// What all menus end with but those of a pair.
    GraphMenuAccounts addClosing(QMenu &menu) const;

private:
    using Slot = void (CRealtimeGraphWidget::*)();
    using CheckedSlot = void (CRealtimeGraphWidget::*)(bool);

    QAction *add(QMenu &menu, const QString &text, Slot slot) const;
    QAction *add(QMenu &menu, const QString &text, CheckedSlot slot) const;
    void addOverlays(QMenu &menu) const;
    void addShownFormulas(QMenu &menu) const;
    void addSectorLevels(QMenu &menu, bool checkable) const;
    void addInstruments(QMenu &menu) const;
    void addSwitches(QMenu &menu) const;
    void addEditing(QMenu &menu) const;
    GraphMenuAccounts addAccounts(QMenu &menu) const;
    bool hasFixedPriceDeal() const;
    bool isConvertible() const;

    const GraphMenuSubject mSubject;
};

} // namespace TC
