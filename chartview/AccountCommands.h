#pragma once

#include "chartview/GraphMenu.h"
#include "host/Export.h"

#include <QList>
#include <QString>

class QAction;

namespace GZ {
class CBaseWidget;
} // namespace GZ

namespace TC {

struct GraphSubject;

/// What the entries of a graph's menus do about the user's trades: whose are shown, and the formula that shows them.
class TIMESHARE_EXPORT AccountCommands {
public:
    AccountCommands(GZ::CBaseWidget &graph, const GraphSubject &subject) : mGraph(graph), mSubject(subject) {}

    /// Adds accounts, joined by commas, to those shown, or takes them away. A single one that is listed already, on
    /// either side, changes nothing.
    void update(const QString &accounts, bool add);
    void update(const QList<QString> &accounts, bool add);

    /// The accounts of the menu that was opened last; its entries are touched only while it is open.
    void setMenu(GraphMenuAccounts menu) { mMenu = std::move(menu); }
    /// Shows all accounts of the instrument's kind, or none when all were shown as the menu was made.
    void toggleAll(QAction &entry);
    void toggle(const QString &account);
    /// Switches the formula that shows the trades, with the accounts that belong to it; `entry` may be null.
    void toggleFormula(const QAction *entry);

private:
    void tellChange();

    GZ::CBaseWidget &mGraph;
    const GraphSubject &mSubject;
    GraphMenuAccounts mMenu;
};

} // namespace TC
