#include "terminal/app/InstrumentSearch.h"

#include "terminal/app/CommandLine.h"

#include <algorithm>
#include <utility>

namespace terminal {
namespace {

constexpr int kNoMatch = 100;

/// How well an entry answers a text, 0 the best.
int rankOf(const SearchEntry &entry, const QString &text) {
    const QStringList words{entry.code, entry.key, entry.initials, entry.name};
    for (int i = 0; i < words.size(); ++i) {
        if (words[i].compare(text, Qt::CaseInsensitive) == 0) {
            return i;
        }
    }
    for (int i = 0; i < words.size(); ++i) {
        if (words[i].startsWith(text, Qt::CaseInsensitive)) {
            return words.size() + i;
        }
    }
    return entry.name.contains(text, Qt::CaseInsensitive) ? 2 * words.size() : kNoMatch;
}

int distanceOf(const SearchEntry &entry, const QString &text) {
    return std::min({editDistance(text, entry.key), editDistance(text, entry.code),
                     editDistance(text, entry.name), editDistance(text, entry.initials)});
}

/// Entries by a number of theirs, the smallest first; of equal ones in the order of the list.
template <class Number>
QVector<std::pair<int, SearchEntry>> ranked(const QVector<SearchEntry> &entries, Number number) {
    QVector<std::pair<int, SearchEntry>> all;
    for (const SearchEntry &entry : entries) {
        all.append({number(entry), entry});
    }
    std::stable_sort(all.begin(), all.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    return all;
}

} // namespace

InstrumentSearch::InstrumentSearch(QVector<SearchEntry> entries) : mEntries(std::move(entries)) {}

QVector<SearchEntry> InstrumentSearch::find(const QString &text, int limit) const {
    QVector<SearchEntry> found;
    const QString wanted = text.trimmed();
    if (wanted.isEmpty()) {
        return found;
    }
    for (const auto &match :
         ranked(mEntries, [&](const SearchEntry &entry) { return rankOf(entry, wanted); })) {
        if (match.first == kNoMatch || found.size() >= limit) {
            break;
        }
        found.append(match.second);
    }
    return found;
}

QString InstrumentSearch::exact(const QString &text) const {
    const QString wanted = text.trimmed();
    QStringList keys;
    for (const SearchEntry &entry : mEntries) {
        if (entry.key.compare(wanted, Qt::CaseInsensitive) == 0) {
            return entry.key;
        }
        if (entry.code.compare(wanted, Qt::CaseInsensitive) == 0 ||
            entry.name.compare(wanted, Qt::CaseInsensitive) == 0) {
            keys.append(entry.key);
        }
    }
    return keys.size() == 1 ? keys.first() : QString();
}

QStringList InstrumentSearch::nearest(const QString &text, int count) const {
    QStringList names;
    const QString wanted = text.trimmed();
    for (const auto &match :
         ranked(mEntries, [&](const SearchEntry &entry) { return distanceOf(entry, wanted); })) {
        if (names.size() >= count) {
            break;
        }
        names.append(shownEntry(match.second));
    }
    return names;
}

QString shownEntry(const SearchEntry &entry) {
    return entry.name.isEmpty() ? entry.key : entry.key + QLatin1Char(' ') + entry.name;
}

} // namespace terminal
