#include "chartdata/ChartLook.h"

#include "host/toolkit/CUiResource.h"

namespace TC {

void ChartLook::refresh() {
    const GZ::CUiResource &theme = GZ::CUiResource::instance();
    const int current = theme.generation();
    if (current == generation) {
        return;
    }
    background = theme.getColor(QStringLiteral("ic_clr_realtime_graph_bg"));
    border = theme.getColor(QStringLiteral("ic_clr_realtime_axis_line_border"));
    grid = theme.getColor(QStringLiteral("ic_clr_realtime_axis_line"));
    arrow = theme.getPixmap(QStringLiteral("ic_img_arrow_up"));
    generation = current;
}

} // namespace TC
