#pragma once

#include <chrono>
#include <functional>
#include <thread>

namespace tests {

/// Waits until a condition of another thread or process holds; false when it does not for half a minute.
inline bool eventually(const std::function<bool()> &holds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!holds()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

} // namespace tests
