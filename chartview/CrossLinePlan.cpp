#include "chartview/CrossLinePlan.h"

#include "host/records/Enumerations.h"
#include "host/toolkit/Text.h"
#include "viewmodel/PaneMetrics.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace TC {
namespace {

constexpr int kLabelHeight = 20;

bool isNumber(double value) {
    return std::isfinite(value) && value != kUnsetValue;
}

double shareOf(double value, double base) {
    return isNumber(value) && isNumber(base) ? (value - base) / base : std::numeric_limits<double>::quiet_NaN();
}

/// Numbers that are drawn alike: no number is like any other.
bool isSame(double one, double other) {
    return one == other || (std::isnan(one) && std::isnan(other));
}

/// A line of a plan, null when there is none.
QRect roomOf(bool has, const QLine &line, double ratio) {
    return has ? CrossLinePlan::roomOf(line, ratio) : QRect();
}

void addChange(QRegion &touched, const QRect &before, const QRect &now) {
    if (before != now) {
        touched |= before;
        touched |= now;
    }
}

} // namespace

bool CrossLineInput::operator==(const CrossLineInput &other) const {
    return size == other.size && ratio == other.ratio && shown == other.shown && index == other.index &&
           x == other.x && y == other.y && row == other.row && top == other.top && isSame(value, other.value) &&
           decimals == other.decimals && withPercent == other.withPercent && isSame(base, other.base) &&
           invalid == other.invalid;
}

QRectF CrossLinePlan::inkOf(const QLine &line, double ratio) {
    const double before = std::floor(ratio / 2.0) / ratio;
    const auto [left, right] = std::minmax({line.x1(), line.x2()});
    const auto [top, bottom] = std::minmax({line.y1(), line.y2()});
    return QRectF(left, top, right - left + 1, bottom - top + 1).translated(-before, -before);
}

QRegion CrossLinePlan::changeFrom(const CrossLinePlan &before) const {
    QRegion touched;
    addChange(touched, TC::roomOf(before.hasHorizontal, before.horizontal, before.ratio),
              TC::roomOf(hasHorizontal, horizontal, ratio));
    addChange(touched, TC::roomOf(before.hasVertical, before.vertical, before.ratio),
              TC::roomOf(hasVertical, vertical, ratio));
    if (leftBox != before.leftBox || leftText != before.leftText) {
        touched |= QRegion(before.leftBox) | leftBox;
    }
    if (rightBox != before.rightBox || rightText != before.rightText) {
        touched |= QRegion(before.rightBox) | rightBox;
    }
    return touched;
}

CrossLinePlan planCrossLine(const CrossLineInput &input) {
    CrossLinePlan plan;
    plan.ratio = input.ratio;
    if (!input.shown || input.index < 0) {
        return plan;
    }
    plan.hasVertical = true;
    const int x = input.x + kAxisStripWidth;
    plan.vertical = QLine(x, input.top, x, input.size.height());
    if (input.y < 0) {
        return plan;
    }
    const int width = input.size.width();
    plan.hasHorizontal = true;
    plan.horizontal = QLine(kAxisStripWidth, input.row, width - kAxisStripWidth, input.row);
    const int labelRow = std::max(input.row - kLabelHeight, 0);
    plan.leftBox = QRect(0, labelRow, kAxisStripWidth, kLabelHeight);
    plan.leftText = GZ::formatDoubleNumber(input.value, GZ::getGraphShowTick(input.value, input.decimals),
                                           utils::eFormatScaled, false, input.invalid);
    if (input.withPercent) {
        plan.rightBox = QRect(width - kAxisStripWidth, labelRow, kAxisStripWidth, kLabelHeight);
        plan.rightText = GZ::formatDoubleNumber(shareOf(input.value, input.base), 2, utils::eFormatPercent,
                                                false, input.invalid);
    }
    return plan;
}

} // namespace TC
