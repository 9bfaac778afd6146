#include "host/toolkit/CDragWidgetList.h"

#include "toolkit/widgets/StretchLengths.h"
#include "toolkit/widgets/WidgetSplitter.h"

namespace GZ {
namespace {

constexpr int kLeastLength = 16; ///< pixels that a drag leaves of a widget

} // namespace

CDragWidgetList::CDragWidgetList(Qt::Orientation orientation, QWidget *parent)
    : CWidgetList(orientation, parent) {}

CDragWidgetList::~CDragWidgetList() = default;

void CDragWidgetList::setSplitter(const QString &colorKey, int level) {
    mColors[level] = colorKey;
    for (WidgetSplitter *splitter : mSplitters) {
        splitter->setColorKey(mColors.last());
    }
}

void CDragWidgetList::setDragEnable(bool enable) {
    mDragEnable = enable;
    for (WidgetSplitter *splitter : mSplitters) {
        splitter->setDragEnable(enable);
    }
}

bool CDragWidgetList::hasSplitter(int index) const {
    return mItems[std::size_t(index)].mSplit && isShown(index) && shownBefore(index) >= 0;
}

int CDragWidgetList::shownBefore(int index) const {
    int before = index - 1;
    while (before >= 0 && !isShown(before)) {
        --before;
    }
    return before;
}

int CDragWidgetList::gapBefore(int index) const {
    return CWidgetList::gapBefore(index) + (hasSplitter(index) ? WidgetSplitter::kLine : 0);
}

void CDragWidgetList::placeSplitters() {
    int used = 0;
    for (int i = 0; i < count(); ++i) {
        if (!hasSplitter(i)) {
            continue;
        }
        if (used == mSplitters.size()) {
            mSplitters.append(new WidgetSplitter(this));
            mSplitters.last()->setDragEnable(mDragEnable);
            mSplitters.last()->setColorKey(mColors.isEmpty() ? QString() : mColors.last());
        }
        QRect line = widgetAt(i)->geometry();
        if (orientation() == Qt::Horizontal) {
            line = QRect(line.x() - WidgetSplitter::kLine, 0, WidgetSplitter::kLine, height());
        } else {
            line = QRect(0, line.y() - WidgetSplitter::kLine, width(), WidgetSplitter::kLine);
        }
        mSplitters[used++]->place(i, line);
    }
    for (int i = used; i < mSplitters.size(); ++i) {
        mSplitters[i]->hide();
    }
}

void CDragWidgetList::startDrag(int index) {
    // From here on a stretch is a length in pixels, so that a move of some pixels can be told exactly.
    for (int i = 0; i < count(); ++i) {
        CWidgetListItem &item = mItems[std::size_t(i)];
        if (!item.mFixed && item.mStretch > 0 && isShown(i)) {
            item.mStretch = lengthOf(item.mWidget);
        }
    }
    mDragBefore = lengthOf(widgetAt(shownBefore(index)));
    mDragAfter = lengthOf(widgetAt(index));
}

void CDragWidgetList::moveSplitter(int index, int pixels) {
    if (mDragEnable && index >= 0 && index < count() && hasSplitter(index)) {
        startDrag(index);
        drag(index, pixels);
    }
}

void CDragWidgetList::drag(int index, int pixels) {
    const int beforeIndex = index < count() ? shownBefore(index) : -1;
    if (beforeIndex < 0) {
        return;
    }
    CWidgetListItem &before = mItems[std::size_t(beforeIndex)];
    CWidgetListItem &after = mItems[std::size_t(index)];
    if (before.mFixed || after.mFixed) {
        return;
    }
    before.mStretch = before.mKeptLength = movedLength(mDragBefore, mDragAfter, pixels, kLeastLength);
    after.mStretch = after.mKeptLength = mDragBefore + mDragAfter - before.mStretch;
    updateWidgetLength();
}

} // namespace GZ
