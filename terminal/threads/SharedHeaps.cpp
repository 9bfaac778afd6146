#include "terminal/threads/SharedHeaps.h"

#include <malloc.h>

namespace terminal {

void shareHeaps() {
    constexpr int kHeaps = 2;
    mallopt(M_ARENA_MAX, kHeaps); // refused under a sanitizer, which has heaps of its own
}

} // namespace terminal
