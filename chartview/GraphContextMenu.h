#pragma once

#include "host/Export.h"

#include <QString>

class QContextMenuEvent;
class QMenu;
class QMouseEvent;
class QPoint;

namespace TC {

class AccountCommands;
class CRealtimeGraphWidget;
class GraphMenu;
class GraphPointer;
struct GraphSubject;

/// When the menus of a graph open, and which one. What their entries are is told by GraphMenu.
class TIMESHARE_EXPORT GraphContextMenu {
public:
    GraphContextMenu(CRealtimeGraphWidget &graph, const GraphSubject &subject, GraphPointer &pointer,
                     AccountCommands &accounts);

    /// Opens the menu of the pane, or that of a region that the right button has selected. With the right button still
    /// down, as some platforms tell it, the menu waits for its release.
    void open(QContextMenuEvent &event);
    /// Opens the menu that has waited, once the release has been handled.
    void openAfterRelease(const QMouseEvent &release);
    /// Opens the menu of the pane's title at a point of the screen.
    void openTitleMenu(const QPoint &at);
    /// Takes the look of menus from the theme.
    void refreshLook();

private:
    void addEntries(QMenu &menu, const GraphMenu &entries);
    /// The entries of the region, which is over with it; false when it is too narrow.
    bool addRegion(QMenu &menu, const GraphMenu &entries);

    CRealtimeGraphWidget &mGraph;
    const GraphSubject &mSubject;
    GraphPointer &mPointer;
    AccountCommands &mAccounts;
    QString mMenuStyle;
    bool mPostponed = false; ///< until the right button is released
};

} // namespace TC
