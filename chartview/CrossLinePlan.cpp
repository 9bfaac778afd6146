#include "chartview/CrossLinePlan.h"

#include "host/records/Enumerations.h"
#include "host/toolkit/Text.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace TC {
namespace {

constexpr int kStrip = 50; ///< width of an axis strip, and of a label
constexpr int kLabelHeight = 20;

bool isNumber(double value) {
    return std::isfinite(value) && value != kUnsetValue;
}

double shareOf(double value, double base) {
    return isNumber(value) && isNumber(base) ? (value - base) / base : std::numeric_limits<double>::quiet_NaN();
}

/// The pixels of a line of one pixel, which lie on both sides of it where a pixel is several device pixels.
QRect roomOf(const QLine &line) {
    return QRect(line.p1(), line.p2()).normalized().adjusted(-1, -1, 1, 1);
}

} // namespace

QRegion CrossLinePlan::region() const {
    QRegion touched = QRegion(leftBox) | rightBox;
    if (hasHorizontal) {
        touched |= roomOf(horizontal);
    }
    if (hasVertical) {
        touched |= roomOf(vertical);
    }
    return touched;
}

bool CrossLinePlan::operator==(const CrossLinePlan &other) const {
    return hasHorizontal == other.hasHorizontal && hasVertical == other.hasVertical &&
           horizontal == other.horizontal && vertical == other.vertical && leftBox == other.leftBox &&
           leftText == other.leftText && rightBox == other.rightBox && rightText == other.rightText;
}

CrossLinePlan planCrossLine(const CrossLineInput &input) {
    CrossLinePlan plan;
    if (!input.shown || input.index < 0) {
        return plan;
    }
    plan.hasVertical = true;
    const int x = input.x + kStrip;
    plan.vertical = QLine(x, input.top, x, input.size.height());
    if (input.y < 0) {
        return plan;
    }
    const int width = input.size.width();
    plan.hasHorizontal = true;
    plan.horizontal = QLine(kStrip, input.row, width - kStrip, input.row);
    const int labelRow = std::max(input.row - kLabelHeight, 0);
    plan.leftBox = QRect(0, labelRow, kStrip, kLabelHeight);
    plan.leftText = GZ::formatDoubleNumber(input.value, GZ::getGraphShowTick(input.value, input.decimals),
                                           utils::eFormatScaled, false, input.invalid);
    if (input.withPercent) {
        plan.rightBox = QRect(width - kStrip, labelRow, kStrip, kLabelHeight);
        plan.rightText = GZ::formatDoubleNumber(shareOf(input.value, input.base), 2, utils::eFormatPercent,
                                                false, input.invalid);
    }
    return plan;
}

} // namespace TC
