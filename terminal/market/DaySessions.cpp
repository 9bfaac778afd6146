#include "terminal/market/DaySessions.h"

#include "terminal/market/MarketDate.h"

namespace terminal {
namespace {

constexpr int kNightLine = 960; ///< 16:00: a day that starts later starts on the evening before
constexpr int kEarlyMorning = 300; ///< 05:00: a session that starts earlier is a night's second half

QDate dateOfPlace(DaySessions::Place place, const QDate &day, const QDate &evening) {
    switch (place) {
    case DaySessions::Place::EveningBefore:
        return evening;
    case DaySessions::Place::MorningAfterEvening:
        return evening.isNull() ? QDate() : evening.addDays(1);
    case DaySessions::Place::OnDay:
        return day;
    case DaySessions::Place::DayAfter:
        return day.addDays(1);
    }
    return {};
}

} // namespace

DaySessions::DaySessions(const Table &table) : mTable(table) {
    const bool night = !table.isEmpty() && table.first().first >= kNightLine;
    Place place = night ? Place::EveningBefore : Place::OnDay;
    int last = 0;
    for (const QPair<int, int> &session : table) {
        if (session.first <= last) { // past midnight
            if (place == Place::OnDay) {
                place = Place::DayAfter;
            } else {
                place = session.first < kEarlyMorning ? Place::MorningAfterEvening : Place::OnDay;
            }
        } else if (place == Place::MorningAfterEvening && session.first >= kEarlyMorning) {
            place = Place::OnDay;
        }
        mPlaces.append(place);
        last = session.second;
    }
}

bool areApart(const DaySessions::Table &table) {
    for (int i = 0; i < table.size(); ++i) {
        for (int j = 0; j < i; ++j) {
            if (table[i].first <= table[j].second && table[j].first <= table[i].second) {
                return false;
            }
        }
    }
    return true;
}

int DaySessions::count() const {
    int positions = 0;
    for (const QPair<int, int> &session : mTable) {
        positions += session.second - session.first + 1;
    }
    return positions;
}

bool DaySessions::hasNight() const {
    return !mPlaces.isEmpty() && mPlaces.first() == Place::EveningBefore;
}

std::optional<DaySessions::Place> DaySessions::placeOf(int minute) const {
    const int wanted = minute == 0 ? 1440 : minute;
    for (int i = 0; i < mTable.size(); ++i) {
        if (wanted >= mTable[i].first && wanted <= mTable[i].second) {
            return mPlaces[i];
        }
    }
    return std::nullopt;
}

std::vector<qint64> DaySessions::times(const QDate &day, const QDate &evening) const {
    std::vector<qint64> result;
    result.reserve(static_cast<size_t>(count()));
    for (int i = 0; i < mTable.size(); ++i) {
        const QDate date = dateOfPlace(mPlaces[i], day, evening);
        for (int minute = mTable[i].first; !date.isNull() && minute <= mTable[i].second; ++minute) {
            result.push_back(timeOf(date, minute));
        }
    }
    return result;
}

qint64 DaySessions::endTime(const QDate &day, const QDate &evening) const {
    const QDate date = mTable.isEmpty() ? QDate() : dateOfPlace(mPlaces.last(), day, evening);
    return date.isNull() ? timeOf(day, 0) : timeOf(date, mTable.last().second);
}

} // namespace terminal
