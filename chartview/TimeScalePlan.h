#pragma once

#include "viewmodel/TradingSessions.h"

#include <QRect>
#include <QString>
#include <QVector>

#include <functional>

/// \file
/// Where the time scale beneath the panes puts its ticks, its labels and its flag.

namespace TC {

/// A column as a whole pixel: truncated, far ones held where a rectangle can begin or end, 0 for what is no number.
int wholePixel(double column);

/// What the scale is drawn from.
struct TimeScaleInput {
    Sessions sessions;
    double dayWidth = 0.0; ///< pixels of one day
    int leftWidth = 0; ///< pixels left of the first day
    int dayCount = 1;
    std::function<int(int)> columnOfIndex; ///< pixel of an axis index inside a day
    std::function<QString(int)> timeOfIndex; ///< "hh:mm" of an axis index
    std::function<QString(int)> dateOfDay; ///< "yy-MM-dd" of the day that many trading days ago
    std::function<int(const QString &)> textWidth; ///< pixels of a label
};

/// One label. `x` is its left end.
struct TimeScaleLabel {
    double x = 0.0;
    QString text;
    bool head = false; ///< the first label of a day
};

/// One day of the scale.
struct TimeScaleDay {
    int clipLeft = 0; ///< pixels that its drawing is held to
    int clipWidth = 0;
    QVector<double> ticks; ///< columns
    QVector<TimeScaleLabel> labels;
};

/// Ticks every 30 minutes of a session and at its end; labels where they keep their distance from the one before.
/// The oldest day comes first.
QVector<TimeScaleDay> planTimeScale(const TimeScaleInput &input);

/// What the time flag is placed by.
struct TimeFlagInput {
    int cursorX = 0; ///< column inside its day
    int leftWidth = 0; ///< pixels left of the first day
    int daysBefore = 0; ///< days that stand left of that of the cursor
    double dayWidth = 0.0; ///< pixels of one day
    int textWidth = 0;
    int height = 0; ///< of the scale
};

/// The flag's box: centred at the cursor and held inside its day, at the left edge where it is wider than the day.
QRect planTimeFlag(const TimeFlagInput &input);

} // namespace TC
