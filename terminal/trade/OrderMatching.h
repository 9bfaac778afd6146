#pragma once

#include "terminal/market/MinuteBar.h"

namespace terminal {

/// Whether a minute's trading reaches a resting limit order: a purchase when it was at or under the limit, a sale
/// when it was at or over it. A minute without trade, and prices that are none, reach nothing.
bool reaches(const MinuteBar &bar, bool buy, double limit);

/// The price of a fill in a minute that reaches the order: its limit, or the minute's first price when that is better.
double fillPrice(const MinuteBar &bar, bool buy, double limit);

/// How much of what is left is filled when `share` (0 to 1) of it finds a counterparty: whole lots, at least one, and
/// never more than is left, which may hold an odd lot.
int fillVolume(int left, int lot, double share);

/// The limit of an order that is `edge` (a fraction of the price) worse for the user than the last price: higher for
/// a purchase, lower for a sale. Negative makes it wait for a better price. On the tick, and at least one tick.
double limitPrice(double last, bool buy, double edge, double tick);

/// How much of a task's quantity is due by now when it is spread evenly over its time: whole lots, all of it at the
/// end. Times in any one unit; before `start` nothing is due.
int dueQuantity(int quantity, int lot, qint64 start, qint64 end, qint64 now);

} // namespace terminal
