#include "chartdata/ResultDoubts.h"

#include "chartdata/PointMerge.h"
#include "host/records/ExchangeZone.h"

#include <QTime>

#include <algorithm>
#include <array>
#include <cstddef>

namespace TC {
namespace {

constexpr int kMinutesOfDay = 24 * 60;
constexpr qint64 kMinuteLength = 60 * 1000; ///< milliseconds
constexpr qint64 kDayLength = kMinutesOfDay * kMinuteLength;
constexpr qint64 kExchangeMilliseconds = GZ::kExchangeOffset * 1000LL;
constexpr int kNoPosition = -1;

using Doubts = std::vector<ResultDoubt>;

/// Time of the exchange's day, milliseconds; any time will do.
qint64 timeOfDay(qint64 time) {
    return ((time % kDayLength + kExchangeMilliseconds) % kDayLength + kDayLength) % kDayLength;
}

QString clockText(qint64 time) {
    const QTime clock = QTime::fromMSecsSinceStartOfDay(static_cast<int>(timeOfDay(time)));
    return clock.toString(time % kMinuteLength == 0 ? QStringLiteral("hh:mm") : QStringLiteral("hh:mm:ss.zzz"));
}

QString minuteText(int minute) {
    return QTime(minute / 60 % 24, minute % 60).toString(QStringLiteral("hh:mm"));
}

/// Positions of clock minutes on the axis of a day.
class AxisMinutes {
public:
    explicit AxisMinutes(const TradingDay &day) {
        mPositions.fill(kNoPosition);
        for (int index = 0; index < day.pointCount; ++index) {
            const int minute = minuteOfIndex(day, index);
            if (minute >= 0) {
                mPositions[static_cast<std::size_t>(minute % kMinutesOfDay)] = index;
            }
        }
    }
    /// -1 for a time that is no minute end of the axis.
    int positionOf(qint64 time) const {
        return time % kMinuteLength == 0 ? mPositions[static_cast<std::size_t>(timeOfDay(time) / kMinuteLength)]
                                         : kNoPosition;
    }

private:
    std::array<int, kMinutesOfDay> mPositions;
};

void addList(Doubts &doubts, const char *list, std::size_t line, std::size_t has, std::size_t wanted) {
    const bool isTold = std::any_of(doubts.begin(), doubts.end(),
                                    [](const ResultDoubt &doubt) { return doubt.kind == EDoubt::Shape; });
    if (has != wanted && !isTold) {
        doubts.push_back({EDoubt::Shape, QStringLiteral("%1 of line %2 has %3 points, mTimes has %4")
                                             .arg(QLatin1String(list))
                                             .arg(line)
                                             .arg(has)
                                             .arg(wanted)});
    }
}

/// A list that is not there leaves its points at their defaults.
template <class Lists>
void addOptional(Doubts &doubts, const char *list, const Lists &lists, std::size_t points) {
    for (std::size_t line = 0; line < lists.size(); ++line) {
        if (!lists[line].empty()) {
            addList(doubts, list, line, lists[line].size(), points);
        }
    }
}

void addShape(Doubts &doubts, const se::RPCFormulaMetaResult &meta, const se::RPCFormulaResult &result) {
    const std::size_t points = result.mTimes.size();
    if (meta.mLineCount < 0 || result.mValues.size() != static_cast<std::size_t>(meta.mLineCount)) {
        doubts.push_back({EDoubt::Shape, QStringLiteral("mValues has %1 lines, the description %2")
                                             .arg(result.mValues.size())
                                             .arg(meta.mLineCount)});
        return;
    }
    for (std::size_t line = 0; line < result.mValues.size(); ++line) {
        addList(doubts, "mValues", line, result.mValues[line].size(), points);
    }
    addOptional(doubts, "mExtra1", result.mExtra1, points);
    addOptional(doubts, "mTexts", result.mTexts, points);
    addOptional(doubts, "mExtra2", result.mExtra2, points);
    if (result.mValid.size() != points && doubts.empty()) {
        doubts.push_back(
            {EDoubt::Shape,
             QStringLiteral("mValid has %1 points, mTimes has %2").arg(result.mValid.size()).arg(points)});
    }
}

void addOrder(Doubts &doubts, const std::vector<se::TimePosition> &times) {
    for (std::size_t i = 1; i < times.size(); ++i) {
        if (!(times[i - 1] < times[i])) {
            doubts.push_back(
                {EDoubt::Order, QStringLiteral("the times do not go forward: point %1 is of %2, point %3 of %4")
                                    .arg(i - 1)
                                    .arg(clockText(times[i - 1].first))
                                    .arg(i)
                                    .arg(clockText(times[i].first))});
            return;
        }
    }
}

/// A point that does not stand where its time belongs; false when it does.
bool addPosition(Doubts &doubts, std::size_t point, qint64 time, const AxisMinutes &axis,
                 const TradingDay &day) {
    const int index = static_cast<int>(point);
    const int position = axis.positionOf(time);
    if (position == index) {
        return false;
    }
    if (position == kNoPosition) {
        doubts.push_back(
            {EDoubt::Axis,
             QStringLiteral("point %1 is of %2, which is no minute end of the trading day; the time "
                            "of a point is the end of its minute, at UTC+8")
                 .arg(index)
                 .arg(clockText(time))});
        return true;
    }
    const QString where =
        index < day.pointCount ? minuteText(minuteOfIndex(day, index)) : QStringLiteral("no minute");
    const QString why = position > index
                            ? QStringLiteral("%1 minutes before it are missing").arg(position - index)
                            : QStringLiteral("%1 points before it are too many").arg(index - position);
    doubts.push_back(
        {EDoubt::Gap,
         QStringLiteral("point %1 is of %2 but stands at %3, since points are placed by position: %4; "
                        "give every minute one point, with the close of the minute before where "
                        "nothing was traded")
             .arg(index)
             .arg(clockText(time), where, why)});
    return true;
}

} // namespace

std::vector<ResultDoubt> doubtsOfSeries(const se::RPCFormulaMetaResult &meta,
                                        const se::RPCFormulaResult &result, const TradingDay &day) {
    Doubts doubts;
    addShape(doubts, meta, result);
    addOrder(doubts, result.mTimes);
    if (day.pointCount > 0) {
        const AxisMinutes axis(day);
        std::size_t point = 0;
        while (point < result.mTimes.size() &&
               !addPosition(doubts, point, result.mTimes[point].first, axis, day)) {
            ++point;
        }
    }
    return doubts;
}

std::vector<ResultDoubt> doubtsOfPoint(const se::RPCFormulaResultCache &series,
                                       const se::RPCFormulaInstantResult &point, const TradingDay &day) {
    Doubts doubts;
    const std::vector<se::TimePosition> &times = series.result.mTimes;
    if (series.meta.mLineCount < 0 ||
        point.mValues.size() != static_cast<std::size_t>(series.meta.mLineCount)) {
        doubts.push_back(
            {EDoubt::Shape, QStringLiteral("the point of %1 has %2 values, the description %3 lines")
                                .arg(clockText(point.mTime.first))
                                .arg(point.mValues.size())
                                .arg(series.meta.mLineCount)});
    }
    const PointPlace place = findPlace(times, point.mTime);
    if (place.kind == EPointPlace::None) {
        doubts.push_back(
            {EDoubt::Order,
             QStringLiteral("the point of %1 is dropped: the series is at %2 and has none of that time")
                 .arg(clockText(point.mTime.first), clockText(times.back().first))});
    } else if (place.kind == EPointPlace::New && day.pointCount > 0) {
        addPosition(doubts, times.size(), point.mTime.first, AxisMinutes(day), day);
    }
    return doubts;
}

} // namespace TC
