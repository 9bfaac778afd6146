#pragma once

#include <QString>

namespace TC {

// The figures of a stretch in the order in which they come: start, high, low, final price, volume, change, average,
// amplitude, turnover, amount, change of the market.

constexpr int kRegionFigures = 11;

/// What stands before a figure; empty beyond the figures.
QString figureLabel(int position);
/// The key of the colour in which the text of a figure is written.
QString figureColorKey(int position, const QString &text);

} // namespace TC
