#pragma once

#include <QString>

namespace terminal {

/// What is wrong with a file, and on which line of it.
struct BarFault {
    int line = 0;
    QString reason;

    bool isNone() const { return reason.isEmpty(); }
};

} // namespace terminal
