#pragma once

#include <QString>

#include <string_view>
#include <vector>

namespace terminal {

/// The fields of one line of a text table, without the blanks and quotes at their edges. They point into the line.
class RowFields {
public:
    void split(std::string_view line, char separator);

    int count() const { return static_cast<int>(mFields.size()); }
    /// A field by its column, counted from 0; empty for a column that is not there, such as -1.
    std::string_view at(int column) const {
        return column >= 0 && column < count() ? mFields[static_cast<size_t>(column)] : std::string_view();
    }
    /// Reads a number from 0 to `largest`. A column of -1 leaves the value as it is. Answers an empty text, or what is
    /// wrong, with the name of the column.
    QString takeNumber(int column, const char *name, double largest, double &value) const;

private:
    std::vector<std::string_view> mFields;
};

/// A field, which is in UTF-8, as text.
QString fieldText(std::string_view field);
/// A text of a file as a message shows it: its first 40 bytes, what cannot be printed as "?".
QString shownText(std::string_view text);

// These read from the front of a text and take off what they have read.

/// Digits, `most` at most; -1 when there are none.
int takeDigits(std::string_view &text, size_t most);
/// One character of those wanted.
bool takeOneOf(std::string_view &text, std::string_view wanted);
/// A date from 1970 to 2037, as 20180102, 2018-1-2, 2018/01/02 or 2018.01.02; as yyyymmdd, 0 when there is none.
int takeDate(std::string_view &text);

/// A clock "HH:MM", "HH:MM:SS" or "HH:MM:SS.mmm" in milliseconds since midnight, finer digits cut off; -1 when it is
/// none.
int millisecondsOfClock(std::string_view text);

} // namespace terminal
