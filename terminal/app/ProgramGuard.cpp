#include "terminal/app/ProgramGuard.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <unistd.h>

namespace terminal {
namespace {

constexpr std::size_t kKeptBack = 16UL * 1024 * 1024; ///< bytes
constexpr int kFailed = 2; ///< exit status

std::atomic<void *> keptBack{nullptr};
std::atomic<bool> isShort{false};

/// On whatever thread, in whatever state: neither memory nor locks.
void onNoMemory() {
    isShort = true;
    if (void *memory = keptBack.exchange(nullptr)) {
        std::free(memory);
        return;
    }
    static const char line[] =
        "timeshare-terminal: the system has no memory left: what was stored is safe; close other "
        "programs and start again\n";
    static_cast<void>(::write(STDERR_FILENO, line, sizeof line - 1) < 0);
    std::_Exit(kNoMemoryLeft);
}

void keepBack() {
    void *memory = std::malloc(kKeptBack);
    if (memory) {
        std::memset(memory, 1, kKeptBack); // the system gives it only when it is used
    }
    keptBack = memory;
    std::set_new_handler(onNoMemory);
}

} // namespace

int runGuarded(const std::function<int()> &program) {
    keepBack();
    try {
        return program();
    } catch (const std::exception &error) {
        std::fprintf(stderr, "timeshare-terminal: %s\n", error.what());
        return kFailed;
    }
}

bool isMemoryShort() {
    return isShort;
}

} // namespace terminal
