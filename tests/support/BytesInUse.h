#pragma once

#include <QtGlobal>

#include <malloc.h>

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#include <sanitizer/allocator_interface.h>
#define TESTS_UNDER_SANITIZER
#endif
#endif

namespace tests {

/// Bytes that the program has allocated and not given back, whatever its allocator.
inline qint64 bytesInUse() {
#ifdef TESTS_UNDER_SANITIZER
    return static_cast<qint64>(__sanitizer_get_current_allocated_bytes());
#else
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<qint64>(heap.uordblks + heap.hblkhd);
#endif
}

} // namespace tests
