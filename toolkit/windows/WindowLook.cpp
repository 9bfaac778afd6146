#include "toolkit/windows/WindowLook.h"

#include "host/toolkit/ThemeColor.h"

namespace GZ {

QPalette windowPalette() {
    const QColor background = themeColor("clr_dialog_bg");
    const QColor text = themeColor("clr_text_default");
    QPalette colors(background);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        colors.setColor(role, text);
    }
    const bool dark = background.lightness() < 128;
    colors.setColor(QPalette::Button, dark ? background.lighter(160) : background.darker(108));
    colors.setColor(QPalette::Base, themeColor("clr_edit_bg"));
    colors.setColor(QPalette::Highlight, themeColor("clr_selection_bg"));
    colors.setColor(QPalette::HighlightedText, themeColor("clr_selection_text"));
    const QColor disabled = themeColor("clr_menu_text_disable");
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        colors.setColor(QPalette::Disabled, role, disabled);
    }
    return colors;
}

} // namespace GZ
