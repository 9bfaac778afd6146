#pragma once

#include <algorithm>

#if defined(__SANITIZE_ADDRESS__)
#define TIMESHARE_ADDRESS_SANITIZED 1
#elif defined(__SANITIZE_THREAD__)
#define TIMESHARE_THREAD_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TIMESHARE_ADDRESS_SANITIZED 1
#elif __has_feature(thread_sanitizer)
#define TIMESHARE_THREAD_SANITIZED 1
#endif
#endif

namespace tests {

/// Whether a sanitizer watches the program, which makes it three to five times slower.
#if defined(TIMESHARE_ADDRESS_SANITIZED) || defined(TIMESHARE_THREAD_SANITIZED)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

/// Of things that all take the same ways through the code, each is tried at full speed, which proves it, and every
/// fourth under a sanitizer, which looks for faults of memory on these ways.
constexpr int kStride = kSanitized ? 4 : 1;

/// How many of so many are tried then; one at least.
constexpr int rounds(int atFullSpeed) {
    return std::max(1, atFullSpeed / kStride);
}

} // namespace tests
