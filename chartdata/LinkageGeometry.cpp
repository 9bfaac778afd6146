#include "chartdata/LinkageGeometry.h"

#include "chartdata/ValueRange.h"

#include <algorithm>
#include <cmath>

namespace TC {
namespace {

constexpr int kFlagWidth = 8;
constexpr int kFlagHeight = 13;
constexpr double kFlagFillHeight = 12.0;
constexpr int kFlagHitWidth = 10;
constexpr int kCircleReach = 4;
constexpr double kNoLow = 1e10;

/// Rounds half up by truncation, held to what a coordinate can be.
int rounded(double value) {
    constexpr double kLimit = 1e6;
    return static_cast<int>(std::max(-kLimit, std::min(kLimit, value + 0.5)));
}

/// A point that a box can be put around.
QPoint heldToPixels(int x, int y) {
    constexpr int kFar = 2000000000;
    return QPoint(std::clamp(x, -kFar, kFar), std::clamp(y, -kFar, kFar));
}

} // namespace

int tradingMinute(int minute, bool night) {
    constexpr int kMinutesOfDay = 1440;
    constexpr int kEvening = 960; // 16:00
    return night && minute >= kEvening ? minute - kMinutesOfDay : minute;
}

double relativeValue(double price, double recordClose, double chartClose) {
    return ((price - recordClose) / recordClose + 1.0) * chartClose;
}

QRect markCircle(int x, int y, bool otherInstrument) {
    return otherInstrument ? QRect(x - 2, y - 2, 4, 4) : QRect(x - 3, y - 3, 6, 6);
}

TaskFlag taskFlag(int x, int y, long long done, long long total) {
    const double share = done >= total ? 1.0 : static_cast<double>(done) / static_cast<double>(total);
    const int height = rounded(std::clamp(share, 0.0, 1.0) * kFlagFillHeight);
    TaskFlag flag;
    flag.fill = QRect(x, y - height, kFlagWidth, height);
    flag.frame = QRect(x, y - kFlagHeight, kFlagWidth, kFlagHeight);
    flag.letter = QRect(x + 1, y - kFlagHeight, kFlagWidth, kFlagHeight);
    return flag;
}

HitBox circleHitBox(int x, int y) {
    const QPoint at = heldToPixels(x, y);
    return {at.x() - kCircleReach, at.x() + kCircleReach, at.y() - kCircleReach, at.y() + kCircleReach};
}

HitBox flagHitBox(int x, int y) {
    const QPoint at = heldToPixels(x, y);
    return {at.x() - kFlagHitWidth, at.x(), at.y(), at.y() + kFlagHeight};
}

int curveRow(double value, const CurveScale &scale, int height) {
    const double span = scale.high - scale.low;
    if (!std::isfinite(value) || !std::isfinite(span)) {
        return height;
    }
    if (span == 0.0) {
        return rounded(height / 2.0);
    }
    return rounded(height - (value - scale.low) * (height / span));
}

CurveScale totalAmountScale(const TradingOrder<std::pair<double, double>> &totals) {
    double firstBuy = 0.0; // zero stands for none
    double firstSell = 0.0;
    double lastBuy = 0.0;
    double lastSell = 0.0;
    const auto take = [](double amount, double &first, double &last) {
        if (isUsable(amount) && !isZero(amount)) {
            first = isZero(first) ? amount : first;
            last = amount;
        }
    };
    for (const auto &total : totals) {
        take(total.second.first, firstBuy, lastBuy);
        take(total.second.second, firstSell, lastSell);
    }
    CurveScale scale{firstBuy > 0.0 ? firstBuy : kNoLow, lastBuy > 0.0 ? lastBuy : 0.0};
    if (firstSell > 0.0) {
        scale.low = std::min(scale.low, firstSell);
    }
    if (lastSell > 0.0) {
        scale.high = std::max(scale.high, lastSell);
    }
    if (std::abs(scale.high - scale.low) <= kValueTolerance) {
        scale.low *= 0.9;
        scale.high *= 1.1;
    }
    return scale;
}

CurveScale balancedScale(const TimedValues &values) {
    double lowest = kNoLow;
    double highest = -kNoLow;
    for (const auto &value : values) {
        if (isUsable(value.second)) {
            lowest = std::min(lowest, value.second);
            highest = std::max(highest, value.second);
        }
    }
    const double bound = std::max(std::abs(lowest), std::abs(highest));
    return {-bound, bound};
}

CurveScale positiveScale(const TimedValues &values) {
    double bound = 0.0;
    for (const auto &value : values) {
        bound = isUsable(value.second) ? std::max(bound, value.second) : bound;
    }
    return {-bound, bound};
}

std::vector<QLine> costSteps(const TradedAmounts &traded, CostStep &at, const std::function<int(int)> &column,
                             const std::function<int(double)> &row) {
    std::vector<QLine> lines;
    long long count = 0;
    double amount = 0.0;
    for (const auto &trade : traded) {
        count += trade.second.first;
        amount += trade.second.second;
        if (count == 0) {
            continue;
        }
        const int x = column(trade.first);
        const int y = row(amount / static_cast<double>(count));
        if (at.any) {
            lines.emplace_back(at.x, at.y, x, at.y);
            lines.emplace_back(x, at.y, x, y);
        }
        at = {true, x, y};
    }
    return lines;
}

} // namespace TC
