#include "terminal/threads/SmallHeaps.h"

#include <malloc.h>

namespace terminal {

void keepHeapsSmall() {
    constexpr int kHeaps = 2;
    constexpr int kLarge = 256 * 1024; // bytes of a block
    constexpr int kFreeAtEnd = 1024 * 1024; // bytes at the end of a heap that wait to be used again
    // Refused under a sanitizer, which has heaps of its own.
    mallopt(M_ARENA_MAX, kHeaps);
    mallopt(M_MMAP_THRESHOLD, kLarge);
    mallopt(M_TRIM_THRESHOLD, kFreeAtEnd);
}

void giveBackFreeMemory() {
    malloc_trim(1024 * 1024); // of that what stays free at the end
}

} // namespace terminal
