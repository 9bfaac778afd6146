#pragma once

#include <QDateTime>
#include <QString>

#include <optional>
#include <string>

namespace TC {

/// One line of a file of orders or deals: seven fields, in the order of CLinkageManager::importOrder() and
/// importDeal(), which know what they mean. Fields beyond the seventh are left out.
struct ImportLine {
    std::string mAccount;
    std::string mInstrument;
    std::string mKey;
    double mPrice = 0.0;
    int mVolume = 0;
    long long mTime = 0; ///< seconds since the epoch
    int mDirection = 0;

    /// Reads a line whose fields stand between separators; nothing when there are fewer than seven. A number that
    /// cannot be read is 0. `now` gives the date of a time of day.
    static std::optional<ImportLine> read(const QString &line, const QString &separator, const QDateTime &now);
};

/// The time of an import field, in seconds since the epoch. Without a colon it is that number. With one it is a time
/// of day: its last eight characters, with a "0" in front of a text of seven, are read as "hh:mm:ss" on the date of
/// `now`; 4294967295 when they cannot be read so.
long long importTime(const QString &field, const QDateTime &now);

} // namespace TC
