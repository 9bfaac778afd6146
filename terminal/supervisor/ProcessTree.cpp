#include "terminal/supervisor/ProcessTree.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace terminal {
namespace {

constexpr int kMostLooks = 3000; ///< at a tree that has to end, one a millisecond

/// The fields of /proc/ID/stat from the third on, which stand behind the name in brackets. Answers false for a process
/// that has gone.
bool readStatus(const char *name, ProcessStatus &process) {
    const std::string folder = std::string("/proc/") + name;
    const int file = ::open((folder + "/stat").c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return false;
    }
    char text[1024];
    struct stat owner {};
    const bool isOwned = ::fstat(file, &owner) == 0;
    const ssize_t size = ::read(file, text, sizeof text - 1);
    ::close(file);
    if (size <= 0 || !isOwned) {
        return false;
    }
    text[size] = '\0';
    const char *rest = std::strrchr(text, ')');
    char state = 0;
    long parent = 0;
    long threads = 0;
    long pages = 0;
    // state ppid pgrp session tty tpgid flags minflt cminflt majflt cmajflt utime stime cutime cstime priority nice
    // threads itrealvalue start vsize rss
    const char *const shape =
        ") %c %ld %*d %*d %*d %*d %*u %*u %*u %*u %*u %*u %*u %*d %*d %*d %*d %ld %*d %*u %*u %ld";
    if (!rest || std::sscanf(rest, shape, &state, &parent, &threads, &pages) != 4) {
        return false;
    }
    process.id = static_cast<pid_t>(std::atol(name));
    process.parent = static_cast<pid_t>(parent);
    process.isZombie = state == 'Z' || state == 'X';
    process.user = owner.st_uid;
    process.threads = threads;
    process.residentBytes =
        static_cast<std::size_t>(std::max(0L, pages)) * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    return true;
}

std::vector<pid_t> idsOf(const std::vector<ProcessStatus> &processes) {
    std::vector<pid_t> ids;
    for (const ProcessStatus &process : processes) {
        ids.push_back(process.id);
    }
    std::sort(ids.begin(), ids.end());
    return ids;
}

void signalAll(const std::vector<pid_t> &ids, int signal) {
    for (const pid_t id : ids) {
        ::kill(id, signal);
    }
}

} // namespace

std::vector<ProcessStatus> allProcesses() {
    std::vector<ProcessStatus> all;
    DIR *const folder = ::opendir("/proc");
    if (!folder) {
        return all;
    }
    while (const dirent *entry = ::readdir(folder)) {
        ProcessStatus process;
        if (std::isdigit(static_cast<unsigned char>(entry->d_name[0])) != 0 &&
            readStatus(entry->d_name, process)) {
            all.push_back(process);
        }
    }
    ::closedir(folder);
    return all;
}

std::vector<ProcessStatus> descendants(pid_t ancestor, const std::vector<ProcessStatus> &all) {
    std::vector<ProcessStatus> found;
    std::vector<pid_t> parents{ancestor};
    while (!parents.empty()) {
        const pid_t parent = parents.back();
        parents.pop_back();
        for (const ProcessStatus &process : all) {
            if (process.parent == parent && !process.isZombie) {
                found.push_back(process);
                parents.push_back(process.id);
            }
        }
    }
    return found;
}

bool noteEnded(void (*onEnd)(pid_t id, int status)) {
    while (true) {
        int status = 0;
        const pid_t id = ::waitpid(-1, &status, WNOHANG);
        if (id == 0) {
            return true;
        }
        if (id > 0) {
            onEnd(id, status);
        } else if (errno != EINTR) {
            return false;
        }
    }
}

void endDescendants(void (*onEnd)(pid_t id, int status)) {
    std::vector<pid_t> before;
    for (int look = 0; look < kMostLooks && noteEnded(onEnd); ++look) {
        const std::vector<pid_t> ids = idsOf(descendants(::getpid(), allProcesses()));
        signalAll(ids, SIGSTOP);
        if (ids == before) {
            signalAll(ids, SIGKILL);
            ::usleep(1000);
        }
        before = ids;
    }
}

} // namespace terminal
