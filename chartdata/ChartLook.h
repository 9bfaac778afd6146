#pragma once

#include <QColor>
#include <QPixmap>

namespace TC {

/// What the chart takes from the theme, fetched once per theme.
struct ChartLook {
    QColor background;
    QColor border;
    QColor grid;
    QPixmap arrow;
    int generation = -1; ///< of the theme; -1 when nothing has been fetched

    /// Fetches everything anew when the theme has changed.
    void refresh();
};

} // namespace TC
