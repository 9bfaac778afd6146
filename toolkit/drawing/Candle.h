#pragma once

#include "toolkit/drawing/Bars.h"

namespace TC {

/// The four prices of a candle.
struct Candle {
    double open;
    double high;
    double low;
    double close;

    /// The candle of a point. Without an open price the close before stands for it, and a high or low that is not there
    /// is that of open and close.
    static Candle at(const SeriesLine &close, const SeriesLine &open, const SeriesLine &high,
                     const SeriesLine &low, int i);
    /// From open to close, 0 when they agree in the decimals shown.
    double change(int digits) const;
    /// Draws it over the column of a point, `width` pixels wide, its wick `wick` pixels. A rising one is hollow where
    /// there is room for it.
    void draw(Bars &bars, int i, int width, int wick, double change, QRgb color) const;
};

} // namespace TC
