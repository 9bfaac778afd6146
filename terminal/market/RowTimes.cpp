#include "terminal/market/RowTimes.h"

#include <algorithm>

namespace terminal {

QString RowTimes::read(const RowFields &fields, RowTime &time) {
    const std::string_view whole = fields.at(mColumns.dateTime >= 0 ? mColumns.dateTime : mColumns.date);
    std::string_view rest = whole;
    time.date = takeDate(rest);
    std::string_view clock = rest;
    if (mColumns.dateTime >= 0) {
        if (time.date == 0 || !takeOneOf(clock, " T")) {
            return QStringLiteral("unknown time \"%1\"").arg(shownText(whole));
        }
    } else {
        clock = fields.at(mColumns.clock);
        if (time.date == 0 || !rest.empty()) {
            return QStringLiteral("unknown date \"%1\"").arg(shownText(whole));
        }
    }
    time.digits = clock.find(':') == std::string_view::npos;
    std::string_view digits = clock;
    constexpr size_t kMostDigits = 9;
    time.clock = time.digits ? takeDigits(digits, kMostDigits) : millisecondsOfClock(clock);
    if (time.clock < 0 || (time.digits && !digits.empty())) {
        return QStringLiteral("unknown time \"%1\"").arg(shownText(clock));
    }
    mLargestClock = time.digits ? std::max(mLargestClock, time.clock) : mLargestClock;
    if (mColumns.tradingDay >= 0) {
        std::string_view day = fields.at(mColumns.tradingDay);
        time.tradingDay = takeDate(day);
        if (time.tradingDay == 0) {
            return QStringLiteral("unknown trading day \"%1\"").arg(shownText(fields.at(mColumns.tradingDay)));
        }
    }
    return {};
}

QString RowTimes::finish(RowTime &time) const {
    if (!time.digits) {
        return {};
    }
    const int perMinute = mLargestClock > 235959 ? 100000 : mLargestClock > 2359 ? 100 : 1;
    const int minutes = time.clock / perMinute;
    const int perSecond = std::max(perMinute / 100, 1);
    const int second = time.clock % perMinute / perSecond;
    if (minutes / 100 > 23 || minutes % 100 > 59 || second > 59) {
        return QStringLiteral("unknown time \"%1\"").arg(time.clock);
    }
    time.clock = ((minutes / 100 * 60 + minutes % 100) * 60 + second) * 1000 + time.clock % perSecond;
    time.digits = false;
    return {};
}

} // namespace terminal
