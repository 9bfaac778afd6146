#pragma once

/// \file
/// Arithmetic of the labels of an axis strip.

#include "host/records/Enumerations.h"
#include "viewmodel/AxisTicks.h"

#include <QRect>
#include <QVector>

#include <optional>

namespace TC {

/// One label of a strip.
struct AxisLabel {
    QRect rect; ///< in pixels of the strip
    int alignment = 0; ///< of the text in the rectangle, Qt::Alignment
    double number = 0.0; ///< what is written, see GZ::formatDoubleNumber
    int decimals = 0; ///< at most; the text holds to the limits of that function
    int flags = 0; ///< utils::EFormatNumberFlag
    const char *color = ""; ///< theme key of the text, a literal
};
inline bool operator==(const AxisLabel &a, const AxisLabel &b) {
    return a.rect == b.rect && a.alignment == b.alignment && a.number == b.number && a.decimals == b.decimals &&
           a.flags == b.flags && a.color == b.color;
}

/// What the labels of a strip depend on.
struct AxisLabelInput {
    QVector<AxisTick> ticks; ///< top down
    EIndexDisplayType displayType = EIndexDisplayType::Main;
    bool right = false;
    bool volume = false; ///< the main chart shows its volume band; not read for a sub pane
    int width = 0; ///< pixels of the strip
    int fontHeight = 0;
    double lastClose = 0.0; ///< base of the percentages; zero leaves them at zero
    int tickDecimals = 2; ///< decimals of the smallest price step
    std::optional<int> formulaPrecision; ///< what the formula wants for its first line
};

/// The labels of a strip, top down: values on the left and on both sides of a sub pane, percentages against the
/// last close on the right of a main pane.
QVector<AxisLabel> planAxisLabels(const AxisLabelInput &input);

/// The band of the last of `count` ticks of a strip; null without ticks.
QRect lastTickBand(const QRect &strip, int fontHeight, int count);

} // namespace TC
