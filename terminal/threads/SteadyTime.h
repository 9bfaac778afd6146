#pragma once

#include <QtGlobal>

#include <chrono>

namespace terminal {

/// Milliseconds of a clock that never goes back.
inline qint64 steadyMilliseconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

} // namespace terminal
