#include "toolkit/drawing/Candle.h"

#include <cmath>

namespace TC {

Candle Candle::at(const SeriesLine &close, const SeriesLine &open, const SeriesLine &high,
                  const SeriesLine &low, int i) {
    Candle candle{};
    candle.close = close.value(i);
    candle.open = open.has(i) ? open.value(i) : close.has(i - 1) ? close.value(i - 1) : candle.close;
    candle.high = std::max({high.has(i) ? high.value(i) : candle.close, candle.open, candle.close});
    candle.low = std::min({low.has(i) ? low.value(i) : candle.close, candle.open, candle.close});
    return candle;
}

double Candle::change(int digits) const {
    const double change = close - open;
    return std::abs(change) < 0.5 * std::pow(10.0, -digits) ? 0.0 : change;
}

void Candle::draw(Bars &bars, int i, int width, int wick, double change, QRgb color) const {
    const double upper = bars.row(std::max(open, close));
    const double lower = bars.row(std::min(open, close));
    if (change > 0.0 && width > 2) {
        bars.fill(i, wick, bars.row(high), upper, color);
        bars.fill(i, wick, lower, bars.row(low), color);
        bars.frame(i, width, upper, lower, color);
    } else {
        bars.fill(i, wick, bars.row(high), bars.row(low), color);
        bars.fill(i, width, upper, lower, color);
    }
}

} // namespace TC
