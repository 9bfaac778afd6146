#include "terminal/trade/OrderMatching.h"

#include "terminal/market/SimulatedDay.h"

#include <algorithm>

namespace terminal {

bool reaches(const MinuteBar &bar, bool buy, double limit) {
    if (!(bar.volume > 0.0 && bar.low > 0.0 && bar.high >= bar.low)) {
        return false;
    }
    return buy ? bar.low <= limit : bar.high >= limit;
}

double fillPrice(const MinuteBar &bar, bool buy, double limit) {
    if (!(bar.open > 0.0)) {
        return limit;
    }
    return buy ? std::min(limit, bar.open) : std::max(limit, bar.open);
}

int fillVolume(int left, int lot, double share) {
    const int lots = static_cast<int>(left * std::clamp(share, 0.0, 1.0)) / lot;
    return std::min(left, std::max(lots, 1) * lot);
}

double limitPrice(double last, bool buy, double edge, double tick) {
    return std::max(tick, roundToTick(last * (buy ? 1.0 + edge : 1.0 - edge), tick));
}

int dueQuantity(int quantity, int lot, qint64 start, qint64 end, qint64 now) {
    if (now < start) {
        return 0;
    }
    if (now >= end) {
        return quantity;
    }
    const double share = static_cast<double>(now - start) / static_cast<double>(end - start);
    return static_cast<int>(quantity * share) / lot * lot;
}

} // namespace terminal
