#include "viewmodel/HalfHours.h"

#include <algorithm>

namespace TC {
namespace {

constexpr int kHalfHour = 30; // minutes
constexpr int kMinutesOfDay = 1440;

} // namespace

QVector<HalfHour> halfHours(const Sessions &sessions) {
    QVector<HalfHour> stops;
    int index = 0;
    for (int i = 0; i < sessions.size(); ++i) {
        const qint64 first = i == 0 ? sessions[i].first : sessions[i].first - 1LL;
        int rest = static_cast<int>(std::clamp<qint64>(sessions[i].second - first, 0, kMinutesOfDay));
        for (; rest > kHalfHour; rest -= kHalfHour) {
            index += kHalfHour;
            stops.append({index, kHalfHour, EHalfHour::Inside});
        }
        if (rest > 0) {
            index += rest;
            const bool last = i + 1 == sessions.size();
            stops.append({index, rest, last ? EHalfHour::EndOfDay : EHalfHour::EndOfSession});
        }
    }
    return stops;
}

} // namespace TC
