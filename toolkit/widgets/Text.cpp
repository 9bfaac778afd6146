#include "host/toolkit/Text.h"

#include <QCoreApplication>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>

namespace GZ {
namespace {

/// A unit that a large number is counted in.
struct Unit {
    long double mSize;
    const char *mName;
};

/// The largest first.
constexpr Unit kUnits[] = {
    {1e12L, QT_TRANSLATE_NOOP("GZ::Text", "万亿")},
    {1e8L, QT_TRANSLATE_NOOP("GZ::Text", "亿")},
    {1e4L, QT_TRANSLATE_NOOP("GZ::Text", "万")},
};

/// The unit that a number is counted in; null for the number itself.
const Unit *unitOf(long double number) {
    for (const Unit &unit : kUnits) {
        if (std::fabs(number) >= unit.mSize - TC::kValueTolerance) {
            return &unit;
        }
    }
    return nullptr;
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
        if (const Unit *large = unitOf(number)) {
            number /= large->mSize;
            unit = QCoreApplication::translate("GZ::Text", large->mName);
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
    return unitOf(value) ? std::max(precision, 2) : precision;
}

} // namespace GZ

namespace utils {

int millisecondsToTime(qint64 milliseconds) {
    const QTime time = QDateTime::fromMSecsSinceEpoch(milliseconds).time();
    return time.isValid() ? time.hour() * 10000 + time.minute() * 100 + time.second() : 0;
}

} // namespace utils
