#include "chartdata/ChartLook.h"

#include "host/toolkit/ThemeColor.h"

namespace TC {

ChartLook ChartLook::ofTheme() {
    return {GZ::themeColor("ic_clr_realtime_graph_bg"), GZ::themeColor("ic_clr_realtime_axis_line_border"),
            GZ::themeColor("ic_clr_realtime_axis_line"),
            GZ::CUiResource::instance().getPixmap(QStringLiteral("ic_img_arrow_up"))};
}

} // namespace TC
