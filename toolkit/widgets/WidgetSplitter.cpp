#include "toolkit/widgets/WidgetSplitter.h"

#include "host/toolkit/QtCompat.h"
#include "host/toolkit/ThemeColor.h"

#include <QMouseEvent>
#include <QPainter>

namespace GZ {

WidgetSplitter::WidgetSplitter(CDragWidgetList *list) : QWidget(list), mList(list) {
    updateCursor();
}

void WidgetSplitter::place(int index, const QRect &line) {
    mIndex = index;
    const bool upright = mList->orientation() == Qt::Horizontal;
    const QMargins grip = upright ? QMargins(kGrip, 0, kGrip, 0) : QMargins(0, kGrip, 0, kGrip);
    setGeometry(line.marginsAdded(grip));
    mLine = line.translated(-pos());
    updateCursor();
    show();
    raise();
}

void WidgetSplitter::setColorKey(const QString &key) {
    mColorKey = key;
    update();
}

void WidgetSplitter::setDragEnable(bool enable) {
    mEnabled = enable;
    mDragging = mDragging && enable;
    setAttribute(Qt::WA_TransparentForMouseEvents, !enable);
    updateCursor();
}

void WidgetSplitter::updateCursor() {
    setCursor(!mEnabled                                ? Qt::ArrowCursor
              : mList->orientation() == Qt::Horizontal ? Qt::SplitHCursor
                                                       : Qt::SplitVCursor);
}

void WidgetSplitter::paintEvent(QPaintEvent *) {
    if (!mColorKey.isEmpty()) {
        QPainter painter(this);
        painter.fillRect(mLine, themeColor(mColorKey));
    }
}

int WidgetSplitter::position(const QMouseEvent *event) const {
    return mList->orientation() == Qt::Horizontal ? GZ::globalPosition(*event).x()
                                                  : GZ::globalPosition(*event).y();
}

void WidgetSplitter::mousePressEvent(QMouseEvent *event) {
    if (event->button() == Qt::LeftButton && mEnabled) {
        mDragging = true;
        mPressedAt = position(event);
        mList->startDrag(mIndex);
    }
}

void WidgetSplitter::mouseMoveEvent(QMouseEvent *event) {
    if (mDragging) {
        mList->drag(mIndex, position(event) - mPressedAt);
    }
}

void WidgetSplitter::mouseReleaseEvent(QMouseEvent *event) {
    if (event->button() == Qt::LeftButton) {
        mDragging = false;
    }
}

void WidgetSplitter::mouseDoubleClickEvent(QMouseEvent *event) {
    mousePressEvent(event); // a fast second drag begins with it
}

} // namespace GZ
