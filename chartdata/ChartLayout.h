#pragma once

#include <QRect>

namespace TC {

/// Where price and volume lie in a pane.
struct ChartLayout {
    QRect price;
    QRect volume; ///< null without a volume band
};

/// Rows above the volume band; all of them without one. Rounds toward zero, as the value axis does.
inline int priceAxisHeight(int height, bool withVolume) {
    return withVolume ? static_cast<int>(qint64(height) * 2 / 3) : height;
}

/// First row of the volume band of a pane, rounded to the nearest row.
inline int volumeBandTop(int height) {
    return static_cast<int>(2.0 * height / 3.0 + 0.5);
}

/// Splits a pane for drawing. With a volume band the price part takes two thirds, rounded to the nearest row.
inline ChartLayout chartLayout(const QSize &pane, bool withVolume) {
    const int width = pane.width();
    const int height = pane.height();
    if (!withVolume) {
        return {QRect(1, 3, width - 2, height - 5), QRect()};
    }
    const int split = volumeBandTop(height);
    return {QRect(1, 3, width - 2, split - 5), QRect(1, split + 3, width - 2, height - split - 5)};
}

} // namespace TC
