#include "toolkit/windows/DialogLook.h"

#include "host/toolkit/CUiResource.h"

#include <QWidget>

namespace GZ {

QPalette dialogPalette() {
    const auto color = [](const char *key) { return CUiResource::instance().getColor(QLatin1String(key)); };
    QPalette colors(color("clr_dialog_bg")); // with all shades of frames and scroll bars
    const QColor text = color("clr_text_default");
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        colors.setColor(role, text);
        colors.setColor(QPalette::Disabled, role, color("clr_menu_text_disable"));
    }
    colors.setColor(QPalette::Base, color("clr_edit_bg"));
    colors.setColor(QPalette::Highlight, color("clr_selection_bg"));
    colors.setColor(QPalette::HighlightedText, color("clr_selection_text"));
    return colors;
}

void applyDialogLook(QWidget &dialog) {
    dialog.setPalette(dialogPalette());
    dialog.setFont(CUiResource::instance().getFont(QStringLiteral("fnt_default_normal")));
}

} // namespace GZ
