#pragma once

#include <QDate>
#include <QPair>
#include <QVector>

#include <optional>
#include <vector>

namespace terminal {

/// The trading minutes of a day: sessions in the order in which they are traded, each a pair of first and last
/// minute since midnight, both of them positions. 1440 is 24:00. A night session stands in front, as in
/// (1260, 1440), (1, 150), (541, 615): it is traded on the evening before the trading day, and past midnight on the
/// calendar day after that evening, which before a Monday is a Saturday.
class DaySessions {
public:
    using Table = QVector<QPair<int, int>>;

    /// Calendar day on which a session is traded.
    enum class Place { EveningBefore, MorningAfterEvening, OnDay, DayAfter };

    DaySessions() = default;
    explicit DaySessions(const Table &table);

    const Table &table() const { return mTable; }
    bool isEmpty() const { return mTable.isEmpty(); }
    /// Number of positions of a day.
    int count() const;
    /// Whether the day starts with a session on the evening before.
    bool hasNight() const;
    /// Where a clock minute is traded, or nothing when it is no position. Minute 0 is 24:00 of the day before.
    std::optional<Place> placeOf(int minute) const;
    /// Times of all positions of a trading day, ascending. `evening` is the date of the night session in front; when
    /// it is null no night session was held and its positions are left out.
    std::vector<qint64> times(const QDate &day, const QDate &evening) const;
    /// End of the last session of a trading day, in milliseconds since the epoch.
    qint64 endTime(const QDate &day, const QDate &evening) const;

private:
    Table mTable;
    QVector<Place> mPlaces;
};

/// Whether no minute stands in two sessions of a table.
bool areApart(const DaySessions::Table &table);

inline bool operator==(const DaySessions &a, const DaySessions &b) {
    return a.table() == b.table();
}

} // namespace terminal
