#include "host/toolkit/CSmallNoNormalButton.h"

#include "host/toolkit/CPushButton.h"
#include "host/toolkit/Events.h"
#include "host/toolkit/ThemeColor.h"

#include <QPainter>

namespace GZ {
namespace {} // namespace

CSmallNoNormalButton::CSmallNoNormalButton(const QString &text, int id, QWidget *parent)
    : CEventWidgetT<QPushButton>(parent), mId(id) {
    setText(text);
    setFocusPolicy(Qt::NoFocus);
    setAutoDefault(false);
    connect(this, &QPushButton::clicked, this,
            [this] { deliverEvent(TC::eButtonClicked, mId, 0, QString(), nullptr); });
    onUiResourceChanged();
}

void CSmallNoNormalButton::setFontKey(const QString &key) {
    mFontKey = key;
    onUiResourceChanged();
}

void CSmallNoNormalButton::onUiResourceChanged() {
    setFont(CUiResource::instance().getFont(mFontKey));
    update();
}

void CSmallNoNormalButton::enterEvent(QEvent *event) {
    CEventWidgetT<QPushButton>::enterEvent(event);
    update();
}

void CSmallNoNormalButton::leaveEvent(QEvent *event) {
    CEventWidgetT<QPushButton>::leaveEvent(event);
    update();
}

void CSmallNoNormalButton::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    const bool pressed = isDown();
    if (isEnabled() && (pressed || underMouse())) {
        painter.fillRect(rect(), themeColor(pressed ? "tc_clr_conciseStyle_depth_bottom_group_btn_press"
                                                    : "tc_clr_conciseStyle_depth_bottom_group_btn_hover"));
    }
    painter.setPen(themeColor("clr_pushbutton_group_border_new"));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.setPen(themeColor(!isEnabled()   ? "tc_clr_depth_bottom_group_btn_txt_disable"
                              : pressed      ? "tc_clr_depth_bottom_group_btn_txt_press"
                              : underMouse() ? "tc_clr_depth_bottom_group_btn_txt_hover"
                                             : "clr_text_default"));
    painter.drawText(rect(), Qt::AlignCenter, text());
}

} // namespace GZ
