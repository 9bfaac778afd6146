#include "toolkit/windows/WindowLook.h"

#include "host/toolkit/CUiResource.h"

namespace GZ {

QPalette windowPalette() {
    const CUiResource &theme = CUiResource::instance();
    const QColor background = theme.getColor(QStringLiteral("clr_dialog_bg"));
    const QColor text = theme.getColor(QStringLiteral("clr_text_default"));
    QPalette colors(background);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        colors.setColor(role, text);
    }
    const bool dark = background.lightness() < 128;
    colors.setColor(QPalette::Button, dark ? background.lighter(160) : background.darker(108));
    colors.setColor(QPalette::Base, theme.getColor(QStringLiteral("clr_edit_bg")));
    colors.setColor(QPalette::Highlight, theme.getColor(QStringLiteral("clr_selection_bg")));
    colors.setColor(QPalette::HighlightedText, theme.getColor(QStringLiteral("clr_selection_text")));
    const QColor disabled = theme.getColor(QStringLiteral("clr_menu_text_disable"));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        colors.setColor(QPalette::Disabled, role, disabled);
    }
    return colors;
}

} // namespace GZ
