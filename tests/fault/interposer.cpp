// Loaded before all other libraries of a program: makes the N-th call of a kind fail, that one or all from it on, and
// counts the calls. The environment says how:
//   TIMESHARE_FAULT_KIND   memory, store-memory, write, sync, open, process or thread
//   TIMESHARE_FAULT_AT     the first call that fails, from 1 on; 0 for none
//   TIMESHARE_FAULT_LASTS  whether those after it fail as well
//   TIMESHARE_FAULT_COUNT  a file that has the number of calls, however the program ends: a long of each kind in the order
//                          above, those of the kind that fails alone when there is one
//
// What counts: memory that this project's own code asks for (that of Qt's containers ends a program by Qt's design), or
// that SQLite asks for; writes to files, not to pipes; files other than the system's own, such as fonts and plugins.
// Processes that the program starts are not concerned.

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <new>
#include <pthread.h>
#include <spawn.h>
#include <string_view>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

extern "C" {
void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *block, size_t size);
}

namespace {

enum Kind { eNone, eMemory, eStoreMemory, eWrite, eSync, eOpen, eProcess, eThread };

/// Code of a library or of the program.
struct Range {
    std::uintptr_t start;
    std::uintptr_t end;
};

Kind kind = eNone;
long failAt = 0;
bool lasts = false;
pid_t owner = 0;
std::atomic<long> unseen[eThread + 1]{}; ///< the counts while there is no file for them
std::atomic<long> *calls = unseen;
Range own[8];
std::atomic<int> ownCount{0};
Range sqlite{};

Kind kindOf(const char *name) {
    static const char *const kNames[] = {"",     "memory", "store-memory", "write",
                                         "sync", "open",   "process",      "thread"};
    for (int i = eMemory; name && i <= eThread; ++i) {
        if (std::strcmp(name, kNames[i]) == 0) {
            return static_cast<Kind>(i);
        }
    }
    return eNone;
}

int noteLibrary(dl_phdr_info *info, size_t, void *) {
    const std::string_view name(info->dlpi_name);
    const bool isOwn = name.empty() || name.find("/libtimeshare") != name.npos;
    const bool isSqlite = name.find("/libsqlite3.so") != name.npos;
    for (int i = 0; i < info->dlpi_phnum && (isOwn || isSqlite); ++i) {
        const ElfW(Phdr) &part = info->dlpi_phdr[i];
        if (part.p_type == PT_LOAD && (part.p_flags & PF_X) != 0) {
            const std::uintptr_t start = info->dlpi_addr + part.p_vaddr;
            (isSqlite ? sqlite : own[ownCount]) = {start, start + part.p_memsz};
            ownCount += isOwn && ownCount < 7 ? 1 : 0;
        }
    }
    return 0;
}

bool isWanted(Kind called) {
    return kind == eNone || kind == called;
}

bool isIn(const Range &range, const void *address) {
    const auto place = reinterpret_cast<std::uintptr_t>(address);
    return place >= range.start && place < range.end;
}

bool isOwn(const void *caller) {
    for (int i = 0; i < ownCount; ++i) {
        if (isIn(own[i], caller)) {
            return true;
        }
    }
    return false;
}

/// Counts a call; whether it has to fail.
bool fails(Kind called) {
    if ((kind != eNone && called != kind) || getpid() != owner) {
        return false;
    }
    const long number = ++calls[called];
    return kind != eNone && failAt > 0 && (number == failAt || (lasts && number > failAt));
}

bool failsWith(Kind called, int error) {
    if (!fails(called)) {
        return false;
    }
    errno = error;
    return true;
}

bool memoryFails(const void *caller) {
    // Before its handler is there, the program has not begun.
    return (isWanted(eMemory) && std::get_new_handler() && isOwn(caller) && failsWith(eMemory, ENOMEM)) ||
           (isWanted(eStoreMemory) && isIn(sqlite, caller) && failsWith(eStoreMemory, ENOMEM));
}

bool isFile(int descriptor) {
    struct stat found {};
    return ::fstat(descriptor, &found) == 0 && S_ISREG(found.st_mode);
}

bool writeFails(int descriptor) {
    return isWanted(eWrite) && isFile(descriptor) && failsWith(eWrite, ENOSPC);
}

bool openFails(const char *path) {
    if (isWanted(eStoreMemory) && sqlite.end == 0) {
        ownCount = 0;
        dl_iterate_phdr(noteLibrary, nullptr); // loaded by now: it opens the store
    }
    if (!isWanted(eOpen)) {
        return false;
    }
    for (const char *folder : {"/usr/", "/etc/", "/proc/", "/sys/", "/dev/", "/lib", "/var/"}) {
        if (std::strncmp(path, folder, std::strlen(folder)) == 0) {
            return false;
        }
    }
    return failsWith(eOpen, EMFILE);
}

template <class Function> Function next(const char *name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

__attribute__((constructor)) void begin() {
    const char *at = std::getenv("TIMESHARE_FAULT_AT");
    failAt = at ? std::atol(at) : 0;
    lasts = std::getenv("TIMESHARE_FAULT_LASTS") != nullptr;
    owner = getpid();
    dl_iterate_phdr(noteLibrary, nullptr);
    if (const char *path = std::getenv("TIMESHARE_FAULT_COUNT")) {
        const int file =
            static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, O_RDWR | O_CREAT | O_CLOEXEC, 0600));
        if (file >= 0 && ::ftruncate(file, sizeof unseen) == 0) {
            void *place = ::mmap(nullptr, sizeof unseen, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
            calls = place == MAP_FAILED ? unseen : static_cast<std::atomic<long> *>(place); // zeros
        }
        ::close(file);
    }
    ::unsetenv("LD_PRELOAD");
    kind = kindOf(std::getenv("TIMESHARE_FAULT_KIND"));
}

/// As the language has it: the handler is asked for more before the call fails.
void *allocate(std::size_t size, const void *caller) {
    while (true) {
        void *block = memoryFails(caller) ? nullptr : __libc_malloc(size > 0 ? size : 1);
        if (block) {
            return block;
        }
        const std::new_handler handler = std::get_new_handler();
        if (!handler) {
            throw std::bad_alloc();
        }
        handler();
    }
}

} // namespace

// Memory

void *operator new(std::size_t size) {
    return allocate(size, __builtin_return_address(0));
}
void *operator new[](std::size_t size) {
    return allocate(size, __builtin_return_address(0));
}
void *operator new(std::size_t size, const std::nothrow_t &) noexcept {
    return memoryFails(__builtin_return_address(0)) ? nullptr : __libc_malloc(size > 0 ? size : 1);
}
void *operator new[](std::size_t size, const std::nothrow_t &) noexcept {
    return memoryFails(__builtin_return_address(0)) ? nullptr : __libc_malloc(size > 0 ? size : 1);
}
void operator delete(void *block) noexcept {
    std::free(block);
}
void operator delete[](void *block) noexcept {
    std::free(block);
}
void operator delete(void *block, std::size_t) noexcept {
    std::free(block);
}
void operator delete[](void *block, std::size_t) noexcept {
    std::free(block);
}

extern "C" {

void *malloc(size_t size) {
    return memoryFails(__builtin_return_address(0)) ? nullptr : __libc_malloc(size);
}
void *calloc(size_t count, size_t size) {
    return memoryFails(__builtin_return_address(0)) ? nullptr : __libc_calloc(count, size);
}
void *realloc(void *block, size_t size) {
    return memoryFails(__builtin_return_address(0)) ? nullptr : __libc_realloc(block, size);
}

// Writing

ssize_t write(int file, const void *data, size_t size) {
    static const auto real = next<ssize_t (*)(int, const void *, size_t)>("write");
    return writeFails(file) ? -1 : real(file, data, size);
}
ssize_t pwrite64(int file, const void *data, size_t size, off64_t place) {
    static const auto real = next<ssize_t (*)(int, const void *, size_t, off64_t)>("pwrite64");
    return writeFails(file) ? -1 : real(file, data, size, place);
}
ssize_t writev(int file, const struct iovec *parts, int count) {
    static const auto real = next<ssize_t (*)(int, const struct iovec *, int)>("writev");
    return writeFails(file) ? -1 : real(file, parts, count);
}
int ftruncate64(int file, off64_t size) noexcept {
    static const auto real = next<int (*)(int, off64_t)>("ftruncate64");
    return writeFails(file) ? -1 : real(file, size);
}
int fsync(int file) {
    static const auto real = next<int (*)(int)>("fsync");
    return failsWith(eSync, EIO) ? -1 : real(file);
}
int fdatasync(int file) {
    static const auto real = next<int (*)(int)>("fdatasync");
    return failsWith(eSync, EIO) ? -1 : real(file);
}

// Opening

#define TIMESHARE_MODE(flags)                                                                                  \
    mode_t mode = 0;                                                                                           \
    if (((flags) & (O_CREAT | O_TMPFILE)) != 0) {                                                              \
        va_list rest;                                                                                          \
        va_start(rest, flags);                                                                                 \
        mode = va_arg(rest, mode_t);                                                                           \
        va_end(rest);                                                                                          \
    }

int open(const char *path, int flags, ...) {
    static const auto real = next<int (*)(const char *, int, ...)>("open");
    TIMESHARE_MODE(flags)
    return openFails(path) ? -1 : real(path, flags, mode);
}
int open64(const char *path, int flags, ...) {
    static const auto real = next<int (*)(const char *, int, ...)>("open64");
    TIMESHARE_MODE(flags)
    return openFails(path) ? -1 : real(path, flags, mode);
}
int openat(int folder, const char *path, int flags, ...) {
    static const auto real = next<int (*)(int, const char *, int, ...)>("openat");
    TIMESHARE_MODE(flags)
    return openFails(path) ? -1 : real(folder, path, flags, mode);
}
int openat64(int folder, const char *path, int flags, ...) {
    static const auto real = next<int (*)(int, const char *, int, ...)>("openat64");
    TIMESHARE_MODE(flags)
    return openFails(path) ? -1 : real(folder, path, flags, mode);
}
/// What needs descriptors of its own fails with the files.
int pipe2(int ends[2], int flags) noexcept {
    static const auto real = next<int (*)(int *, int)>("pipe2");
    return isOwn(__builtin_return_address(0)) && failsWith(eOpen, EMFILE) ? -1 : real(ends, flags);
}
int socketpair(int domain, int type, int protocol, int ends[2]) noexcept {
    static const auto real = next<int (*)(int, int, int, int *)>("socketpair");
    return isOwn(__builtin_return_address(0)) && failsWith(eOpen, EMFILE) ? -1
                                                                          : real(domain, type, protocol, ends);
}
int eventfd(unsigned count, int flags) noexcept {
    static const auto real = next<int (*)(unsigned, int)>("eventfd");
    return isOwn(__builtin_return_address(0)) && failsWith(eOpen, EMFILE) ? -1 : real(count, flags);
}

// Processes and threads

int posix_spawn(pid_t *child, const char *path, const posix_spawn_file_actions_t *actions,
                const posix_spawnattr_t *attributes, char *const arguments[], char *const environment[]) {
    static const auto real =
        next<int (*)(pid_t *, const char *, const posix_spawn_file_actions_t *, const posix_spawnattr_t *,
                     char *const *, char *const *)>("posix_spawn");
    return fails(eProcess) ? EAGAIN : real(child, path, actions, attributes, arguments, environment);
}
pid_t fork() {
    static const auto real = next<pid_t (*)()>("fork");
    return failsWith(eProcess, EAGAIN) ? -1 : real();
}
/// Processes are also made by number.
long syscall(long number, ...) noexcept {
    static const auto real = next<long (*)(long, ...)>("syscall");
    long values[6];
    va_list rest;
    va_start(rest, number);
    for (long &value : values) {
        value = va_arg(rest, long);
    }
    va_end(rest);
    if ((number == SYS_clone || number == SYS_clone3) && failsWith(eProcess, EAGAIN)) {
        return -1;
    }
    return real(number, values[0], values[1], values[2], values[3], values[4], values[5]);
}
int pthread_create(pthread_t *thread, const pthread_attr_t *attributes, void *(*start)(void *),
                   void *argument) {
    static const auto real =
        next<int (*)(pthread_t *, const pthread_attr_t *, void *(*)(void *), void *)>("pthread_create");
    return fails(eThread) ? EAGAIN : real(thread, attributes, start, argument);
}

} // extern "C"
