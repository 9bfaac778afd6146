#include "host/toolkit/CHighlightWidget.h"

#include "host/toolkit/ThemeColor.h"

#include <QPainter>
#include <QResizeEvent>

#include <algorithm>

namespace GZ {

CHighlightWidget::CHighlightWidget(QWidget *parent) : CBaseWidget(parent) {
    setObjectName(QStringLiteral("highlight_widget"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

void CHighlightWidget::setLRMargin(int left, int right) {
    mLeft = std::max(left, 0);
    mRight = std::max(right, 0);
    updateMask();
    update();
}

void CHighlightWidget::setTopMargin(int top) {
    mTop = std::max(top, 0);
    updateMask();
    update();
}

void CHighlightWidget::setLineWidth(int width) {
    mLine = std::max(width, 1);
    updateMask();
    update();
}

QRect CHighlightWidget::frameRect() const {
    return rect().adjusted(mLeft, mTop, -mRight, 0);
}

void CHighlightWidget::updateMask() {
    // Only the line itself belongs to the widget, so that what moves inside the frame never repaints it.
    const QRect outer = frameRect();
    const QRect inner = outer.adjusted(mLine, mLine, -mLine, -mLine);
    setMask(outer.isEmpty() ? QRegion(-1, -1, 1, 1)
                            : QRegion(outer).subtracted(inner.isEmpty() ? QRect() : inner));
}

void CHighlightWidget::resizeEvent(QResizeEvent *event) {
    CBaseWidget::resizeEvent(event);
    updateMask();
}

void CHighlightWidget::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.fillRect(frameRect(), themeColor("ic_clr_highlight_widget_frame"));
}

} // namespace GZ
