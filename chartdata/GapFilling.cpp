#include "chartdata/GapFilling.h"

#include "host/drawing/DrawStyles.h"

#include <vector>

namespace TC {
namespace {

/// One point of the filled series: the source point that it is or repeats.
struct Slot {
    std::size_t source;
    bool filled;
    qint64 milliseconds; ///< time of a filled one
};

std::vector<Slot> planSlots(const std::vector<se::TimePosition> &times, int pointCount,
                            const std::function<qint64(int)> &secondsAt) {
    std::vector<Slot> plan;
    plan.reserve(times.size());
    std::size_t next = 0;
    for (int index = 0; next < times.size(); ++index) {
        // Past the end of the axis its time no longer grows: what is left follows as it is.
        const qint64 axisTime = index < pointCount ? secondsAt(index) * 1000 : times[next].first;
        if (next >= 1 && times[next].first > axisTime) {
            plan.push_back({next - 1, true, axisTime});
        } else {
            plan.push_back({next++, false, 0});
        }
    }
    return plan;
}

/// The elements that the slots ask for. A vector that is too short ends early.
template <class Element>
std::vector<Element> spread(const std::vector<Element> &source, const std::vector<Slot> &plan, bool zeroGaps) {
    std::vector<Element> spreadOut;
    spreadOut.reserve(plan.size());
    for (const Slot &slot : plan) {
        if (slot.source >= source.size()) {
            break;
        }
        spreadOut.push_back(zeroGaps && slot.filled ? Element() : source[slot.source]);
    }
    return spreadOut;
}

} // namespace

se::RPCFormulaResultCache fillGaps(const se::RPCFormulaResultCache &entry, int pointCount,
                                   const std::function<qint64(int)> &secondsAt) {
    const se::RPCFormulaResult &source = entry.result;
    const std::vector<Slot> plan = planSlots(source.mTimes, pointCount, secondsAt);
    se::RPCFormulaResultCache filled = entry;
    filled.result.mTimes.resize(plan.size());
    for (std::size_t i = 0; i < plan.size(); ++i) {
        filled.result.mTimes[i] =
            plan[i].filled ? se::TimePosition(plan[i].milliseconds, 0) : source.mTimes[plan[i].source];
    }
    filled.result.mValid = spread(source.mValid, plan, false);
    const std::vector<qint32> &styles = entry.meta.mLineStyles;
    for (std::size_t line = 0; line < source.mValues.size(); ++line) {
        const bool sticks = line < styles.size() && styles[line] == eColorStickStyle;
        filled.result.mValues[line] = spread(source.mValues[line], plan, sticks);
    }
    return filled;
}

} // namespace TC
