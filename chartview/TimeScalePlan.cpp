#include "chartview/TimeScalePlan.h"

#include "viewmodel/HalfHours.h"

#include <algorithm>
#include <cmath>

namespace TC {
namespace {

constexpr int kLabelDistance = 48; // pixels between neighbouring labels
constexpr int kTickMinutes = 30; // a shorter rest of a session has no tick
constexpr int kLastLabelInset = 2; // pixels
constexpr int kFlagMargin = 10; // pixels, both sides together

/// Walks the sessions of one day.
class DayPlan {
public:
    DayPlan(const TimeScaleInput &input, double base) : mInput(input), mBase(base), mUsed(base) {
        mDay.clipLeft = wholePixel(base);
        mDay.clipWidth = wholePixel(input.dayWidth + 0.5);
    }

    TimeScaleDay walk(int daysAgo) {
        if (!mInput.sessions.isEmpty()) {
            head(daysAgo);
        }
        for (const HalfHour &stop : halfHours(mInput.sessions)) {
            if (stop.place == EHalfHour::EndOfDay) {
                atTheEnd(mInput.timeOfIndex(stop.index));
            } else if (stop.minutes == kTickMinutes) {
                centred(mInput.columnOfIndex(stop.index) + mBase, mInput.timeOfIndex(stop.index));
            }
        }
        return mDay;
    }

private:
    void head(int daysAgo) {
        const QString text = mInput.dayCount == 1 ? mInput.timeOfIndex(0) : mInput.dateOfDay(daysAgo);
        mDay.labels.append({std::trunc(mBase) + 1, text, true});
        mUsed += mInput.textWidth(text) + kLabelDistance;
        mDay.ticks.append(mBase);
    }

    void centred(double x, const QString &text) {
        const int width = mInput.textWidth(text);
        const double left = x - width / 2;
        if (left >= mUsed) {
            mDay.labels.append({left, text, false});
            mUsed = x + width / 2 + kLabelDistance;
        }
        mDay.ticks.append(x);
    }

    void atTheEnd(const QString &text) {
        const int width = mInput.textWidth(text);
        const double x = std::trunc(mBase + mInput.dayWidth - 1);
        const double left = x - width;
        if (left >= mUsed) {
            mDay.labels.append({left - kLastLabelInset, text, false});
            mUsed = x + kLabelDistance + width;
        }
        mDay.ticks.append(x);
    }

    const TimeScaleInput &mInput;
    const double mBase;
    double mUsed; ///< right end of the last label, with its distance
    TimeScaleDay mDay;
};

} // namespace

int wholePixel(double column) {
    constexpr double kFar = 1e9;
    return std::isnan(column) ? 0 : static_cast<int>(std::clamp(column, -kFar, kFar));
}

QVector<TimeScaleDay> planTimeScale(const TimeScaleInput &input) {
    QVector<TimeScaleDay> days;
    double base = input.leftWidth;
    for (int daysAgo = std::min(input.dayCount, 6) - 1; daysAgo >= 0; --daysAgo) {
        days.append(DayPlan(input, base).walk(daysAgo));
        base += input.dayWidth;
    }
    return days;
}

QRect planTimeFlag(const TimeFlagInput &input) {
    const int width = input.textWidth + kFlagMargin;
    const int left = input.leftWidth + wholePixel(input.daysBefore * input.dayWidth);
    const int right = wholePixel(left + input.dayWidth);
    const int centred = input.cursorX - width / 2 + left;
    return {std::max(std::min(centred, right - width), left), 0, width, input.height};
}

} // namespace TC
