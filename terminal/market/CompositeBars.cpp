#include "terminal/market/CompositeBars.h"

#include <algorithm>

namespace terminal {
namespace {

MinuteBars::const_iterator firstFrom(const MinuteBars &bars, qint64 time) {
    return std::lower_bound(bars.begin(), bars.end(), time,
                            [](const MinuteBar &bar, qint64 from) { return bar.time < from; });
}

/// Puts a bar into bars that ascend in time; false when it is there already.
bool put(MinuteBars &bars, const MinuteBar &bar) {
    const auto place = bars.begin() + (firstFrom(bars, bar.time) - bars.cbegin());
    if (place == bars.end() || place->time != bar.time) {
        bars.insert(place, bar);
        return true;
    }
    const bool isOther = *place != bar;
    *place = bar;
    return isOther;
}

double openOf(const MinuteBar &bar) {
    return bar.open > 0.0 ? bar.open : bar.price;
}

/// What a member adds to a minute.
void addMember(MinuteBar &sum, const CompositeMember &member, const MinuteBars &bars) {
    const auto next = firstFrom(bars, sum.time + 1);
    if (next == bars.begin()) {
        const double still = member.previousClose > 0.0 ? member.previousClose
                             : bars.empty()             ? 0.0
                                                        : openOf(bars.front());
        sum.price += member.weight * still;
        sum.average += member.weight * still;
        sum.open += member.weight * still;
        return;
    }
    const MinuteBar &bar = *(next - 1);
    const bool isNow = bar.time == sum.time;
    sum.price += member.weight * bar.price;
    sum.average += member.weight * bar.average;
    sum.open += member.weight * (isNow ? openOf(bar) : bar.price);
    sum.volume += isNow ? bar.volume : 0.0;
    sum.amount += isNow ? bar.amount : 0.0;
}

} // namespace

MinuteBar composeMinute(const std::vector<CompositeMember> &members, const std::vector<MinuteBars> &bars,
                        qint64 time) {
    MinuteBar sum;
    sum.time = time;
    for (size_t i = 0; i < members.size(); ++i) {
        addMember(sum, members[i], bars[i]);
    }
    sum.high = std::max(sum.open, sum.price);
    sum.low = std::min(sum.open, sum.price);
    return sum;
}

MinuteBars composeBars(const std::vector<CompositeMember> &members, const std::vector<MinuteBars> &bars) {
    std::vector<qint64> times;
    for (const MinuteBars &own : bars) {
        for (const MinuteBar &bar : own) {
            times.push_back(bar.time);
        }
    }
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
    MinuteBars composite;
    composite.reserve(times.size());
    for (const qint64 time : times) {
        composite.push_back(composeMinute(members, bars, time));
    }
    return composite;
}

MinuteBars takeMemberBar(const std::vector<CompositeMember> &members, std::vector<MinuteBars> &bars,
                         MinuteBars &composite, size_t member, const MinuteBar &bar) {
    if (!put(bars[member], bar)) {
        return {};
    }
    const auto following = firstFrom(bars[member], bar.time + 1);
    // A member's first bar also tells what it stood at before, when nothing else does.
    const bool isFirst = firstFrom(bars[member], bar.time) == bars[member].cbegin();
    const qint64 from = isFirst && members[member].previousClose <= 0.0 ? 0 : bar.time;
    std::vector<qint64> times{bar.time};
    for (auto minute = firstFrom(composite, from);
         minute != composite.cend() && (following == bars[member].cend() || minute->time < following->time);
         ++minute) {
        times.push_back(minute->time);
    }
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
    MinuteBars changed;
    for (const qint64 time : times) {
        const MinuteBar minute = composeMinute(members, bars, time);
        if (put(composite, minute)) {
            changed.push_back(minute);
        }
    }
    return changed;
}

} // namespace terminal
