#pragma once

#include <chrono>
#include <ctime>

namespace terminal {

/// The time of a processor that the calling thread has used.
inline std::chrono::nanoseconds threadTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace terminal
