#pragma once

#include "terminal/market/BarFault.h"

#include <QVector>

namespace terminal {

/// Rows of a file that were not taken: how many, and the first of them with the reasons.
struct LeftOutRows {
    static constexpr int kTold = 10;

    void add(int line, const QString &reason) {
        ++count;
        if (first.size() < kTold) {
            first.append({line, reason});
        }
    }
    /// Those that were met after these.
    void add(const LeftOutRows &others) {
        count += others.count;
        first.append(others.first.mid(0, kTold - first.size()));
    }

    int count = 0;
    QVector<BarFault> first;
};

} // namespace terminal
