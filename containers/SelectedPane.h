#pragma once

#include "host/records/Enumerations.h"

#include <Qt>
#include <boost/shared_ptr.hpp>

class QWidget;

namespace GZ {
class CHighlightWidget;
} // namespace GZ

namespace TC {

class CRealtimeUiParam;
class CRealtimeWidget;
class PaneRow;

/// Which pane of a view is selected, by id, and the frame over it. The id may be that of a pane that has gone. In a view
/// without highlight nothing is ever selected.
class SelectedPane {
public:
    SelectedPane(QWidget *view, const PaneRow &panes, boost::shared_ptr<const CRealtimeUiParam> uiParam,
                 EIndexViewType viewType);
    ~SelectedPane();
    SelectedPane(const SelectedPane &) = delete;
    SelectedPane &operator=(const SelectedPane &) = delete;

    int id() const { return mId; } ///< -1 at first
    bool isMain() const;
    /// The formula pane that is selected; null when it is none.
    CRealtimeWidget *sub() const;
    /// The same, or else the last formula pane; null when there is none.
    CRealtimeWidget *subOrLast() const;

    void select(int id);
    /// Selects the formula pane at a position, or the last one; without formula panes the main pane.
    void selectAt(int position);
    /// Puts the frame over the selected pane, which has another place.
    void place();
    /// While the keyboard's focus is to be seen, the frame is thicker, and over the main pane where nothing is selected.
    void showFocus(bool shown);
    /// The view has the focus: one that the keyboard has brought is seen.
    void takeFocus(Qt::FocusReason reason);

private:
    void placeOver(const CRealtimeWidget *pane);
    /// No frame, or that of the focus.
    void placeOverNone();

    QWidget *mView;
    const PaneRow &mPanes;
    boost::shared_ptr<const CRealtimeUiParam> mUiParam;
    bool mSelects;
    GZ::CHighlightWidget *mFrame;
    int mId = -1;
    bool mFocusShown = false;
};

} // namespace TC
