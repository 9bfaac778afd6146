#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

namespace terminal {

/// The headings of a text table.
struct TableHeadings {
    char separator = ',';
    QStringList
        words; ///< in lower case, without quotes and the blanks at the edges; empty for an unnamed column
};

/// Reads a heading line: UTF-8, with or without a byte order mark, or GB18030; separated by commas, tabs or semicolons.
TableHeadings readHeadings(const QByteArray &line);

/// The words, separated by blanks and in lower case, under which a column is known.
template <class Columns> struct KnownHeading {
    int Columns::*column;
    const char *words;
};

/// Whether two words are known for the same column.
template <class Columns>
bool isSameColumn(const std::vector<KnownHeading<Columns>> &known, const QString &one, const QString &other) {
    for (const KnownHeading<Columns> &heading : known) {
        const QStringList words = QString::fromUtf8(heading.words).split(QLatin1Char(' '));
        if (words.contains(one)) {
            return words.contains(other);
        }
    }
    return false;
}

/// Finds the columns that are known; others are passed over. Answers an empty text, or which heading stands twice.
template <class Columns>
QString findColumns(const TableHeadings &headings, const std::vector<KnownHeading<Columns>> &known,
                    Columns &columns) {
    columns.separator = headings.separator;
    columns.count = headings.words.size();
    for (int i = 0; i < headings.words.size(); ++i) {
        for (const KnownHeading<Columns> &heading : known) {
            const QStringList words = QString::fromUtf8(heading.words).split(QLatin1Char(' '));
            if (headings.words[i].isEmpty() || !words.contains(headings.words[i])) {
                continue;
            }
            if (columns.*heading.column >= 0) {
                return QStringLiteral("two columns for \"%1\"").arg(headings.words[i]);
            }
            columns.*heading.column = i;
            break;
        }
    }
    if (columns.dateTime < 0 && columns.date < 0) {
        std::swap(columns.dateTime, columns.clock); // the clock column has to tell the date too
    }
    return {};
}

} // namespace terminal
