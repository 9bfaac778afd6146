#include "chartview/CCrossLineWidget.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/FittedFont.h"
#include "host/drawing/DirectPixels.h"
#include "host/services/CConfigService.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/GlyphText.h"
#include "host/toolkit/PriceDecimals.h"
#include "host/toolkit/ThemeColor.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace TC {
namespace {

constexpr int kTitleHeight = 17; ///< of a title strip of one row

const QString kFontKey = QStringLiteral("fnt_graph_axis_text");

/// A pixel that can be computed with.
int held(int pixel) {
    constexpr int kFar = 1000000;
    return std::clamp(pixel, -kFar, kFar);
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
    CrossLineInput input = makeInput();
    if (input != mInput) {
        std::swap(mInput, input);
        const CrossLinePlan before = std::exchange(mPlan, planCrossLine(mInput));
        update(mPlan.changeFrom(before));
    }
}

bool CCrossLineWidget::isOnLastIndex() const {
    return mUiParam->mCrossIndex == mUiParam->dataCount() - 1;
}

double CCrossLineWidget::percentBase() const {
    if (mUiParam->mGetTradeDateFunc) {
        return mUiParam->service<CStockManager>().getCurrentDateLastClose(mUiParam->getStock(),
                                                                          mUiParam->mGetTradeDateFunc());
    }
    return getDetailLastClose(mUiParam->getStockDetail());
}

int CCrossLineWidget::verticalTop() const {
    const CConfig *config = mUiParam->service<CConfigService>().config();
    return config && config->crossLineBelowTitle() ? mTopOffset : kTitleHeight;
}

CrossLineInput CCrossLineWidget::makeInput() const {
    if (!mUiParam || !mData || !mUiParam->mCrossShown || mUiParam->mCrossIndex < 0) {
        return {};
    }
    CrossLineInput input;
    input.size = size();
    input.ratio = devicePixelRatioF();
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
    return input;
}

void CCrossLineWidget::paintEvent(QPaintEvent *event) {
    CBaseWidget::paintEvent(event);
    refresh(); // what has changed beside the region of this paint is painted next
    const Look &look = mLook.look();
    const QRegion &dirty = event->region();
    QPainter painter(this);
    if (look.ground.alpha() != 0) {
        painter.fillRect(event->rect(), look.ground);
    }
    drawLine(painter, dirty, mPlan.hasHorizontal, mPlan.horizontal);
    drawLine(painter, dirty, mPlan.hasVertical, mPlan.vertical);
    painter.setPen(look.text);
    drawLabel(painter, dirty, mPlan.leftBox, mPlan.leftText);
    drawLabel(painter, dirty, mPlan.rightBox, mPlan.rightText);
}

CCrossLineWidget::Look CCrossLineWidget::Look::ofTheme() {
    return {GZ::themeColor("ic_clr_highlight_widget_bg"), GZ::themeColor("ic_clr_realtime_cross_line"),
            GZ::themeColor("ic_clr_realtime_cross_line_bg"), GZ::themeColor("ic_clr_realtime_cross_line_text")};
}

void CCrossLineWidget::drawLine(QPainter &painter, const QRegion &dirty, bool shown, const QLine &line) {
    const double ratio = painter.deviceTransform().m11();
    const QRect room = CrossLinePlan::roomOf(line, ratio);
    if (!shown || !dirty.intersects(room)) {
        return;
    }
    const QRectF ink = CrossLinePlan::inkOf(line, ratio);
    const QRect device = painter.deviceTransform().mapRect(ink).toRect(); // exact, or not filled by hand
    const PixelPart held(painter, room, PixelPart::EClip::WhenAsked);
    if (!held.pixels().fill(device.left(), device.top(), device.right() + 1, device.bottom() + 1,
                            mLook->line.rgba())) {
        PixelPart::clip(painter);
        painter.fillRect(ink, mLook->line);
    }
}

void CCrossLineWidget::drawLabel(QPainter &painter, const QRegion &dirty, const QRect &box,
                                 const QString &text) {
    if (dirty.intersects(box)) {
        painter.setClipRect(box);
        painter.fillRect(box, mLook->box);
        GZ::GlyphText &glyphs = GZ::GlyphText::ofTheme(kFontKey);
        constexpr int kBearings = 2; // pixels beside the ink of a text
        if (glyphs.width(text) <= box.width() + kBearings) {
            glyphs.drawOn(painter, mLook->box, box, Qt::AlignHCenter, text);
        } else {
            painter.setFont(fittedFont(glyphs.font(), {text}, box.width()));
            painter.drawText(box, Qt::AlignCenter, text);
        }
    }
}

void CCrossLineWidget::resizeEvent(QResizeEvent *event) {
    CBaseWidget::resizeEvent(event);
    refresh();
}

} // namespace TC
