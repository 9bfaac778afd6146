#include "chartview/AxisTicks.h"

#include "host/toolkit/PriceDecimals.h"
#include "host/toolkit/Text.h"
#include "viewmodel/PaneMetrics.h"

#include <Qt>

#include <cmath>

namespace TC {

namespace {

constexpr double kRowsPerTick = 3.2;
constexpr int kLineMinutes = 30;
constexpr int kMinutesOfDay = 1440; ///< no session is longer
constexpr int kLabelInset = 48; ///< where labels end on the left strip, and how far from the right they begin
constexpr double kScaledFrom = 100000.0;

int rowOf(int height, int tick, int count) {
    return static_cast<int>(static_cast<qint64>(height) * tick / count);
}

double valueOf(const AxisRange &range, int tick, int count) {
    return range.first - (range.first - range.second) * tick / count;
}

/// One strip's labels, tick by tick.
class LabelPlan {
public:
    explicit LabelPlan(const AxisLabelInput &input)
        : mIn(input), mCount(input.ticks.size()), mMain(input.displayType == EIndexDisplayType::Main),
          mVolume(mMain && input.volume),
          mPrecision(!mMain && input.formulaPrecision ? *input.formulaPrecision : input.tickDecimals) {}

    QVector<AxisLabel> labels() const {
        QVector<AxisLabel> labels;
        if (mCount == 1) {
            if (!mIn.right || mMain) {
                labels.append(onlyLabel());
            }
            return labels;
        }
        labels.reserve(mCount);
        for (int i = 0; i < mCount; ++i) {
            labels.append(label(i));
        }
        return labels;
    }

private:
    AxisLabel onlyLabel() const {
        AxisLabel label = placed(0, Qt::AlignVCenter);
        label.color = "ic_clr_realtime_axis_text";
        if (mIn.right) {
            write(label, 0.0, 2, utils::eFormatPercent);
        } else {
            writeValue(label, mIn.ticks[0].value, mIn.tickDecimals);
        }
        return label;
    }

    AxisLabel label(int i) const {
        const bool last = i == mCount - 1;
        const double value = mIn.ticks[i].value;
        AxisLabel label = placed(i, i == 0 ? Qt::AlignTop : last ? Qt::AlignBottom : Qt::AlignVCenter);
        label.color = colorOf(i);
        if (mVolume && i >= 2 * mCount / 3) {
            write(label, value, volumeDecimals(value), utils::eFormatScaled);
        } else if (mIn.right && mMain) {
            // The last price tick alone has as many decimals as the price.
            write(label, percentOf(value), last ? mPrecision : 2, utils::eFormatPercent);
        } else {
            writeValue(label, value, mPrecision);
        }
        return label;
    }

    AxisLabel placed(int i, Qt::AlignmentFlag vertical) const {
        AxisLabel label;
        const int y = mIn.ticks[i].y;
        const int height = vertical == Qt::AlignVCenter ? 2 * mIn.fontHeight : mIn.fontHeight;
        const int top = vertical == Qt::AlignTop ? y : y - mIn.fontHeight;
        label.rect = mIn.right ? QRect(mIn.width - kLabelInset, top, kAxisStripWidth, height)
                               : QRect(0, top, kLabelInset, height);
        label.alignment = vertical | (mIn.right ? Qt::AlignLeft : Qt::AlignRight);
        return label;
    }

    const char *colorOf(int i) const {
        if (!mMain) {
            return "ic_clr_realtime_axis_text";
        }
        if (mVolume && i >= 2 * mCount / 3) {
            return "ic_clr_realtime_colorstick";
        }
        const int middle = mVolume ? mCount / 3 : mCount / 2;
        return i < middle   ? "ic_clr_index_default_rise"
               : i > middle ? "ic_clr_index_default_fall"
                            : "ic_clr_realtime_axis_default_text";
    }

    double percentOf(double value) const {
        return std::fabs(mIn.lastClose) > kValueTolerance ? (value - mIn.lastClose) / mIn.lastClose : 0.0;
    }

    static void writeValue(AxisLabel &label, double value, int decimals) {
        const bool scaled = std::fabs(value) - kScaledFrom > kValueTolerance;
        write(label, value, decimals, scaled ? utils::eFormatScaled : utils::eFormatPlain);
    }

    static void write(AxisLabel &label, double number, int decimals, int flags) {
        label.number = number;
        label.decimals = decimals;
        label.flags = flags;
    }

    const AxisLabelInput &mIn;
    const int mCount;
    const bool mMain;
    const bool mVolume;
    const int mPrecision; ///< decimals of values
};

} // namespace

int axisTickCount(int height, int fontHeight) {
    return fontHeight > 0 ? static_cast<int>(height / (fontHeight * kRowsPerTick)) : 0;
}

QVector<AxisTick> subPaneTicks(int height, int count, const AxisRange &range) {
    QVector<AxisTick> ticks;
    if (count < 1) {
        return ticks;
    }
    ticks.reserve(count + 1);
    for (int i = 0; i <= count; ++i) {
        ticks.append({valueOf(range, i, count), rowOf(height, i, count)});
    }
    return ticks;
}

QVector<AxisTick> mainPaneTicks(int height, int count, bool volume, const AxisRange &price,
                                const AxisRange &volumeRange) {
    int prices = 0;
    if (volume) {
        const int rest = count % 3;
        count += rest == 1 ? -1 : rest == 2 ? 1 : 0;
        prices = 2 * count / 3;
    } else {
        count -= count % 2;
        prices = count;
    }
    QVector<AxisTick> ticks;
    if (count < 2) {
        return ticks;
    }
    ticks.reserve(count);
    for (int i = 0; i < count; ++i) {
        const double value =
            i < prices ? valueOf(price, i, prices) : valueOf(volumeRange, i - prices, count - prices);
        ticks.append({value, rowOf(height, i, count)});
    }
    return ticks;
}

QVector<int> timeLineIndexes(const QVector<QPair<int, int>> &sessions) {
    QVector<int> indexes;
    int index = 0;
    for (int i = 0; i < sessions.size(); ++i) {
        // The end of a session and the start of the next are one line.
        const qint64 first = i == 0 ? sessions[i].first : sessions[i].first - 1LL;
        int rest = static_cast<int>(qBound<qint64>(0, sessions[i].second - first, kMinutesOfDay));
        while (rest > kLineMinutes) {
            index += kLineMinutes;
            rest -= kLineMinutes;
            indexes.append(index);
        }
        if (rest > 0) {
            index += rest;
            if (i + 1 < sessions.size()) {
                indexes.append(index);
            }
        }
    }
    return indexes;
}

QVector<AxisLabel> planAxisLabels(const AxisLabelInput &input) {
    return LabelPlan(input).labels();
}

QRect lastTickBand(const QRect &strip, int fontHeight, int count) {
    if (count < 1) {
        return {};
    }
    const qint64 below = strip.height() - 2 * fontHeight;
    QRect band = strip;
    band.setTop(strip.top() + 2 * fontHeight + static_cast<int>(below * (count - 1) / count));
    return band;
}

} // namespace TC
