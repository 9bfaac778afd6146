#pragma once

#include <QColor>
#include <QPixmap>

namespace TC {

/// What the chart takes from the theme.
struct ChartLook {
    QColor background;
    QColor border;
    QColor grid;
    QPixmap arrow;

    static ChartLook ofTheme();
};

} // namespace TC
