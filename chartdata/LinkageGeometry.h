#pragma once

#include <QLine>
#include <QPoint>
#include <QRect>

#include <functional>
#include <map>
#include <utility>
#include <vector>

/// \file
/// Where the user's orders, deals, tasks and curves lie on a chart. Coordinates are pixels of the graph. The same
/// geometry places a mark and finds it again under the mouse.

namespace TC {

/// Value on the chart of a price of another instrument: at the same relative distance from its close as from the
/// close of the chart. A record close of zero gives a value that is not finite.
double relativeValue(double price, double recordClose, double chartClose);

/// Circle of an order or deal at a point; smaller for another instrument.
QRect markCircle(int x, int y, bool otherInstrument);

/// The flag of a task that stands on a point: to the right of it and above.
struct TaskFlag {
    QRect fill; ///< finished share, from the bottom; empty when nothing is done
    QRect frame; ///< outline, as QPainter::drawRect takes it
    QRect letter; ///< room of the letter
};
/// `done` of `total` are finished; a total that is not above `done` fills the flag, a negative `done` leaves it
/// empty.
TaskFlag taskFlag(int x, int y, long long done, long long total);

/// Pixels, ends included, in which a mark's anchor is looked for.
struct HitBox {
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;
};
/// Around a point, for orders and deals.
HitBox circleHitBox(int x, int y);
/// Left of a point and below it, for the flags of tasks.
HitBox flagHitBox(int x, int y);

/// Value range of a curve.
struct CurveScale {
    double low = 0.0;
    double high = 0.0;
};
/// Row of a value in `height` rows, rounded; a range of no height gives the middle, a value that is not finite
/// the bottom.
int curveRow(double value, const CurveScale &scale, int height);

using TimedAmounts = std::map<int, std::pair<double, double>>; ///< minute or index to (buy, sell)
using TimedValues = std::map<int, double>; ///< minute or index to value

/// What a day has by minute, in the order of trading, each with its index.
template <class Value> using TradingOrder = std::vector<std::pair<int, Value>>;

/// Place of a clock minute in the order of trading. On an axis with a night session the evening, from 16:00 on, comes
/// before the day that it belongs to, and what follows midnight between the two.
int tradingMinute(int minute, bool night);

/// Amounts and values that are no numbers count for none of the ranges.

/// Range of total amounts: from the smaller of the first amounts that are not zero to the larger of the last.
CurveScale totalAmountScale(const TradingOrder<std::pair<double, double>> &totals);
/// Range around zero that holds all values.
CurveScale balancedScale(const TimedValues &values);
/// Range around zero as wide as the largest positive value: negative ones do not widen it.
CurveScale positiveScale(const TimedValues &values);

/// Bought and sold quantity: axis index to (count, amount).
using TradedAmounts = std::map<int, std::pair<int, double>>;

/// Where a walk of average-cost steps stands.
struct CostStep {
    bool any = false; ///< a step was made
    int x = 0;
    int y = 0;
};
/// The steps of the average cost of one side: for each index with a running count, a horizontal line at the cost
/// before and a vertical one to the new cost. `at` is where an earlier walk ended, and where this one ends
/// afterwards. `column` gives the pixel of an index and `row` that of a value.
std::vector<QLine> costSteps(const TradedAmounts &traded, CostStep &at, const std::function<int(int)> &column,
                             const std::function<int(double)> &row);

} // namespace TC
