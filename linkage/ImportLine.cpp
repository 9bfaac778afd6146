#include "linkage/ImportLine.h"

#include "host/toolkit/Text.h"

#include <QStringList>

namespace TC {
namespace {

constexpr int kFields = 7;
constexpr int kClockLength = 8; ///< of "hh:mm:ss"

/// The fields of a line, up to the last one that counts: a line may have any number of them.
QStringList firstFields(const QString &line, const QString &separator) {
    QStringList fields;
    int start = 0;
    while (fields.size() < kFields) {
        const int end = line.indexOf(separator, start, Qt::CaseSensitive);
        fields.append(line.mid(start, end < 0 ? -1 : end - start));
        if (end < 0) {
            break;
        }
        start = end + separator.size();
    }
    return fields;
}

} // namespace

long long importTime(const QString &field, const QDateTime &now) {
    if (!field.contains(QLatin1Char(':'))) {
        return field.toLongLong();
    }
    const QTime time =
        QTime::fromString((QLatin1Char('0') + field).right(kClockLength), QStringLiteral("hh:mm:ss"));
    if (!time.isValid()) {
        return GZ::secondsOf(QDateTime()); // an invalid time set into a valid date would be its midnight
    }
    QDateTime moment = now;
    moment.setTime(time);
    return GZ::secondsOf(moment);
}

std::optional<ImportLine> ImportLine::read(const QString &line, const QString &separator,
                                           const QDateTime &now) {
    const QStringList fields = firstFields(line, separator);
    if (fields.size() < kFields) {
        return std::nullopt;
    }
    return ImportLine{fields[0].toStdString(), fields[1].toStdString(), fields[2].toStdString(),
                      fields[3].toDouble(),    fields[4].toInt(),       importTime(fields[5], now),
                      fields[6].toInt()};
}

} // namespace TC
