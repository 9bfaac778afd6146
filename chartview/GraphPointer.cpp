#include "chartview/GraphPointer.h"

#include "chartview/SelectionGeometry.h"

#include <utility>

namespace TC {

namespace {

constexpr QRect kNoRect(0, 0, 0, 0);

} // namespace

void GraphPointer::enter() {
    mMouseIn = true;
    mCrossActive = true;
}

void GraphPointer::leave() {
    mMouseIn = false;
    mDragging = false;
    mLeftSelecting = false;
    mRightSelecting = false;
    mCrossActive = false;
}

void GraphPointer::setPosition(const QPoint &at) {
    mMouseX = at.x();
    mMouseY = at.y();
}

void GraphPointer::press(Qt::MouseButton button, const QPoint &at, bool crossShown, int width,
                         int leftAxisWidth) {
    if (button == Qt::LeftButton && crossShown) {
        mLeftStart = selectionStart(at, width, leftAxisWidth);
        mLeftSelecting = true;
    } else if (button == Qt::LeftButton) {
        mDragStartX = at.x();
        mDragging = true;
    } else if (button == Qt::RightButton && crossShown) {
        mRightStart = selectionStart(at, width, leftAxisWidth);
        mRightSelecting = true;
    }
}

GraphPointer::EGesture GraphPointer::grow(const QPoint &mouse, int width, const DayAxis &axis) {
    if (mDragging) {
        return eDrag;
    }
    if (mLeftSelecting) {
        mLeftRect = selectionRect(mLeftStart, mouse, width);
        return eLeftSelection;
    }
    if (mRightSelecting) {
        mRightRect = selectionRect(mRightStart, mouse, width);
        mRightSpan = MinuteSpan::ofColumns(mRightRect.x(), mRightRect.x() + mRightRect.width(), axis);
        return eRightSelection;
    }
    return eNoGesture;
}

GraphPointer::EGesture GraphPointer::ending() const {
    return mDragging ? eDrag : mLeftSelecting ? eLeftSelection : eNoGesture;
}

void GraphPointer::endLeftSelection() {
    mLeftSelecting = false;
    mLeftRect = kNoRect;
}

void GraphPointer::arm() {
    if (mRightSelecting && isSelection(mRightRect)) {
        mNormalContextMenu = false;
    }
}

QRect GraphPointer::takeRegion() {
    mRightSelecting = false;
    mNormalContextMenu = true;
    return std::exchange(mRightRect, kNoRect);
}

} // namespace TC
