#include "tests/soak/ThreadCalls.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cxxabi.h>
#include <dlfcn.h>
#include <execinfo.h>
#include <memory>
#include <semaphore.h>

namespace tests {
namespace {

constexpr int kMostCalls = 40;
constexpr int kOfTheSignal = 2; ///< innermost calls: the handler's own and the system's that led to it
constexpr int kSignal = SIGUSR2;

std::array<void *, kMostCalls> gCalls;
int gCallCount = 0;
sem_t gAreCallsKnown;

void writeCallsDown(int) {
    const int error = errno;
    gCallCount = backtrace(gCalls.data(), kMostCalls);
    sem_post(&gAreCallsKnown);
    errno = error;
}

bool waitForCalls() {
    timespec end{};
    clock_gettime(CLOCK_REALTIME, &end);
    ++end.tv_sec;
    int answer = 0;
    do {
        answer = sem_timedwait(&gAreCallsKnown, &end);
    } while (answer != 0 && errno == EINTR);
    return answer == 0;
}

QString nameOf(void *address) {
    Dl_info info{};
    if (dladdr(address, &info) == 0) {
        return QStringLiteral("?");
    }
    if (!info.dli_sname) {
        const auto offset = static_cast<char *>(address) - static_cast<char *>(info.dli_fbase);
        return QStringLiteral("%1+0x%2").arg(QString::fromLocal8Bit(info.dli_fname)).arg(offset, 0, 16);
    }
    int status = 0;
    const std::unique_ptr<char, decltype(&free)> name(
        abi::__cxa_demangle(info.dli_sname, nullptr, nullptr, &status), &free);
    return QString::fromLatin1(status == 0 ? name.get() : info.dli_sname);
}

} // namespace

void watchCalls() {
    static const bool isReady = [] {
        backtrace(gCalls.data(), kMostCalls);
        sem_init(&gAreCallsKnown, 0, 0);
        struct sigaction action {};
        action.sa_handler = &writeCallsDown;
        action.sa_flags = SA_RESTART;
        return sigaction(kSignal, &action, nullptr) == 0;
    }();
    Q_UNUSED(isReady)
}

QStringList callsOf(pthread_t thread) {
    while (sem_trywait(&gAreCallsKnown) == 0) { // an answer to somebody who no longer waited
    }
    if (pthread_kill(thread, kSignal) != 0 || !waitForCalls()) {
        return {};
    }
    QStringList names;
    for (int i = kOfTheSignal; i < gCallCount; ++i) {
        names.append(nameOf(gCalls[static_cast<size_t>(i)]));
    }
    return names;
}

} // namespace tests
