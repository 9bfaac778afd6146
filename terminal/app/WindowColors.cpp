#include "terminal/app/WindowColors.h"

#include "host/toolkit/CUiResource.h"

namespace terminal {

QPalette windowColors() {
    const GZ::CUiResource &theme = GZ::CUiResource::instance();
    const QColor background = theme.getColor(QStringLiteral("ic_clr_realtime_axis_bg"));
    const QColor text = theme.getColor(QStringLiteral("ic_clr_realtime_axis_text"));
    const bool dark = background.lightness() < 128;
    QPalette colors;
    for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Base}) {
        colors.setColor(role, background);
    }
    colors.setColor(QPalette::Button, dark ? background.lighter(180) : background.darker(108));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        colors.setColor(role, text);
    }
    return colors;
}

} // namespace terminal
