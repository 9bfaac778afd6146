#include "host/toolkit/CPushButton.h"

#include "host/toolkit/ThemeColor.h"
#include "toolkit/drawing/StretchedImage.h"

#include <QPaintEvent>
#include <QPainter>

#include <utility>

namespace GZ {
namespace {

/// What lies over the image: light under the mouse, dark when pressed.
QColor shadeOf(bool down, bool hovered) {
    return down ? QColor(0, 0, 0, 60) : hovered ? QColor(255, 255, 255, 36) : QColor(Qt::transparent);
}

} // namespace

CPushButton::CPushButton(QString imageKey, int id, int left, int right, int top, int bottom, QWidget *parent)
    : CEventButton(id, parent), mImageKey(std::move(imageKey)), mStretched(true) {
    mBorders = imageBorders(mImageKey, left, right, top, bottom);
}

CPushButton::CPushButton(QString imageKey, int id, QWidget *parent)
    : CPushButton(std::move(imageKey), id, 0, 0, 0, 0, parent) {
    mStretched = false;
    setFocusPolicy(Qt::NoFocus);
    resize(sizeHint());
}

void CPushButton::setAutoRaise(bool raise) {
    mAutoRaise = raise;
    update();
}

QSize CPushButton::sizeHint() const {
    const QPixmap image = CUiResource::instance().getPixmap(mImageKey);
    return (QSizeF(image.size()) / image.devicePixelRatioF()).toSize();
}

void CPushButton::paintEvent(QPaintEvent *) {
    const CUiResource &theme = CUiResource::instance();
    const QPixmap image = theme.getPixmap(mImageKey);
    const bool pressed = isDown() || isChecked();
    QPainter painter(this);
    painter.setOpacity(isEnabled() ? 1.0 : 0.4);
    if (mStretched) {
        drawStretched(painter, image, mBorders, rect());
    } else {
        const QSizeF size = QSizeF(image.size()) / image.devicePixelRatioF();
        painter.drawPixmap(QPointF(int(width() - size.width()) / 2, int(height() - size.height()) / 2), image);
    }
    if (isEnabled() && (pressed || underMouse())) {
        painter.fillRect(rect(), shadeOf(pressed, underMouse()));
    } else if (!mAutoRaise && !mStretched) {
        painter.fillRect(rect(), shadeOf(false, true));
    }
    if (hasFocus() && !mStretched) {
        painter.setPen(themeColor("ic_clr_highlight_widget_frame"));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
    if (!text().isEmpty()) {
        painter.setFont(font());
        painter.setPen(theme.getColor(QStringLiteral("clr_pushbutton_text")));
        painter.drawText(rect(), Qt::AlignCenter, text());
    }
}

} // namespace GZ
