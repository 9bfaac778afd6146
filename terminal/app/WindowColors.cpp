#include "terminal/app/WindowColors.h"

#include "host/toolkit/ThemeColor.h"

#include <QApplication>
#include <QWidget>

namespace terminal {
namespace {

constexpr int kMiddleLightness = 128; ///< a darker ground takes lighter buttons

} // namespace

QPalette windowColors() {
    const QColor background = GZ::themeColor("ic_clr_realtime_axis_bg");
    const QColor text = GZ::themeColor("ic_clr_realtime_axis_text");
    const bool dark = background.lightness() < kMiddleLightness;
    QPalette colors(background);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        colors.setColor(role, text);
        colors.setColor(QPalette::Disabled, role, GZ::themeColor("clr_menu_text_disable"));
    }
    colors.setColor(QPalette::Button, dark ? background.lighter(180) : background.darker(108));
    colors.setColor(QPalette::Base, GZ::themeColor("clr_edit_bg"));
    colors.setColor(QPalette::AlternateBase, GZ::themeColor("clr_table_row_odd"));
    colors.setColor(QPalette::PlaceholderText, GZ::themeColor("clr_text_light_default"));
    colors.setColor(QPalette::Highlight, GZ::themeColor("clr_selection_bg"));
    colors.setColor(QPalette::HighlightedText, GZ::themeColor("clr_selection_text"));
    colors.setColor(QPalette::ToolTipBase, GZ::themeColor("clr_menu_bg"));
    colors.setColor(QPalette::ToolTipText, GZ::themeColor("clr_menu_text"));
    return colors;
}

void applyWindowColors(QWidget &window) {
    QApplication::setPalette(windowColors());
    window.setPalette(windowColors());
}

} // namespace terminal
