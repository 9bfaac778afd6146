#pragma once

#include "chartview/MinuteSpan.h"

#include <QPoint>
#include <QRect>
#include <Qt>

namespace TC {

/// What the mouse is about to do on a graph: where it is, and which gesture is under way. A left and a right selection
/// may be under way at once; then the left one grows. Arithmetic alone: who drives it paints and tells the view.
///
/// A right selection outlives its release: it goes on growing until the menu takes its region or the mouse leaves. The
/// menu that it has armed stays armed when the mouse leaves, with the rectangle as it was.
class GraphPointer {
public:
    /// What a move belongs to.
    enum EGesture { eNoGesture, eDrag, eLeftSelection, eRightSelection };

    /// The mouse is over the graph, and the cross line follows it.
    void enter();
    /// Ends all gestures.
    void leave();
    void setMouseIn(bool in) { mMouseIn = in; }
    bool isMouseIn() const { return mMouseIn; }
    /// Whether the cross line follows the mouse of this graph.
    bool isCrossActive() const { return mCrossActive; }

    /// Pixels of the graph; valid from the first position on.
    void setPosition(const QPoint &at);
    void setRow(int y) { mMouseY = y; }
    QPoint position() const { return {mMouseX, mMouseY}; }

    /// Begins the gesture of a button in a graph of `width` pixels beside a left strip of `leftAxisWidth`: a selection
    /// while the cross line is shown, else a drag with the left button. Any other begins none.
    void press(Qt::MouseButton button, const QPoint &at, bool crossShown, int width, int leftAxisWidth);
    /// Lets the gesture under way grow to a point of a graph of `width` pixels, and tells which one it is.
    EGesture grow(const QPoint &mouse, int width, const DayAxis &axis);
    /// The gesture that a release ends.
    EGesture ending() const;
    void endDrag() { mDragging = false; }
    void endLeftSelection();
    /// A right selection that is wide enough arms the menu of its region.
    void arm();
    bool isRegionArmed() const { return !mNormalContextMenu; }
    /// The rectangle of the right selection, which is over with it.
    QRect takeRegion();

    bool isDragging() const { return mDragging; }
    bool isLeftSelecting() const { return mLeftSelecting; }
    bool isRightSelecting() const { return mRightSelecting; }
    bool isSelecting() const { return mLeftSelecting || mRightSelecting; }
    const QRect &leftRect() const { return mLeftRect; }
    const QRect &rightRect() const { return mRightRect; }
    /// What the right selection was last drawn over. It is told by minutes, whatever has become of the axis since.
    const MinuteSpan &rightSpan() const { return mRightSpan; }

private:
    bool mMouseIn = false;
    bool mCrossActive = false;
    int mMouseX = 0;
    int mMouseY = 0;
    bool mDragging = false; ///< a left drag with the cross line off
    int mDragStartX = -1;
    bool mLeftSelecting = false;
    bool mRightSelecting = false;
    bool mNormalContextMenu = true; ///< false when the next context menu is that of the region
    QPoint mLeftStart;
    QRect mLeftRect;
    QPoint mRightStart;
    QRect mRightRect;
    MinuteSpan mRightSpan;
};

} // namespace TC
