#include "host/toolkit/CStyleSheetCenter.h"

#include "host/toolkit/ThemeColor.h"

namespace GZ {
namespace {

/// A theme colour as a style sheet writes it.
QString color(const char *key) {
    const QColor value = themeColor(key);
    return QStringLiteral("rgba(%1, %2, %3, %4)")
        .arg(value.red())
        .arg(value.green())
        .arg(value.blue())
        .arg(value.alpha());
}

QString menuStyle() {
    return QStringLiteral("QMenu { background: %1; color: %2; border: 1px solid %3; padding: 3px 0; }"
                          "QMenu::item { padding: 4px 28px 4px 26px; margin: 0 2px; }"
                          "QMenu::item:selected { background: %4; color: %5; }"
                          "QMenu::item:disabled { background: transparent; color: %6; }"
                          "QMenu::separator { height: 1px; background: %3; margin: 3px 8px; }"
                          "QMenu::indicator { width: 12px; height: 12px; left: 7px; }")
        .arg(color("clr_menu_bg"), color("clr_menu_text"), color("clr_menu_border"),
             color("clr_menu_selected_bg"), color("clr_menu_selected_text"), color("clr_menu_text_disable"));
}

} // namespace

QString CStyleSheetCenter::getStyle(int controlType) {
    return controlType == eMenu ? menuStyle() : QString();
}

} // namespace GZ
