#include "host/toolkit/CWidgetList.h"

#include "host/toolkit/Events.h"
#include "toolkit/widgets/StretchLengths.h"

#include <QChildEvent>
#include <QResizeEvent>

#include <algorithm>

namespace GZ {
namespace {

int along(const QSize &size, Qt::Orientation orientation) {
    return orientation == Qt::Horizontal ? size.width() : size.height();
}

Qt::Orientation across(Qt::Orientation orientation) {
    return orientation == Qt::Horizontal ? Qt::Vertical : Qt::Horizontal;
}

/// Size of a widget that was never given one: the fixed size, else the hint, within its bounds.
QSize wishedSize(const QWidget *widget) {
    return widget->sizeHint().expandedTo(widget->minimumSize()).boundedTo(widget->maximumSize());
}

} // namespace

CWidgetList::CWidgetList(Qt::Orientation orientation, QWidget *parent)
    : CBaseWidget(parent), mOrientation(orientation) {}

void CWidgetList::setOrientation(Qt::Orientation orientation) {
    mOrientation = orientation;
    updateWidgetLength();
}

void CWidgetList::setMargin(int margin) {
    setMargins({margin, margin, margin, margin});
}

void CWidgetList::setMargins(const QMargins &margins) {
    mMargins = {std::max(margins.left(), 0), std::max(margins.top(), 0), std::max(margins.right(), 0),
                std::max(margins.bottom(), 0)};
    updateWidgetLength();
}

void CWidgetList::setSpacing(int spacing) {
    mSpacing = std::max(spacing, 0);
    updateWidgetLength();
}

void CWidgetList::addStretchWidget(QWidget *widget, int stretch, int anchor, bool split) {
    insertStretchWidget(count(), widget, stretch, anchor, split);
}

void CWidgetList::insertStretchWidget(int index, QWidget *widget, int stretch, int anchor, bool split) {
    const int share = std::max(stretch, 0);
    insertItem(index, {widget, share, share, anchor, split, false, widget ? lengthOf(widget) : 0});
}

void CWidgetList::addFixedWidget(QWidget *widget, int anchor, bool split) {
    insertFixedWidget(count(), widget, anchor, split);
}

void CWidgetList::addSpace(int pixels) {
    auto *space = new QWidget(this);
    space->setFixedSize(mOrientation == Qt::Horizontal ? QSize(pixels, 0) : QSize(0, pixels));
    addFixedWidget(space, eAnchorStart, false);
}

void CWidgetList::addStretch(int stretch) {
    addStretchWidget(new QWidget(this), stretch, eAnchorStart, false);
}

void CWidgetList::insertFixedWidget(int index, QWidget *widget, int anchor, bool split) {
    insertItem(index, {widget, 0, 0, anchor, split, true, 0});
}

void CWidgetList::insertItem(int index, CWidgetListItem item) {
    if (!item.mWidget || containItem(item.mWidget)) {
        return;
    }
    const bool hidden = item.mWidget->testAttribute(Qt::WA_WState_ExplicitShowHide) && item.mWidget->isHidden();
    if (item.mWidget->parentWidget() != this) {
        item.mWidget->setParent(this); // which hides it
    }
    if (!hidden) {
        item.mWidget->show();
    }
    item.mWidget->installEventFilter(this);
    mItems.insert(mItems.begin() + std::clamp(index, 0, count()), item);
    updateWidgetLength();
}

QWidget *CWidgetList::widgetAt(int index) const {
    const CWidgetListItem *item = getItem(index);
    return item ? item->mWidget : nullptr;
}

const CWidgetListItem *CWidgetList::getItem(int index) const {
    return index >= 0 && index < count() ? &mItems[std::size_t(index)] : nullptr;
}

int CWidgetList::indexOf(const QWidget *widget) const {
    const auto found = std::find_if(mItems.begin(), mItems.end(),
                                    [&](const CWidgetListItem &item) { return item.mWidget == widget; });
    return found == mItems.end() ? -1 : static_cast<int>(found - mItems.begin());
}

CWidgetListItem *CWidgetList::itemOf(const QWidget *widget) {
    const int index = indexOf(widget);
    return index < 0 ? nullptr : &mItems[std::size_t(index)];
}

QWidget *CWidgetList::popWidgetAt(int index) {
    QWidget *widget = widgetAt(index);
    if (widget) {
        widget->removeEventFilter(this);
        mItems.erase(mItems.begin() + index);
        updateWidgetLength();
    }
    return widget;
}

void CWidgetList::changeStretch(QWidget *widget, int stretch) {
    if (CWidgetListItem *item = itemOf(widget)) {
        item->mOldStretch = item->mStretch;
        item->mStretch = std::max(stretch, 0);
        item->mKeptLength = lengthOf(widget);
    }
}

void CWidgetList::resetOldStretch(QWidget *widget) {
    if (CWidgetListItem *item = itemOf(widget)) {
        item->mStretch = item->mOldStretch;
        item->mKeptLength = lengthOf(widget);
    }
}

bool CWidgetList::isShown(int index) const {
    return !mItems[std::size_t(index)].mWidget->isHidden();
}

int CWidgetList::lengthOf(const QWidget *widget) const {
    return along(widget->size(), mOrientation);
}

int CWidgetList::ownLength(const QWidget *widget) const {
    return std::max(along(wishedSize(widget), mOrientation), 0);
}

int CWidgetList::gapBefore(int /*index*/) const {
    return mSpacing;
}

void CWidgetList::placeSplitters() {}

QRect CWidgetList::placed(const CWidgetListItem &item, const QRect &slot) const {
    const Qt::Orientation cross = across(mOrientation);
    const int room = along(slot.size(), cross);
    const bool start = item.mAnchor & eAnchorStart;
    const bool end = item.mAnchor & eAnchorEnd;
    const int wanted = std::clamp(along(wishedSize(item.mWidget), cross), 0, std::max(room, 0));
    const int extent = start && end ? room : wanted;
    const int offset = start ? 0 : end ? room - extent : (room - extent) / 2;
    return mOrientation == Qt::Horizontal ? QRect(slot.x(), slot.y() + offset, slot.width(), extent)
                                          : QRect(slot.x() + offset, slot.y(), extent, slot.height());
}

void CWidgetList::updateWidgetLength() {
    const QRect room = rect().marginsRemoved(mMargins);
    std::vector<int> shown;
    std::vector<int> gaps;
    std::vector<LengthWish> wishes;
    int length = along(room.size(), mOrientation);
    for (int i = 0; i < count(); ++i) {
        if (isShown(i)) {
            const CWidgetListItem &item = mItems[std::size_t(i)];
            gaps.push_back(shown.empty() ? 0 : gapBefore(i));
            length -= gaps.back();
            shown.push_back(i);
            wishes.push_back({item.mFixed          ? ownLength(item.mWidget)
                              : item.mStretch == 0 ? item.mKeptLength
                                                   : -1,
                              item.mStretch});
        }
    }
    const std::vector<int> lengths = divideLength(length, wishes);
    int at = mOrientation == Qt::Horizontal ? room.x() : room.y();
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const CWidgetListItem &item = mItems[std::size_t(shown[i])];
        at += gaps[i];
        const QRect slot = mOrientation == Qt::Horizontal
                               ? QRect(at, room.y(), lengths[i], std::max(room.height(), 0))
                               : QRect(room.x(), at, std::max(room.width(), 0), lengths[i]);
        item.mWidget->setGeometry(placed(item, slot));
        at += lengths[i];
    }
    placeSplitters();
}

QSize CWidgetList::sizeHint() const {
    int length = 0;
    int widest = 0;
    bool first = true;
    for (int i = 0; i < count(); ++i) {
        if (isShown(i)) {
            const QSize wish = wishedSize(mItems[std::size_t(i)].mWidget);
            length += (first ? 0 : gapBefore(i)) + std::max(along(wish, mOrientation), 0);
            widest = std::max(widest, along(wish, across(mOrientation)));
            first = false;
        }
    }
    const QSize inner = mOrientation == Qt::Horizontal ? QSize(length, widest) : QSize(widest, length);
    return inner.grownBy(mMargins);
}

void CWidgetList::resizeEvent(QResizeEvent *event) {
    CBaseWidget::resizeEvent(event);
    updateWidgetLength();
}

bool CWidgetList::event(QEvent *event) {
    if (event->type() == QEvent::LayoutRequest) { // a widget was shown, hidden or asks for another size
        updateWidgetLength();
        updateGeometry();
    }
    return CBaseWidget::event(event);
}

bool CWidgetList::eventFilter(QObject *watched, QEvent *event) {
    if (mTellsActivation && event->type() == QEvent::Enter) {
        auto *widget = static_cast<QWidget *>(watched); // the list watches nothing but its widgets
        deliverEvent(TC::eWidgetActivated, 0, 0, QString(), &widget);
    }
    return CBaseWidget::eventFilter(watched, event);
}

void CWidgetList::childEvent(QChildEvent *event) {
    CBaseWidget::childEvent(event);
    if (event->removed()) {
        const auto gone = std::find_if(mItems.begin(), mItems.end(), [&](const CWidgetListItem &item) {
            return static_cast<QObject *>(item.mWidget) == event->child();
        });
        if (gone != mItems.end()) {
            mItems.erase(gone);
            updateWidgetLength();
        }
    }
}

} // namespace GZ
