#include "terminal/market/MarketCalendar.h"

#include "terminal/market/MarketDate.h"

#include <cstdlib>

namespace terminal {
namespace {

constexpr int kNightAuction = 20 * 60 + 55;
constexpr int kLongestBreak = 60; ///< days; no market rests longer

/// A range of dates without trading, both ends included, as yyyymmdd.
struct Holiday {
    int first;
    int last;
};

/// Holidays of the Chinese exchanges, as announced year by year.
constexpr Holiday kMainland[] = {
    {20180101, 20180101}, {20180215, 20180221}, {20180405, 20180407}, {20180429, 20180501},
    {20180616, 20180618}, {20180922, 20180924}, {20181001, 20181007}, {20181230, 20190101},
    {20190204, 20190210}, {20190405, 20190407}, {20190501, 20190504}, {20190607, 20190609},
    {20190913, 20190915}, {20191001, 20191007}, {20200101, 20200101}, {20200124, 20200202},
    {20200404, 20200406}, {20200501, 20200505}, {20200625, 20200627}, {20201001, 20201008},
    {20210101, 20210103}, {20210211, 20210217}, {20210403, 20210405}, {20210501, 20210505},
    {20210612, 20210614}, {20210919, 20210921}, {20211001, 20211007}, {20220101, 20220103},
    {20220131, 20220206}, {20220403, 20220405}, {20220430, 20220504}, {20220603, 20220605},
    {20220910, 20220912}, {20221001, 20221007}, {20221231, 20230102}, {20230121, 20230127},
    {20230405, 20230405}, {20230429, 20230503}, {20230622, 20230624}, {20230929, 20231006},
    {20231230, 20240101}, {20240209, 20240217}, {20240404, 20240406}, {20240501, 20240505},
    {20240608, 20240610}, {20240915, 20240917}, {20241001, 20241007}, {20250101, 20250101},
    {20250128, 20250204}, {20250404, 20250406}, {20250501, 20250505}, {20250531, 20250602},
    {20251001, 20251008}, {20260101, 20260103}, {20260215, 20260223}, {20260404, 20260406},
    {20260501, 20260505}, {20260619, 20260621}, {20260925, 20260927}, {20261001, 20261007},
};
constexpr int kMainlandFirst = 2018;
constexpr int kMainlandLast = 2026;

/// Full-day holidays of Hong Kong.
constexpr Holiday kHongKong[] = {
    {20260101, 20260101}, {20260217, 20260219}, {20260403, 20260403}, {20260406, 20260407},
    {20260501, 20260501}, {20260525, 20260525}, {20260619, 20260619}, {20260701, 20260701},
    {20261001, 20261001}, {20261019, 20261019}, {20261225, 20261225},
};
constexpr int kHongKongFirst = 2026;
constexpr int kHongKongLast = 2026;

template <size_t Count> bool contains(const Holiday (&holidays)[Count], const QDate &date) {
    const int number = date.year() * 10000 + date.month() * 100 + date.day();
    for (const Holiday &holiday : holidays) {
        if (number >= holiday.first && number <= holiday.last) {
            return true;
        }
    }
    return false;
}

} // namespace

MarketCalendar MarketCalendar::ofMarket(const QString &market) {
    if (market == QLatin1String("HK")) {
        return MarketCalendar(Place::HongKong);
    }
    if (market == QLatin1String("HGT") || market == QLatin1String("SSEHKEX") ||
        market == QLatin1String("SGT") || market == QLatin1String("SZSEHKEX")) {
        return MarketCalendar(Place::Connect);
    }
    if (market == QLatin1String("YSWP")) {
        return MarketCalendar(Place::Overseas);
    }
    return MarketCalendar(Place::Mainland);
}

bool MarketCalendar::knowsYear(int year) const {
    const bool mainland = year >= kMainlandFirst && year <= kMainlandLast;
    const bool hongKong = year >= kHongKongFirst && year <= kHongKongLast;
    switch (mPlace) {
    case Place::Mainland:
        return mainland;
    case Place::HongKong:
        return hongKong;
    case Place::Connect:
        return mainland && hongKong;
    case Place::Overseas:
        return true;
    }
    return false;
}

bool MarketCalendar::isTradingDay(const QDate &date) const {
    if (!date.isValid()) {
        return false;
    }
    const auto exception = mExceptions.constFind(date);
    if (exception != mExceptions.constEnd()) {
        return *exception;
    }
    if (date.dayOfWeek() >= Qt::Saturday) {
        return false;
    }
    const bool mainland = mPlace == Place::Mainland || mPlace == Place::Connect;
    const bool hongKong = mPlace == Place::HongKong || mPlace == Place::Connect;
    return !(mainland && contains(kMainland, date)) && !(hongKong && contains(kHongKong, date));
}

QDate MarketCalendar::next(const QDate &date) const {
    for (int days = 1; days <= kLongestBreak; ++days) {
        if (isTradingDay(date.addDays(days))) {
            return date.addDays(days);
        }
    }
    return date.addDays(1);
}

QDate MarketCalendar::previous(const QDate &date) const {
    for (int days = 1; days <= kLongestBreak; ++days) {
        if (isTradingDay(date.addDays(-days))) {
            return date.addDays(-days);
        }
    }
    return date.addDays(-1);
}

QDate MarketCalendar::shifted(const QDate &date, int shift) const {
    constexpr int kFarthest = 10000; // some forty years
    QDate day = isTradingDay(date) ? date : previous(date);
    const int steps = qBound(-kFarthest, shift, kFarthest);
    for (int i = 0; i < std::abs(steps); ++i) {
        day = steps > 0 ? next(day) : previous(day);
    }
    return day;
}

QDate MarketCalendar::eveningBefore(const QDate &day) const {
    const QDate evening = previous(day);
    for (QDate between = evening.addDays(1); between < day; between = between.addDays(1)) {
        if (between.dayOfWeek() < Qt::Saturday) {
            return {};
        }
    }
    return evening;
}

QDate MarketCalendar::dayAt(qint64 time, bool night) const {
    const QDate date = dateAt(time);
    const QDate day = isTradingDay(date) ? date : previous(date);
    const bool evening = date > day || minuteAt(time) >= kNightAuction;
    if (night && evening && !eveningBefore(next(day)).isNull()) {
        return next(day);
    }
    return day;
}

qint64 MarketCalendar::nextChangeAfter(qint64 time) {
    const QDate date = dateAt(time);
    const qint64 evening = timeOf(date, kNightAuction);
    return time < evening ? evening : timeOf(date.addDays(1), 0);
}

} // namespace terminal
