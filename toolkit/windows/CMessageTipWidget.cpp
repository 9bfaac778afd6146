#include "host/windows/CMessageTipWidget.h"

#include "host/toolkit/QtCompat.h"
#include "host/toolkit/ThemeColor.h"

#include <QMouseEvent>
#include <QPainter>

namespace TC {
namespace {

constexpr int kTipMargin = 4; ///< pixels beside the text

} // namespace

CMessageTipWidget::CMessageTipWidget(int id, QWidget *parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint), mId(id) {
    setObjectName(QStringLiteral("message_tip_widget"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    onUiResourceChanged();
}

void CMessageTipWidget::onUiResourceChanged() {
    setFont(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_default_normal")));
    update();
}

bool CMessageTipWidget::event(QEvent *event) {
    if (event->type() == QEvent::ToolTipChange) {
        update();
    }
    return QWidget::event(event);
}

void CMessageTipWidget::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.fillRect(rect(), GZ::themeColor("clr_menu_bg"));
    painter.setPen(GZ::themeColor("ic_clr_highlight_widget_frame"));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.setPen(GZ::themeColor("clr_menu_text"));
    const QRect place = rect().adjusted(kTipMargin, 0, -kTipMargin, 0);
    painter.drawText(place, Qt::AlignCenter,
                     painter.fontMetrics().elidedText(toolTip(), Qt::ElideRight, place.width()));
}

void CMessageTipWidget::mousePressEvent(QMouseEvent *event) {
    mDragging = event->button() == Qt::LeftButton;
    mGrip = GZ::globalPosition(*event) - pos();
}

void CMessageTipWidget::mouseMoveEvent(QMouseEvent *event) {
    if (mDragging && event->buttons().testFlag(Qt::LeftButton)) {
        move(GZ::globalPosition(*event) - mGrip);
    }
}

void CMessageTipWidget::mouseReleaseEvent(QMouseEvent *) {
    mDragging = false;
}

void CMessageTipWidget::mouseDoubleClickEvent(QMouseEvent *event) {
    mDragging = false;
    if (event->button() == Qt::LeftButton) {
        Q_EMIT sigMouseDoubleClick();
    }
}

} // namespace TC
