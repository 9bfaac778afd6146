#include "chartview/CCrossLineWidget.h"

#include "chartdata/CRealtimeData.h"
#include "host/services/CConfigService.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/PriceDecimals.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace TC {
namespace {

constexpr int kTitleHeight = 17; ///< of a title strip of one row

/// A pixel that can be computed with.
int held(int pixel) {
    constexpr int kFar = 1000000;
    return std::clamp(pixel, -kFar, kFar);
}

QColor themeColor(const char *key) {
    return GZ::CUiResource::instance().getColor(QLatin1String(key));
}

} // namespace

CCrossLineWidget::CCrossLineWidget(boost::shared_ptr<CRealtimeUiParam> uiParam,
                                   boost::shared_ptr<CRealtimeData> source, QWidget *parent)
    : CBaseWidget(parent), mUiParam(std::move(uiParam)), mData(std::move(source)) {
    setObjectName(QStringLiteral("crossline_widget"));
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void CCrossLineWidget::setY(int y) {
    mY = held(y);
    refresh();
}

void CCrossLineWidget::setX(int x) {
    mX = held(x);
    refresh();
}

void CCrossLineWidget::setPosition(int x, int y) {
    mX = held(x);
    mY = held(y);
    refresh();
}

void CCrossLineWidget::setData(boost::shared_ptr<CRealtimeData> source) {
    mData = std::move(source);
    refresh();
}

void CCrossLineWidget::setGraphRect(const QRect &rect, int topOffset) {
    mGraphRect = rect;
    mTopOffset = held(topOffset);
    refresh();
}

void CCrossLineWidget::setFixedExtent(int width, int height) {
    setFixedWidth(width);
    setFixedHeight(height);
}

void CCrossLineWidget::refresh() {
    CrossLinePlan plan = makePlan();
    if (plan != mPlan) {
        update(mPlan.region() | plan.region());
        std::swap(mPlan, plan);
    }
}

bool CCrossLineWidget::isOnLastIndex() const {
    return mUiParam->mCrossIndex == mUiParam->dataCount() - 1;
}

double CCrossLineWidget::percentBase() const {
    if (mUiParam->mGetTradeDateFunc) {
        return CSingletonT<CStockManager>::instance().getCurrentDateLastClose(mUiParam->getStock(),
                                                                              mUiParam->mGetTradeDateFunc());
    }
    return getDetailLastClose(mUiParam->getStockDetail());
}

int CCrossLineWidget::verticalTop() const {
    const CConfig *config = getConfig();
    return config && config->crossLineBelowTitle() ? mTopOffset : kTitleHeight;
}

CrossLinePlan CCrossLineWidget::makePlan() const {
    if (!mUiParam || !mData || !mUiParam->mCrossShown || mUiParam->mCrossIndex < 0) {
        return {};
    }
    CrossLineInput input;
    input.size = size();
    input.shown = true;
    input.index = mUiParam->mCrossIndex;
    input.x = isOnLastIndex() ? mUiParam->getXAxisByIndex(input.index) : mX;
    input.y = mY;
    input.row = mY;
    input.top = verticalTop();
    if (mY >= 0) {
        input.withPercent = true;
        if (mUiParam->mCursorByKey) {
            input.row = isOnLastIndex() ? mData->yAtIndex(input.index, mGraphRect) + mTopOffset : mY;
            input.value = mData->valueAtIndex(input.index);
        } else {
            input.value = mData->valueAtY(mY - mTopOffset, mGraphRect, &input.withPercent);
        }
        input.decimals = decimals(getDetailPriceTick(mUiParam->getStockDetail()));
        input.base = percentBase();
        input.invalid = tr("非法值");
    }
    return planCrossLine(input);
}

void CCrossLineWidget::paintEvent(QPaintEvent *event) {
    CBaseWidget::paintEvent(event);
    refresh(); // what has changed beside the region of this paint is painted next
    QPainter painter(this);
    painter.fillRect(event->rect(), themeColor("ic_clr_highlight_widget_bg"));
    drawLines(painter);
    painter.setFont(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_graph_axis_text")));
    drawLabel(painter, mPlan.leftBox, mPlan.leftText);
    drawLabel(painter, mPlan.rightBox, mPlan.rightText);
}

void CCrossLineWidget::drawLines(QPainter &painter) const {
    painter.setPen(QPen(themeColor("ic_clr_realtime_cross_line"), 1.0, Qt::SolidLine));
    if (mPlan.hasHorizontal) {
        painter.drawLine(mPlan.horizontal);
    }
    if (mPlan.hasVertical) {
        painter.drawLine(mPlan.vertical);
    }
}

void CCrossLineWidget::drawLabel(QPainter &painter, const QRect &box, const QString &text) const {
    if (box.isNull()) {
        return;
    }
    painter.fillRect(box, themeColor("ic_clr_realtime_cross_line_bg"));
    painter.setPen(themeColor("ic_clr_realtime_cross_line_text"));
    painter.drawText(box, Qt::AlignCenter, text);
}

void CCrossLineWidget::resizeEvent(QResizeEvent *event) {
    CBaseWidget::resizeEvent(event);
    refresh();
}

} // namespace TC
