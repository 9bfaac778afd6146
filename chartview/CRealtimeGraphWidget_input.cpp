// The mouse on a graph: cross line, selections, trades under it, and what the smart keyboard hands over.

#include "chartdata/CRealtimeData.h"
#include "chartdata/LinkageScope.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "chartview/ReplayRange.h"
#include "chartview/SelectionGeometry.h"
#include "host/records/CStockInfo.h"
#include "host/services/CReplayManager.h"
#include "host/services/CSingletonT.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QMouseEvent>
#include <QPointer>

#include <utility>

namespace TC {

namespace {

enum EEvent : int {
    ePlainDoubleClicked = 189,
    eLeftSelected = 190,
    eStatisticAsked = 191,
    eSubPaneDoubleClicked = 206,
    eOverlayAsked = 209,
    eCrossLineMoved = 3031,
    ePressed = 3032,
    eMarkDoubleClicked = 3164,
    eMainDoubleClicked = 3199,
    eReplayRangeAsked = 3268,
};

constexpr int kNoIndex = -1;

/// What a graph is asked to overlay, as the second argument of the event.
enum EOverlay : int { eWithAxis = 1, eWithoutAxis = 11 };

/// Index that a shortcut of the smart keyboard stands for; empty for any other.
QString indexOfShortcut(const QString &shortcut) {
    return shortcut == QLatin1String("03")   ? QStringLiteral("SH000001")
           : shortcut == QLatin1String("04") ? QStringLiteral("SZ399001")
                                             : QString();
}

} // namespace

void CRealtimeGraphWidget::mousePressEvent(QMouseEvent *event) {
    CBaseWidget::mousePressEvent(event);
    event->accept();
    if (onMousePress(event, this)) {
        update();
        return;
    }
    if (event->button() == Qt::LeftButton && mUiParam->mCrossShown) {
        mLeftStart = selectionStart(event->pos(), width(), mUiParam->mLeftAxisWidth);
        mLeftSelecting = true;
    } else if (event->button() == Qt::LeftButton) {
        mDragStartX = event->pos().x();
        mDragging = true;
    } else if (event->button() == Qt::RightButton && mUiParam->mCrossShown) {
        mRightStart = selectionStart(event->pos(), width(), mUiParam->mLeftAxisWidth);
        mRightSelecting = true;
    }
    deliverEvent(ePressed, 0, 0, QString(), nullptr);
}

void CRealtimeGraphWidget::mouseMoveEvent(QMouseEvent *event) {
    CBaseWidget::mouseMoveEvent(event);
    event->accept();
    if (onMouseMove(event, this)) {
        update();
        return;
    }
    growSelection(event->pos());
    mMouseX = event->pos().x();
    mMouseY = event->pos().y();
    if (moveCrossLine(mMouseX, true) && mShowTip) {
        mShowTip = false;
        update();
    }
}

/// What a move to a point does to the drag or the selection under way. It is painted with the next repaint.
void CRealtimeGraphWidget::growSelection(const QPoint &mouse) {
    if (mDragging) {
        setCursor(Qt::ClosedHandCursor);
    } else if (mLeftSelecting) {
        mLeftRect = selectionRect(mLeftStart, mouse, width());
    } else if (mRightSelecting) {
        mRightRect = selectionRect(mRightStart, mouse, width());
        mRegionLeftX = mRightRect.x();
        mRegionRightX = mRightRect.x() + mRightRect.width();
    }
}

/// Takes the cross line to a column; switched off, it is told to be at no index. False when this graph has gone by the
/// time that all have heard of it.
bool CRealtimeGraphWidget::moveCrossLine(int x, bool on) {
    const QPointer<CRealtimeGraphWidget> alive(this);
    mUiParam->mCrossX = x;
    const int index = mUiParam->getIndexByXAxis(x);
    const int snapped = mUiParam->getXAxisByIndex(index);
    mUiParam->mCursorByKey = false;
    deliverEvent(eCrossLineMoved, snapped, on ? index : kNoIndex, QString(), nullptr);
    if (!alive) {
        return false;
    }
    mMouseIn = true;
    mCrossActive = true;
    return true;
}

void CRealtimeGraphWidget::mouseReleaseEvent(QMouseEvent *event) {
    CBaseWidget::mouseReleaseEvent(event);
    event->accept();
    const QPointer<CRealtimeGraphWidget> alive(this); // the host may change its days when it hears of an end
    if (mDragging) {
        setCursor(Qt::ClosedHandCursor); // a drag without a move shows the hand too
        mDragging = false;
        setCursor(Qt::ArrowCursor);
    } else if (mLeftSelecting) {
        deliverLeftSelection();
        if (!alive) {
            return;
        }
        mLeftSelecting = false;
        mLeftRect = QRect(0, 0, 0, 0);
    }
    if (mRightSelecting && isSelection(mRightRect)) {
        mNormalContextMenu = false; // the menu that follows ends the selection
    }
    recalcValueByAxis();
    onMouseRelease(event);
    if (!alive) {
        return;
    }
    update();
    openMenuAfterRelease(*event);
}

void CRealtimeGraphWidget::deliverLeftSelection() {
    if (isSelection(mLeftRect)) {
        const int start = mUiParam->getIndexByXAxis(mLeftRect.x());
        const int end = mUiParam->getIndexByXAxis(mLeftRect.x() + mLeftRect.width());
        deliverEvent(eLeftSelected, qMax(start, 0), end, QString(), nullptr);
    }
}

void CRealtimeGraphWidget::mouseDoubleClickEvent(QMouseEvent *event) {
    CBaseWidget::mouseDoubleClickEvent(event);
    event->accept();
    if (mViewType == EIndexViewType::Plain) {
        deliverEvent(ePlainDoubleClicked, 0, 0, QString(), nullptr);
        return;
    }
    if (mDisplayType != EIndexDisplayType::Main) {
        deliverEvent(eSubPaneDoubleClicked, 0, 0, QString(), nullptr);
        return;
    }
    if (event->button() == Qt::LeftButton) {
        const int x = event->pos().x();
        const int y = event->pos().y();
        const QString mark = markAt(x, y);
        if (!mark.isEmpty()) {
            deliverEvent(eMarkDoubleClicked, x, y, mark, this);
            return;
        }
        mUiParam->mCrossShown = !mUiParam->mCrossShown;
        mMouseY = y;
        if (!moveCrossLine(x, mUiParam->mCrossShown)) {
            return;
        }
    }
    deliverEvent(eMainDoubleClicked, 0, 0, getDetailQsKey(mUiParam->getStockDetail()), nullptr);
}

/// Kind of the trade at a point, as hosts are told it; empty when there is none or trades are not shown.
QString CRealtimeGraphWidget::markAt(int x, int y) const {
    if (mUiParam->mLinkageFlags == eNoLinkage) {
        return {};
    }
    return mData->hitOrder(x, y)  ? QStringLiteral("linkage_orders")
           : mData->hitDeal(x, y) ? QStringLiteral("linkage_deals")
           : mData->hitTask(x, y) ? QStringLiteral("linkage_tasks")
                                  : QString();
}

bool CRealtimeGraphWidget::event(QEvent *event) {
    if (event->type() != QEvent::ToolTip) {
        return QWidget::event(event);
    }
    const bool wasShown = mShowTip;
    mDealTips.clear();
    mOrderTips.clear();
    mShowTip =
        mData->getDealsAt(mMouseX, mMouseY, mDealTips) || mData->getOrdersAt(mMouseX, mMouseY, mOrderTips);
    if (mShowTip || wasShown) {
        update();
    }
    return true;
}

/// Takes the tip away: its trades are no longer those of the chart.
void CRealtimeGraphWidget::dropTip() {
    mDealTips.clear();
    mOrderTips.clear();
    if (std::exchange(mShowTip, false)) {
        update();
    }
}

void CRealtimeGraphWidget::enterEvent(QEvent * /*event*/) {
    mMouseIn = true;
    mCrossActive = true;
    update();
}

void CRealtimeGraphWidget::leaveEvent(QEvent * /*event*/) {
    mShowTip = false;
    mMouseIn = false;
    if (mDragging) {
        setCursor(Qt::ArrowCursor);
    }
    mDragging = false;
    mLeftSelecting = false;
    mRightSelecting = false;
    mCrossActive = false;
    recalcValueByAxis();
    const QPointer<CRealtimeGraphWidget> alive(this);
    onMouseRelease(nullptr);
    if (alive) {
        update();
    }
}

void CRealtimeGraphWidget::slotStatistic(bool /*checked*/, int startIndex, const QString &text) {
    mRegionLinesVisible = true;
    update();
    deliverEvent(eStatisticAsked, startIndex, mId, text, nullptr);
}

void CRealtimeGraphWidget::slotSetReplayTimeRegin(bool /*checked*/, int /*index*/, const QString &text) {
    const ReplayRange range = ReplayRange::fromText(text);
    CSingletonT<CReplayManager>::instance().setThousandRange(toMilliseconds(range.start),
                                                             toMilliseconds(range.end));
    deliverEvent(eReplayRangeAsked, static_cast<int>(range.start), static_cast<int>(range.end), range.key,
                 nullptr);
}

void CRealtimeGraphWidget::overlayPickedStock(const CStockInfo &picked, ESmartKeyType type, bool withAxis) {
    const QString key = picked.key();
    // An overlay of the other kind may be picked: the host moves it. A shortcut may have no key, which is part of any.
    const bool overlaidWithout = !key.isEmpty() && mUiParam->isNoAxisOverlayStock(key);
    const bool overlaidWith = !key.isEmpty() && !overlaidWithout && mUiParam->isOverlayStock(key);
    const bool overlaid = withAxis ? overlaidWith : overlaidWithout;
    if (overlaid || mUiParam->isMainStock(key)) {
        return;
    }
    const int kind = withAxis ? eWithAxis : eWithoutAxis;
    switch (type) {
    case ESmartKeyType::Stock:
    case ESmartKeyType::Index:
        deliverEvent(eOverlayAsked, 0, kind, key, nullptr);
        break;
    case ESmartKeyType::Shortcut:
        deliverEvent(eOverlayAsked, 0, kind, indexOfShortcut(picked.mCode), nullptr);
        break;
    default: // functions and formulas are no instruments
        break;
    }
}

} // namespace TC
