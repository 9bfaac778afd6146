#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace terminal {

/// What an instrument is found by.
struct SearchEntry {
    QString key; ///< "SH600000"
    QString code; ///< "600000"
    QString name;
    QString initials; ///< first letters of the name's pinyin, as "PFYH"
};

/// Finds instruments by what a person types: the code, the key, the pinyin initials or a part of the name, in any
/// letter case.
class InstrumentSearch {
public:
    static constexpr int kNearest = 3; ///< instruments that are named beside an unknown one

    InstrumentSearch() = default;
    explicit InstrumentSearch(QVector<SearchEntry> entries);

    /// The matching entries, the best first, `limit` at most: those that are the text, then those that begin with it,
    /// then those that have it inside the name. Empty for an empty text.
    QVector<SearchEntry> find(const QString &text, int limit = 20) const;
    /// The key that a text names without doubt: a key, a code or a name that only one instrument has. Otherwise empty.
    QString exact(const QString &text) const;
    /// Keys, with names, that are nearest to a text by edit distance to key, code, name or initials, as
    /// "SH600000 浦发银行".
    QStringList nearest(const QString &text, int count) const;

private:
    QVector<SearchEntry> mEntries;
};

/// An entry as it stands in lists: key and name.
QString shownEntry(const SearchEntry &entry);

} // namespace terminal
