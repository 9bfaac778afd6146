#include "toolkit/windows/DialogLook.h"

#include "host/toolkit/CUiResource.h"
#include "host/toolkit/ThemeColor.h"

#include <QWidget>

namespace GZ {

QPalette dialogPalette() {
    QPalette colors(themeColor("clr_dialog_bg")); // with all shades of frames and scroll bars
    const QColor text = themeColor("clr_text_default");
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        colors.setColor(role, text);
        colors.setColor(QPalette::Disabled, role, themeColor("clr_menu_text_disable"));
    }
    colors.setColor(QPalette::Base, themeColor("clr_edit_bg"));
    colors.setColor(QPalette::Highlight, themeColor("clr_selection_bg"));
    colors.setColor(QPalette::HighlightedText, themeColor("clr_selection_text"));
    return colors;
}

void applyDialogLook(QWidget &dialog) {
    dialog.setPalette(dialogPalette());
    dialog.setFont(CUiResource::instance().getFont(QStringLiteral("fnt_default_normal")));
}

} // namespace GZ
