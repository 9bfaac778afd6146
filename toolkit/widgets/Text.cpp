#include "host/toolkit/Text.h"

#include <QCoreApplication>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>

namespace GZ {
namespace {

constexpr long double kLeastCounted = 1e4L; ///< smaller numbers are written out in every language

/// A unit that a large number is counted in.
struct Unit {
    long double size;
    QString name;
};

bool isCounted(long double number) {
    return std::fabs(number) >= kLeastCounted - TC::kValueTolerance;
}

/// The unit that a counted number is counted in.
Unit unitOf(long double number) {
    //: Units of large numbers, each behind its power of ten, the largest first.
    const QString units = QCoreApplication::translate("GZ::Text", "12万亿 8亿 4万");
    Unit unit{1.0L, {}};
    for (int at = 0; at < units.size(); ++at) {
        int power = 0;
        for (; at < units.size() && units[at].isDigit(); ++at) {
            power = power * 10 + units[at].digitValue();
        }
        const int end = units.indexOf(QLatin1Char(' '), at);
        unit = {std::pow(10.0L, power), units.mid(at, end < 0 ? -1 : end - at)};
        if (end < 0 || std::fabs(number) >= unit.size - TC::kValueTolerance) {
            break;
        }
        at = end;
    }
    return unit;
}

/// Digits with a point, whatever the locale; negative zero without its sign.
std::string fixedText(long double number, int decimals) {
    char digits[std::numeric_limits<long double>::max_exponent10 + 32];
    const std::to_chars_result end =
        std::to_chars(std::begin(digits), std::end(digits), number, std::chars_format::fixed, decimals);
    std::string text(digits, end.ptr);
    if (text.front() == '-' && text.find_first_of("123456789") == std::string::npos) {
        text.erase(0, 1);
    }
    return text;
}

void insertCommas(std::string &text) {
    const std::size_t first = text.front() == '-' ? 1 : 0;
    const std::size_t point = std::min(text.find('.'), text.size());
    for (std::size_t at = point; at > first + 3;) {
        at -= 3;
        text.insert(at, 1, ',');
    }
}

} // namespace

QString formatDoubleNumber(long double number, int decimals, int flags, bool grouped, const QString &fallback) {
    if (number == static_cast<long double>(TC::kUnsetValue)) {
        return fallback;
    }
    if (flags & utils::eFormatPercent) {
        number *= 100;
    }
    if (!std::isfinite(number)) {
        return fallback;
    }
    QString unit;
    if (flags & utils::eFormatScaled) {
        if (isCounted(number)) {
            const Unit large = unitOf(number);
            number /= large.size;
            unit = large.name;
        }
    }
    std::string text = fixedText(number, std::clamp(decimals, 0, 10));
    if (grouped) {
        insertCommas(text);
    }
    return QString::fromLatin1(text.data(), static_cast<int>(text.size())) + unit +
           (flags & utils::eFormatPercent ? QStringLiteral("%") : QString());
}

int getGraphShowTick(double value, int precision) {
    return isCounted(value) ? std::max(precision, 2) : precision;
}

} // namespace GZ

namespace utils {

int millisecondsToTime(qint64 milliseconds) {
    const QTime time = QDateTime::fromMSecsSinceEpoch(milliseconds).time();
    return time.isValid() ? time.hour() * 10000 + time.minute() * 100 + time.second() : 0;
}

} // namespace utils
