#pragma once

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <boost/shared_ptr.hpp>

class QContextMenuEvent;
class QKeySequence;
class QShortcut;

namespace TC {

class CRealtimeGraphWidget;
class CRealtimeUiParam;
class CRealtimeWidget;
class CrossLines;
class MainView;
class PaneRow;
class SelectedPane;

/// What the keyboard does in a view beside moving the cross line, so that it reaches all that the mouse does there:
///
/// - Ctrl+Up, Ctrl+Down: the pane above or below is selected
/// - Ctrl+Shift+Up, Ctrl+Shift+Down: the splitter above the selected pane moves, beneath the main pane that under it
/// - Shift+Left, Shift+Right, Shift+Home, Shift+End: a region is marked from the cross line on, as by a drag with the right
///   button; Escape gives it up, and the menu key opens its menu
/// - Ctrl+Return, Ctrl+Enter: as a double click; a formula pane is maximised or restored, over the chart the records of the mark
///   at the minute of the cross line open
/// - the menu key: the menu of the selected pane
///
/// They are shortcuts of the view while it, or something in it, has the focus.
class ViewKeys : public QObject {
    Q_OBJECT
public:
    ViewKeys(MainView &view, const PaneRow &panes, SelectedPane &selected, CrossLines &crossLines,
             boost::shared_ptr<const CRealtimeUiParam> uiParam);

    /// Opens the menu that a key asks for; it may delete the view.
    void openMenu(const QContextMenuEvent &event);

private:
    template <class Action> QShortcut *add(const QKeySequence &keys, Action action);
    CRealtimeWidget *selectedPane() const;
    void selectPane(int step);
    void moveSplitter(int pixels);
    /// Extends the region by some minutes; the first call begins one.
    void mark(int minutes);
    /// Where a minute of the cross line is in a graph.
    QPoint placeOf(const CRealtimeGraphWidget &graph, int index) const;
    void sendMouse(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held);
    /// The region is given up.
    void unmark();
    void activate();
    void openRecords();

    MainView &mView;
    const PaneRow &mPanes;
    SelectedPane &mSelected;
    CrossLines &mCrossLines;
    boost::shared_ptr<const CRealtimeUiParam> mUiParam;
    QShortcut *mGiveUp; ///< works while a region is marked
    QPointer<CRealtimeGraphWidget> mMarked; ///< the graph in which one is; null: none
    int mEnd = 0; ///< minute that it has been extended to
};

} // namespace TC
