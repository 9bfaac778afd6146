#pragma once

#include "terminal/market/MinuteBar.h"

#include <QString>

#include <vector>

namespace terminal {

/// A member of a user-defined index or a portfolio on one day.
struct CompositeMember {
    QString key;
    double weight = 0.0; ///< the composite is the sum of weight times price
    double previousClose = 0.0; ///< price until the first bar of the day; 0 takes that bar's opening price
};

/// The minute of a composite: the weighted sum of the members' prices at that time, a member without a bar in that
/// minute standing at its last one. The average is the weighted sum of the averages, the opening price that of the
/// members' opening prices, high and low are the larger and the smaller of opening and price; volume and amount are
/// sums without weight. `bars` are those of the members, in their order, each ascending in time.
MinuteBar composeMinute(const std::vector<CompositeMember> &members, const std::vector<MinuteBars> &bars,
                        qint64 time);

/// All minutes in which any member has a bar.
MinuteBars composeBars(const std::vector<CompositeMember> &members, const std::vector<MinuteBars> &bars);

/// Takes a new bar of one member into its bars and into the composite's; answers the composite's minutes that are
/// another now: that of the bar, and those after it in which the member still stands at it.
MinuteBars takeMemberBar(const std::vector<CompositeMember> &members, std::vector<MinuteBars> &bars,
                         MinuteBars &composite, size_t member, const MinuteBar &bar);

} // namespace terminal
