#pragma once

#include <map>
#include <set>
#include <string>

namespace TC {

// The rows of a table of check boxes, and which of them are chosen, by key.

using RowsOfKeys = std::map<std::string, int>;
using ChosenKeys = std::set<std::string>;

/// Puts a key into a set, or takes it out.
inline void choose(ChosenKeys &chosen, const std::string &key, bool wanted) {
    if (wanted) {
        chosen.insert(key);
    } else {
        chosen.erase(key);
    }
}

/// The same with the key of a row; a row without a key changes nothing.
inline void chooseRow(ChosenKeys &chosen, const RowsOfKeys &rows, int row, bool wanted) {
    for (const auto &entry : rows) {
        if (entry.second == row) {
            choose(chosen, entry.first, wanted);
        }
    }
}

} // namespace TC
