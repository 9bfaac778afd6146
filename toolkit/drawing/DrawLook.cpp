#include "toolkit/drawing/DrawLook.h"

#include "host/toolkit/CUiResource.h"

namespace TC {
namespace {

DrawLook fetchLook(int generation) {
    const GZ::CUiResource &theme = GZ::CUiResource::instance();
    const auto color = [&](const QString &key) { return theme.getColor(key).rgba(); };
    DrawLook look;
    for (int i = 0; i < DrawLook::kLineColors; ++i) {
        look.lines[i] = color(QStringLiteral("ic_clr_index_line_%1").arg(i + 1));
    }
    look.rise = color(QStringLiteral("ic_clr_index_default_rise"));
    look.fall = color(QStringLiteral("ic_clr_index_default_fall"));
    look.flat = color(QStringLiteral("ic_clr_index_default_flat"));
    look.stick = color(QStringLiteral("ic_clr_realtime_colorstick"));
    look.gradientTop = color(QStringLiteral("ic_clr_realtime_gradient_top"));
    look.gradientBottom = color(QStringLiteral("ic_clr_realtime_gradient_bottom"));
    look.generation = generation;
    return look;
}

} // namespace

const DrawLook &DrawLook::current() {
    // One a thread, since data objects draw on whichever thread their results come in.
    thread_local DrawLook look;
    const int generation = GZ::CUiResource::instance().generation();
    if (look.generation != generation) {
        look = fetchLook(generation);
    }
    return look;
}

} // namespace TC
