// Runs a script model and stays with it: whatever it starts, in whatever session, ends with it, with the program that
// wanted it, or when it goes beyond its limits. See Protocol.h.

#include "terminal/supervisor/ProcessTree.h"
#include "terminal/supervisor/Protocol.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace terminal;

namespace {

constexpr std::chrono::milliseconds kLook{250}; ///< between looks at what the tree takes
constexpr int kLowPriority = 14; ///< models leave the processor to the charts, and to their workers
constexpr int kFirstLimit = 1; ///< place of the first limit among the arguments
constexpr int kProgram = 6; ///< place of the program

struct Limits {
    rlim_t memoryBytes = 0; ///< of each process's address space, and of what all have resident
    rlim_t seconds = 0;
    rlim_t processes = 0;
    rlim_t files = 0;
    rlim_t fileBytes = 0;
};

pid_t model = 0;
int modelStatus = 0;
bool isModelOver = false;

void note(pid_t id, int status) {
    if (id == model) {
        modelStatus = status;
        isModelOver = true;
    }
}

void report(int number) {
    const ssize_t told = ::write(kReportDescriptor, &number, sizeof number);
    static_cast<void>(told); // who does not listen has gone
}

void limitTo(__rlimit_resource resource, rlim_t most) {
    const rlimit limit{most, most};
    ::setrlimit(resource, &limit);
}

/// The user's threads of now, and those of the model: the system counts them together.
rlim_t mostThreads(rlim_t own) {
    rlim_t count = own;
    for (const ProcessStatus &process : allProcesses()) {
        count += process.user == ::getuid() ? static_cast<rlim_t>(process.threads) : 0;
    }
    return count;
}

/// In the child. Answers the error number when the program could not be started.
int become(char **arguments, const Limits &limits, rlim_t threads) {
    ::setpgid(0, 0); // a signal to its own group does not come here
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    limitTo(RLIMIT_CORE, 0);
    limitTo(RLIMIT_AS, limits.memoryBytes);
    limitTo(RLIMIT_CPU, limits.seconds);
    limitTo(RLIMIT_NOFILE, limits.files);
    limitTo(RLIMIT_FSIZE, limits.fileBytes);
    limitTo(RLIMIT_NPROC, threads);
    ::setpriority(PRIO_PROCESS, 0, kLowPriority);
    ::execv(arguments[0], arguments);
    return errno;
}

/// Starts the program; answers 0 or the error number.
int start(char **arguments, const Limits &limits) {
    int failure[2];
    if (::pipe2(failure, O_CLOEXEC) != 0) {
        return errno;
    }
    const rlim_t threads = mostThreads(limits.processes);
    model = ::fork();
    if (model == 0) {
        const int failed = become(arguments, limits, threads);
        const ssize_t told = ::write(failure[1], &failed, sizeof failed);
        ::_exit(told > 0 ? 127 : 126);
    }
    ::close(failure[1]);
    if (model < 0) {
        return errno;
    }
    int failed = 0;
    ssize_t told = 0;
    while ((told = ::read(failure[0], &failed, sizeof failed)) < 0 && errno == EINTR) {
    }
    ::close(failure[0]);
    // Who has the other ends has to see the program close them.
    ::close(STDIN_FILENO);
    ::close(STDOUT_FILENO);
    return told == static_cast<ssize_t>(sizeof failed) ? failed : 0;
}

ESupervisorEnd excess(const Limits &limits) {
    const std::vector<ProcessStatus> tree = descendants(::getpid(), allProcesses());
    if (tree.size() > limits.processes) {
        return eEndTooManyProcesses;
    }
    rlim_t resident = 0;
    for (const ProcessStatus &process : tree) {
        resident += process.residentBytes;
    }
    return resident > limits.memoryBytes ? eEndTooMuchMemory : eEndOfProgram;
}

/// Stays until the program has ended or has to; answers why.
ESupervisorEnd watch(int children, const Limits &limits) {
    using Clock = std::chrono::steady_clock;
    Clock::time_point nextLook = Clock::now() + kLook;
    while (true) {
        pollfd news[] = {{kLifelineDescriptor, POLLIN, 0}, {children, POLLIN, 0}};
        ::poll(news, 2, static_cast<int>(kLook.count()));
        signalfd_siginfo info[8];
        while (::read(children, info, sizeof info) > 0) {
        }
        noteEnded(&note);
        if (news[0].revents != 0 || isModelOver) {
            return eEndOfProgram;
        }
        if (Clock::now() < nextLook) {
            continue;
        }
        nextLook = Clock::now() + kLook;
        const ESupervisorEnd end = excess(limits);
        if (end != eEndOfProgram) {
            return end;
        }
    }
}

/// Ends as the program did.
int endLikeModel() {
    if (!isModelOver || WIFEXITED(modelStatus)) {
        return isModelOver ? WEXITSTATUS(modelStatus) : 1;
    }
    const int signal = WTERMSIG(modelStatus);
    limitTo(RLIMIT_CORE, 0);
    ::signal(signal, SIG_DFL);
    sigset_t only;
    sigemptyset(&only);
    sigaddset(&only, signal);
    ::sigprocmask(SIG_UNBLOCK, &only, nullptr);
    ::raise(signal);
    return 1;
}

rlim_t numberAt(char **arguments, int place) {
    return std::strtoull(arguments[kFirstLimit + place], nullptr, 10);
}

} // namespace

int main(int argc, char **argv) {
    if (argc <= kProgram) {
        return 126;
    }
    ::fcntl(kReportDescriptor, F_SETFD, FD_CLOEXEC);
    ::fcntl(kLifelineDescriptor, F_SETFD, FD_CLOEXEC);
    ::signal(SIGPIPE, SIG_IGN);
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);
    sigset_t children;
    sigemptyset(&children);
    sigaddset(&children, SIGCHLD);
    ::sigprocmask(SIG_BLOCK, &children, nullptr);
    const int ends = ::signalfd(-1, &children, SFD_CLOEXEC | SFD_NONBLOCK);
    const Limits limits{numberAt(argv, 0), numberAt(argv, 1), numberAt(argv, 2), numberAt(argv, 3),
                        numberAt(argv, 4)};
    const int failed = start(argv + kProgram, limits);
    report(failed);
    const ESupervisorEnd end = failed == 0 ? watch(ends, limits) : eEndOfProgram;
    if (failed == 0) {
        ::kill(-model, SIGKILL); // also where the system does not tell its processes
    }
    endDescendants(&note);
    report(end);
    return endLikeModel();
}
