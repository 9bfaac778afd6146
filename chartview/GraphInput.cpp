#include "chartview/GraphInput.h"

#include "chartdata/CRealtimeData.h"
#include "chartdata/LinkageScope.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "chartview/GraphPointer.h"
#include "chartview/GraphSubject.h"
#include "chartview/RegionLines.h"
#include "chartview/SelectionGeometry.h"
#include "chartview/TradeTip.h"
#include "host/toolkit/Events.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QMouseEvent>
#include <QPointer>

namespace TC {

namespace {

constexpr int kNoIndex = -1;

} // namespace

void GraphInput::press(QMouseEvent &event) {
    if (mGraph.onMousePress(&event, &mGraph)) {
        mGraph.update();
        return;
    }
    const CRealtimeUiParam &uiParam = *mParts.subject.uiParam;
    mParts.pointer.press(event.button(), event.pos(), uiParam.mCrossShown, mGraph.width(),
                         uiParam.mLeftAxisWidth);
    mGraph.deliverEvent(ePanePressed, 0, 0, QString(), nullptr);
}

void GraphInput::move(QMouseEvent &event) {
    if (mGraph.onMouseMove(&event, &mGraph)) {
        mGraph.update();
        return;
    }
    growGesture(event);
    mParts.pointer.setPosition(event.pos());
    if (moveCrossLine(event.pos().x(), true) && mParts.tip.hide()) {
        mGraph.update();
    }
}

/// What grows is painted with the next repaint.
void GraphInput::growGesture(const QMouseEvent &event) {
    const GraphPointer::EGesture gesture =
        mParts.pointer.grow(event.pos(), mGraph.width(), DayAxis::of(*mParts.subject.uiParam));
    if (gesture == GraphPointer::eDrag) {
        mGraph.setCursor(Qt::ClosedHandCursor);
    } else if (gesture == GraphPointer::eRightSelection) {
        mParts.regionLines.moveTo(mParts.pointer.rightSpan());
    }
}

bool GraphInput::moveCrossLine(int x, bool on) {
    const QPointer<QWidget> alive(&mGraph);
    CRealtimeUiParam &uiParam = *mParts.subject.uiParam;
    uiParam.mCrossX = x;
    const int index = uiParam.getIndexByXAxis(x);
    const int snapped = uiParam.getXAxisByIndex(index);
    uiParam.mCursorByKey = false;
    mGraph.deliverEvent(eCrossLineMoved, snapped, on ? index : kNoIndex, QString(), nullptr);
    if (!alive) {
        return false;
    }
    mParts.pointer.enter();
    return true;
}

bool GraphInput::release(QMouseEvent &event) {
    const QPointer<QWidget> alive(&mGraph); // the host may change its days when it hears of an end
    const GraphPointer::EGesture gesture = mParts.pointer.ending();
    if (gesture == GraphPointer::eDrag) {
        mGraph.setCursor(Qt::ClosedHandCursor); // a drag without a move shows the hand too
        mParts.pointer.endDrag();
        mGraph.setCursor(Qt::ArrowCursor);
    } else if (gesture == GraphPointer::eLeftSelection) {
        deliverLeftSelection();
        if (!alive) {
            return false;
        }
        mParts.pointer.endLeftSelection();
    }
    mParts.pointer.arm();
    mGraph.recalcValueByAxis();
    mGraph.onMouseRelease(&event);
    if (alive) {
        mGraph.update();
    }
    return !alive.isNull();
}

void GraphInput::deliverLeftSelection() {
    const QRect &rect = mParts.pointer.leftRect();
    if (isSelection(rect)) {
        const int start = mParts.subject.uiParam->getIndexByXAxis(rect.x());
        const int end = mParts.subject.uiParam->getIndexByXAxis(rect.x() + rect.width());
        mGraph.deliverEvent(eLeftSelected, qMax(start, 0), end, QString(), nullptr);
    }
}

void GraphInput::doubleClick(const QMouseEvent &event) {
    if (mParts.subject.viewType == EIndexViewType::Plain) {
        mGraph.deliverEvent(ePlainDoubleClicked, 0, 0, QString(), nullptr);
        return;
    }
    if (!mParts.subject.isMain()) {
        mGraph.deliverEvent(eSubPaneDoubleClicked, 0, 0, QString(), nullptr);
        return;
    }
    CRealtimeUiParam &uiParam = *mParts.subject.uiParam;
    if (event.button() == Qt::LeftButton) {
        const int x = event.pos().x();
        const int y = event.pos().y();
        const QString mark = markAt(x, y);
        if (!mark.isEmpty()) {
            mGraph.deliverEvent(eMarkDoubleClicked, x, y, mark, &mGraph);
            return;
        }
        uiParam.mCrossShown = !uiParam.mCrossShown;
        mParts.pointer.setRow(y);
        if (!moveCrossLine(x, uiParam.mCrossShown)) {
            return;
        }
    }
    mGraph.deliverEvent(eMainDoubleClicked, 0, 0, getDetailQsKey(uiParam.getStockDetail()), nullptr);
}

QString GraphInput::markAt(int x, int y) const {
    if (mParts.subject.uiParam->mLinkageFlags == eNoLinkage) {
        return {};
    }
    const CRealtimeData &data = *mParts.subject.data;
    return data.hitOrder(x, y)  ? QStringLiteral("linkage_orders")
           : data.hitDeal(x, y) ? QStringLiteral("linkage_deals")
           : data.hitTask(x, y) ? QStringLiteral("linkage_tasks")
                                : QString();
}

void GraphInput::enter() {
    mParts.pointer.enter();
    mGraph.update();
}

bool GraphInput::leave() {
    mParts.tip.hide();
    if (mParts.pointer.isDragging()) {
        mGraph.setCursor(Qt::ArrowCursor);
    }
    mParts.pointer.leave();
    mGraph.recalcValueByAxis();
    const QPointer<QWidget> alive(&mGraph);
    mGraph.onMouseRelease(nullptr);
    if (alive) {
        mGraph.update();
    }
    return !alive.isNull();
}

void GraphInput::searchTrades() {
    const bool wasShown = mParts.tip.isShown();
    mParts.tip.search(*mParts.subject.data, mParts.pointer.position());
    if (mParts.tip.isShown() || wasShown) {
        mGraph.update();
    }
}

} // namespace TC
