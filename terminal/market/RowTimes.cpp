#include "terminal/market/RowTimes.h"

#include <algorithm>

namespace terminal {
namespace {

/// A date may stand with a clock that says nothing.
bool isMidnight(std::string_view text) {
    return takeOneOf(text, " Tt") && millisecondsOfClock(text) == 0;
}

/// Times are those of the exchange, and may say so.
std::string_view withoutZone(std::string_view clock) {
    for (const std::string_view zone :
         {std::string_view("+08:00"), std::string_view("+0800"), std::string_view("+08")}) {
        if (clock.size() > zone.size() && clock.substr(clock.size() - zone.size()) == zone) {
            return clock.substr(0, clock.size() - zone.size());
        }
    }
    return clock;
}

} // namespace

QString RowTimes::read(const RowFields &fields, RowTime &time) {
    const std::string_view whole = fields.at(mColumns.dateTime >= 0 ? mColumns.dateTime : mColumns.date);
    std::string_view rest = whole;
    time.date = takeDate(rest);
    std::string_view clock = rest;
    if (mColumns.dateTime >= 0) {
        const bool joined = clock.size() != whole.size() && clock.size() >= 4 &&
                            clock.find_first_not_of("0123456789") == std::string_view::npos;
        if (time.date == 0 || (!joined && !takeOneOf(clock, " Tt"))) {
            return QStringLiteral("unknown time \"%1\"").arg(shownText(whole));
        }
    } else {
        clock = fields.at(mColumns.clock);
        if (time.date == 0 || !(rest.empty() || isMidnight(rest))) {
            return QStringLiteral("unknown date \"%1\"").arg(shownText(whole));
        }
    }
    clock = withoutZone(clock);
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
