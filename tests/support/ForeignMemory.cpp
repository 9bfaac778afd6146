#include "tests/support/ForeignMemory.h"

#include "tests/support/Effort.h"

#include <QLibrary>

#include <cstddef>

#ifdef TIMESHARE_ADDRESS_SANITIZED

extern "C" {
void *__libc_malloc(std::size_t size);
void __libc_free(void *piece);
void *__libc_realloc(void *piece, std::size_t size);
}

namespace {

/// `sqlite3_mem_methods`, as its documentation tells.
struct MemoryMethods {
    void *(*allocate)(int size);
    void (*release)(void *piece);
    void *(*resize)(void *piece, int size);
    int (*sizeOf)(void *piece);
    int (*roundUp)(int size);
    int (*open)(void *);
    void (*close)(void *);
    void *data;
};
constexpr int kConfigMalloc = 4; ///< SQLITE_CONFIG_MALLOC
constexpr std::size_t kAlignment = alignof(std::max_align_t);

/// A piece begins with its size, which fills one unit of alignment.
char *startOf(void *piece) {
    return piece ? static_cast<char *>(piece) - kAlignment : nullptr;
}

void *pieceAt(void *start, int size) {
    if (!start) {
        return nullptr;
    }
    *static_cast<int *>(start) = size;
    return static_cast<char *>(start) + kAlignment;
}

void *allocate(int size) {
    return pieceAt(__libc_malloc(static_cast<std::size_t>(size) + kAlignment), size);
}

void release(void *piece) {
    __libc_free(startOf(piece));
}

void *resize(void *piece, int size) {
    return pieceAt(__libc_realloc(startOf(piece), static_cast<std::size_t>(size) + kAlignment), size);
}

int sizeOf(void *piece) {
    return piece ? *reinterpret_cast<int *>(startOf(piece)) : 0;
}

int roundUp(int size) {
    constexpr int kStep = 8;
    return (size + kStep - 1) / kStep * kStep;
}

} // namespace

void tests::letSqliteAllocateUnwatched() {
    using Configure = int (*)(int, ...);
    const auto configure = reinterpret_cast<Configure>(QLibrary::resolve("sqlite3", 0, "sqlite3_config"));
    static MemoryMethods methods{allocate,      release, resize, sizeOf, roundUp, [](void *) { return 0; },
                                 [](void *) {}, nullptr};
    if (configure) {
        configure(kConfigMalloc, &methods);
    }
}

#else

void tests::letSqliteAllocateUnwatched() {}

#endif
