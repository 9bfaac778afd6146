#include "chartview/AxisLabels.h"

#include "host/toolkit/PriceDecimals.h"
#include "host/toolkit/Text.h"
#include "viewmodel/PaneMetrics.h"

#include <Qt>

#include <cmath>

namespace TC {

namespace {

constexpr int kLabelInset = 48; ///< where labels end on the left strip, and how far from the right they begin
constexpr double kScaledFrom = 100000.0;

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
