#include "viewmodel/TradingSessions.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>

namespace TC {
namespace {

/// 16:00: sessions that begin later belong to the night part of an axis.
constexpr int kNightBorder = 960;

bool isOneOf(const std::string &word, std::initializer_list<const char *> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// Cuts off the fraction; what an int cannot hold becomes its limit, and what is no number becomes `otherwise`.
int truncated(double value, int otherwise) {
    if (std::isnan(value)) {
        return otherwise;
    }
    constexpr double kLowest = std::numeric_limits<int>::min();
    constexpr double kHighest = std::numeric_limits<int>::max();
    return int(std::clamp(std::trunc(value), kLowest, kHighest));
}

/// How the walk to a minute treats one session.
enum class EVisit { Skip, PassShort, PassOrEnter };

EVisit visitAtNight(qint64 first, qint64 minute) {
    if (minute >= kNightBorder) {
        return first <= kNightBorder ? EVisit::Skip : EVisit::PassOrEnter;
    }
    return first > kNightBorder && minute < first ? EVisit::PassShort : EVisit::PassOrEnter;
}

/// Minutes counted up to and with `minute`.
qint64 countedMinutes(const Sessions &sessions, qint64 minute, bool night) {
    qint64 counted = 0;
    for (const auto &[sessionFirst, sessionLast] : sessions) {
        const qint64 first = sessionFirst;
        const qint64 last = sessionLast;
        const EVisit visit = night ? visitAtNight(first, minute) : EVisit::PassOrEnter;
        if (visit == EVisit::Skip) {
            continue;
        }
        if (visit == EVisit::PassShort) {
            counted += last - first;
            continue;
        }
        if (last > minute) {
            // Only the ordinary walk knows the breaks: a night axis counts a minute in a gap as negative.
            return night || minute >= first ? counted + minute - first + 1 : counted;
        }
        counted += last - first + 1;
    }
    return counted;
}

double pixelsPerPosition(double width, int pointCount) {
    return (width - 2.0) / (double(pointCount) - 1.0);
}

} // namespace

TradingDay tradingDay(ETradingDay kind) {
    switch (kind) {
    case ETradingDay::Night:
        return {{{1260, 1440}, {1, 150}, {541, 615}, {631, 690}, {811, 900}}, 556};
    case ETradingDay::TreasuryFutures:
        return {{{555, 690}, {781, 915}}, 271};
    case ETradingDay::CommodityFutures:
        return {{{540, 615}, {631, 690}, {811, 900}}, 226};
    case ETradingDay::HongKong:
        return {{{570, 720}, {781, 970}}, 341};
    case ETradingDay::Overseas:
        return {{{540, 955}, {1001, 1440}, {1, 120}}, 976};
    case ETradingDay::AfterHours:
        // One position less than minutes: the closing minute 930 stays off the axis.
        return {{{570, 690}, {781, 900}, {905, 930}}, 266};
    case ETradingDay::LongAfternoon:
        return {{{570, 690}, {781, 930}}, 271};
    case ETradingDay::Stock:
        break;
    }
    return stockDay(false);
}

TradingDay stockDay(bool afterHours) {
    TradingDay day{{{570, 690}, {781, 900}}, 241};
    if (afterHours) {
        day.sessions.append({901, 930});
        day.pointCount = 271;
    }
    return day;
}

ETradingDay tradingDayOfMarket(const std::string &market, const std::string &code,
                               const std::string &productId) {
    if (isOneOf(market, {"IF", "CFFEX"})) {
        return isOneOf(productId, {"TS", "TF", "T"}) ? ETradingDay::TreasuryFutures : ETradingDay::Stock;
    }
    if (isOneOf(market, {"DF", "DCE", "ZF", "CZCE", "SF", "SHFE"})) {
        return ETradingDay::CommodityFutures;
    }
    if (isOneOf(market, {"HGT", "SSEHKEX", "SGT", "SZSEHKEX", "HK"})) {
        return ETradingDay::HongKong;
    }
    if (market == "YSWP") {
        return code == "CNINDEX" ? ETradingDay::Stock : ETradingDay::Overseas;
    }
    return ETradingDay::Stock;
}

int axisMinute(const QTime &time) {
    return time.hour() * 60 + time.minute() + (time.second() > 0 ? 1 : 0);
}

int indexOfMinute(const Sessions &sessions, int minute, bool night) {
    qint64 counted = countedMinutes(sessions, minute, night);
    if (counted > 0) {
        --counted;
    }
    return truncated(double(counted), 0);
}

int minuteOfIndex(const TradingDay &day, int index) {
    qint64 left = std::min<qint64>(index, qint64(day.pointCount) - 1);
    for (const auto &[first, last] : day.sessions) {
        const qint64 length = qint64(last) - first + 1;
        if (length > left) {
            return truncated(double(first + left), -1);
        }
        left -= length;
    }
    return -1;
}

int pixelOfIndex(double width, int pointCount, int index) {
    const double x = std::trunc(pixelsPerPosition(width, pointCount) * index) + 1.0;
    if (!(x >= 1.0)) {
        return 1;
    }
    return truncated(std::min(x, std::trunc(width - 1.0)), 1);
}

int indexOfPixel(double width, int pointCount, int x) {
    if (!(width > 0.0) || pointCount < 1) {
        return -1;
    }
    const double step = pixelsPerPosition(width, pointCount);
    return std::clamp(truncated((step * 0.5 + x) / step, 0), 0, pointCount - 1);
}

} // namespace TC
