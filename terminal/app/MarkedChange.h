#pragma once

#include <QString>

namespace terminal {

/// A change as it is shown: its number, with an arrow and a sign that tell a rise from a fall without their colours.
inline QString markedChange(double change, const QString &number) {
    return change > 0.0   ? QStringLiteral("▲ +") + number
           : change < 0.0 ? QStringLiteral("▼ ") + number
                          : number;
}

} // namespace terminal
