#include "linkage/ImportLine.h"

#include <QStringList>

namespace TC {
namespace {

constexpr int kFields = 7;
constexpr int kClockLength = 8; ///< of "hh:mm:ss"

} // namespace

long long importTime(const QString &field, const QDateTime &now) {
    if (!field.contains(QLatin1Char(':'))) {
        return field.toLongLong();
    }
    const QTime time =
        QTime::fromString((QLatin1Char('0') + field).right(kClockLength), QStringLiteral("hh:mm:ss"));
    if (!time.isValid()) {
        return QDateTime().toTime_t(); // an invalid time set into a valid date would be its midnight
    }
    QDateTime moment = now;
    moment.setTime(time);
    return moment.toTime_t();
}

std::optional<ImportLine> ImportLine::read(const QString &line, const QString &separator,
                                           const QDateTime &now) {
    const QStringList fields = line.split(separator, Qt::KeepEmptyParts, Qt::CaseSensitive);
    if (fields.size() < kFields) {
        return std::nullopt;
    }
    return ImportLine{fields[0].toStdString(), fields[1].toStdString(), fields[2].toStdString(),
                      fields[3].toDouble(),    fields[4].toInt(),       importTime(fields[5], now),
                      fields[6].toInt()};
}

} // namespace TC
