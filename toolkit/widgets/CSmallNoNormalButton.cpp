#include "host/toolkit/CSmallNoNormalButton.h"

#include "host/toolkit/ThemeColor.h"

#include <QPainter>

namespace GZ {
CSmallNoNormalButton::CSmallNoNormalButton(const QString &text, int id, QWidget *parent)
    : CEventButton(id, parent) {
    setText(text);
    setFocusPolicy(Qt::NoFocus);
    setAutoDefault(false);
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
