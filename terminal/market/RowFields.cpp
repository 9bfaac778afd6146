#include "terminal/market/RowFields.h"

#include <QDate>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace terminal {
namespace {

std::string_view trimmed(std::string_view text) {
    const auto isEdge = [](char c) { return c == ' ' || c == '\t' || c == '"' || c == '\r'; };
    while (!text.empty() && isEdge(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isEdge(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// Digits behind the point as milliseconds: "5" is 500.
int takeMilliseconds(std::string_view &text) {
    constexpr size_t kDigits = 9;
    const size_t before = text.size();
    int number = takeDigits(text, kDigits);
    if (number < 0) {
        return -1;
    }
    size_t digits = before - text.size();
    for (; digits < 3; ++digits) {
        number *= 10;
    }
    for (; digits > 3; --digits) {
        number /= 10;
    }
    return number;
}

} // namespace

void RowFields::split(std::string_view line, char separator) {
    mFields.clear();
    size_t start = 0;
    for (size_t end = line.find(separator); end != std::string_view::npos; end = line.find(separator, start)) {
        mFields.push_back(trimmed(line.substr(start, end - start)));
        start = end + 1;
    }
    mFields.push_back(trimmed(line.substr(start)));
}

QString RowFields::takeNumber(int column, const char *name, double largest, double &value) const {
    if (column < 0) {
        return {};
    }
    const std::string_view text = at(column);
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size() || !std::isfinite(value)) {
        return QStringLiteral("no number in column \"%1\": \"%2\"").arg(QLatin1String(name), shownText(text));
    }
    if (value > largest) {
        return QStringLiteral("number above %1 in column \"%2\"")
            .arg(QString::number(largest, 'f', 0), QLatin1String(name));
    }
    return value < 0.0 ? QStringLiteral("negative number in column \"%1\"").arg(QLatin1String(name))
                       : QString();
}

QString fieldText(std::string_view field) {
    return QString::fromUtf8(field.data(), static_cast<int>(field.size()));
}

QString shownText(std::string_view text) {
    constexpr size_t kMost = 40;
    QString all = QString::fromUtf8(text.data(), static_cast<int>(std::min(text.size(), kMost)));
    for (QChar &c : all) {
        c = c.isPrint() ? c : QChar('?');
    }
    return all;
}

int takeDigits(std::string_view &text, size_t most) {
    size_t length = 0;
    int number = 0;
    while (length < text.size() && length < most && text[length] >= '0' && text[length] <= '9') {
        number = number * 10 + (text[length++] - '0');
    }
    text.remove_prefix(length);
    return length > 0 ? number : -1;
}

bool takeOneOf(std::string_view &text, std::string_view wanted) {
    if (text.empty() || wanted.find(text.front()) == std::string_view::npos) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

int takeDate(std::string_view &text) {
    const int year = takeDigits(text, 4);
    const bool separated = takeOneOf(text, "-/.");
    const int month = takeDigits(text, 2);
    if (separated && !takeOneOf(text, "-/.")) {
        return 0;
    }
    const int day = takeDigits(text, 2);
    if (year < 1970 || year > 2037 || !QDate::isValid(year, month, day)) {
        return 0;
    }
    return year * 10000 + month * 100 + day;
}

int millisecondsOfClock(std::string_view text) {
    const int hour = takeDigits(text, 2);
    if (!takeOneOf(text, ":")) {
        return -1;
    }
    const int minute = takeDigits(text, 2);
    const bool hasSecond = takeOneOf(text, ":");
    const int second = hasSecond ? takeDigits(text, 2) : 0;
    const int fraction = hasSecond && takeOneOf(text, ".") ? takeMilliseconds(text) : 0;
    const bool inRange =
        hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60 && fraction >= 0;
    return text.empty() && inRange ? ((hour * 60 + minute) * 60 + second) * 1000 + fraction : -1;
}

} // namespace terminal
