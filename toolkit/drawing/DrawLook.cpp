#include "toolkit/drawing/DrawLook.h"

#include "host/toolkit/ThemeCache.h"
#include "host/toolkit/ThemeColor.h"

#include <algorithm>
#include <iterator>

namespace TC {

DrawLook DrawLook::ofTheme() {
    const auto color = [](const QString &key) { return GZ::themeColor(key).rgba(); };
    DrawLook look;
    for (int i = 0; i < DrawLook::kLineColors; ++i) {
        look.lines[i] = color(QStringLiteral("ic_clr_index_line_%1").arg(i + 1));
    }
    look.rise = color(QStringLiteral("ic_clr_index_default_rise"));
    look.fall = color(QStringLiteral("ic_clr_index_default_fall"));
    look.flat = color(QStringLiteral("ic_clr_index_default_flat"));
    look.stick = color(QStringLiteral("ic_clr_realtime_colorstick"));
    const auto isOpaque = [](QRgb of) { return qAlpha(of) == 255; };
    look.isOpaque = std::all_of(std::begin(look.lines), std::end(look.lines), isOpaque) &&
                    isOpaque(look.rise) && isOpaque(look.fall) && isOpaque(look.flat) && isOpaque(look.stick);
    look.gradientTop = color(QStringLiteral("ic_clr_realtime_gradient_top"));
    look.gradientBottom = color(QStringLiteral("ic_clr_realtime_gradient_bottom"));
    return look;
}

const DrawLook &DrawLook::current() {
    // One a thread, since data objects draw on whichever thread their results come in.
    thread_local GZ::ThemeCache<DrawLook> look;
    return look.look();
}

} // namespace TC
