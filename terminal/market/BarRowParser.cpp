#include "terminal/market/BarRowParser.h"

#include <QDate>

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

QString shown(std::string_view text) {
    constexpr size_t kMost = 40;
    QString all = QString::fromUtf8(text.data(), static_cast<int>(std::min(text.size(), kMost)));
    for (QChar &c : all) {
        c = c.isPrint() ? c : QChar('?');
    }
    return all;
}

/// Reads digits from the front, `most` at most; -1 when there are none.
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

/// A date in front of the text, as yyyymmdd; 0 when there is none.
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

/// A clock "HH:MM", "HH:MM:SS" or "HH:MM:SS.mmm" as a minute; -1 when it is none or no whole minute.
int minuteOfClock(std::string_view text) {
    const int hour = takeDigits(text, 2);
    if (!takeOneOf(text, ":")) {
        return -1;
    }
    const int minute = takeDigits(text, 2);
    const int second = takeOneOf(text, ":") ? takeDigits(text, 2) : 0;
    const int fraction = takeOneOf(text, ".") ? takeDigits(text, 9) : 0;
    const bool whole = text.empty() && second == 0 && fraction == 0;
    return whole && hour >= 0 && hour < 24 && minute >= 0 && minute < 60 ? hour * 60 + minute : -1;
}

} // namespace

void BarRowParser::split(std::string_view line) {
    mFields.clear();
    size_t start = 0;
    for (size_t end = line.find(mColumns.separator); end != std::string_view::npos;
         end = line.find(mColumns.separator, start)) {
        mFields.push_back(trimmed(line.substr(start, end - start)));
        start = end + 1;
    }
    mFields.push_back(trimmed(line.substr(start)));
}

std::string_view BarRowParser::field(int column) const {
    return column >= 0 && column < static_cast<int>(mFields.size()) ? mFields[static_cast<size_t>(column)]
                                                                    : std::string_view();
}

QString BarRowParser::takeNumber(int column, const char *name, double &value) const {
    if (column < 0) {
        return {};
    }
    const std::string_view text = field(column);
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size() || !std::isfinite(value)) {
        return QStringLiteral("no number in column \"%1\": \"%2\"").arg(QLatin1String(name), shown(text));
    }
    return value < 0.0 ? QStringLiteral("negative number in column \"%1\"").arg(QLatin1String(name))
                       : QString();
}

QString BarRowParser::takeTime(BarRow &row) {
    const std::string_view whole = mColumns.dateTime >= 0 ? field(mColumns.dateTime) : field(mColumns.date);
    std::string_view rest = whole;
    row.date = takeDate(rest);
    std::string_view clock = rest;
    if (mColumns.dateTime >= 0) {
        if (row.date == 0 || !takeOneOf(clock, " T")) {
            return QStringLiteral("unknown time \"%1\"").arg(shown(whole));
        }
    } else {
        clock = field(mColumns.clock);
        if (row.date == 0 || !rest.empty()) {
            return QStringLiteral("unknown date \"%1\"").arg(shown(whole));
        }
    }
    row.digits = clock.find(':') == std::string_view::npos;
    std::string_view digits = clock;
    row.clock = row.digits ? takeDigits(digits, 9) : minuteOfClock(clock);
    if (row.clock < 0 || (row.digits && !digits.empty())) {
        return QStringLiteral("unknown time \"%1\"").arg(shown(clock));
    }
    mLargestClock = row.digits ? std::max(mLargestClock, row.clock) : mLargestClock;
    return {};
}

QString BarRowParser::parse(std::string_view line, BarRow &row) {
    split(line);
    if (static_cast<int>(mFields.size()) != mColumns.count) {
        return QStringLiteral("%1 fields where the heading has %2").arg(mFields.size()).arg(mColumns.count);
    }
    QString trouble = takeTime(row);
    if (trouble.isEmpty() && mColumns.tradingDay >= 0) {
        std::string_view day = field(mColumns.tradingDay);
        row.tradingDay = takeDate(day);
        trouble = row.tradingDay == 0
                      ? QStringLiteral("unknown trading day \"%1\"").arg(shown(field(mColumns.tradingDay)))
                      : QString();
    }
    struct Number {
        int column;
        const char *name;
        double &value;
    };
    const Number numbers[] = {{mColumns.open, "open", row.open},
                              {mColumns.high, "high", row.high},
                              {mColumns.low, "low", row.low},
                              {mColumns.close, "close", row.close},
                              {mColumns.volume, "volume", row.volume},
                              {mColumns.amount, "amount", row.amount},
                              {mColumns.average, "average", row.average}};
    for (const Number &number : numbers) {
        if (trouble.isEmpty()) {
            trouble = takeNumber(number.column, number.name, number.value);
        }
    }
    if (!trouble.isEmpty()) {
        return trouble;
    }
    if (row.close <= 0.0 || row.high <= 0.0 || row.low <= 0.0) {
        return QStringLiteral("a price of zero");
    }
    return row.high < row.low ? QStringLiteral("the high is below the low") : QString();
}

QString BarRowParser::finish(BarRow &row) const {
    if (!row.digits) {
        return {};
    }
    const int perMinute = mLargestClock > 235959 ? 100000 : mLargestClock > 2359 ? 100 : 1;
    const int minutes = row.clock / perMinute;
    if (row.clock % perMinute != 0 || minutes / 100 > 23 || minutes % 100 > 59) {
        return QStringLiteral("unknown time \"%1\"").arg(row.clock);
    }
    row.clock = minutes / 100 * 60 + minutes % 100;
    row.digits = false;
    return {};
}

} // namespace terminal
