#pragma once

#include "terminal/market/SpoolFile.h"

#include <algorithm>
#include <type_traits>
#include <vector>

namespace terminal {

/// The rows of many lists, each in the order in which they came. Whenever those in memory reach a bound they go to a file
/// without a name, from which each list is read again by itself.
template <class Row> class RowSpool {
    static_assert(std::is_trivially_copyable_v<Row>, "rows are kept as bytes");

public:
    /// `memory` is the bound in bytes, `folder` that of the file.
    RowSpool(const QString &folder, size_t memory) : mFile(folder), mInMemory(memory / sizeof(Row)) {}

    /// Adds a row to a list; false when it cannot be kept, see error().
    bool add(size_t list, const Row &row) {
        mLists.resize(std::max(mLists.size(), list + 1));
        mLists[list].newest.push_back(row);
        ++mLists[list].count;
        return ++mNewest < mInMemory || spill();
    }
    /// Number of lists, and rows of one.
    size_t lists() const { return mLists.size(); }
    size_t count(size_t list) const { return mLists[list].count; }

    /// Hands over the rows of a list, a part of them at a time. False when they cannot be read.
    template <class TakePart> bool eachPart(size_t list, const TakePart &take) {
        constexpr size_t kPart = 4096;
        std::vector<Row> part;
        for (const Extent &extent : mLists[list].extents) {
            for (size_t done = 0; done < extent.count; done += part.size()) {
                part.resize(std::min(kPart, extent.count - done));
                if (!readRows(extent, done, part.data(), part.size())) {
                    return false;
                }
                take(part);
            }
        }
        take(mLists[list].newest);
        return true;
    }
    /// Hands over each row of a list.
    template <class TakeRow> bool each(size_t list, const TakeRow &take) {
        return eachPart(list, [&take](const std::vector<Row> &part) {
            for (const Row &row : part) {
                take(row);
            }
        });
    }
    /// All rows of a list.
    bool read(size_t list, std::vector<Row> &rows) {
        rows.clear();
        rows.reserve(count(list));
        return eachPart(
            list, [&rows](const std::vector<Row> &part) { rows.insert(rows.end(), part.begin(), part.end()); });
    }
    /// One line about what went wrong.
    const QString &error() const { return mFile.error(); }

private:
    static constexpr qint64 kRowSize = sizeof(Row); ///< bytes
    struct Extent {
        qint64 place = 0;
        size_t count = 0;
    };
    struct List {
        std::vector<Extent> extents; ///< in the file
        std::vector<Row> newest; ///< behind those
        size_t count = 0; ///< of all
    };

    bool readRows(const Extent &extent, size_t from, Row *rows, size_t count) {
        return mFile.read(extent.place + static_cast<qint64>(from) * kRowSize, rows,
                          static_cast<qint64>(count) * kRowSize);
    }

    bool spill() {
        for (List &list : mLists) {
            if (list.newest.empty()) {
                continue;
            }
            list.extents.push_back({mFile.size(), list.newest.size()});
            if (!mFile.append(list.newest.data(), static_cast<qint64>(list.newest.size()) * kRowSize)) {
                return false;
            }
            list.newest = std::vector<Row>();
        }
        mNewest = 0;
        return true;
    }

    SpoolFile mFile;
    const size_t mInMemory; ///< rows
    std::vector<List> mLists;
    size_t mNewest = 0; ///< rows in memory, of all lists
};

} // namespace terminal
