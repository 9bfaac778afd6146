#pragma once

#include <cstddef>
#include <vector>

#include <sys/types.h>

namespace terminal {

/// A process as the system tells it.
struct ProcessStatus {
    pid_t id = 0;
    pid_t parent = 0;
    bool isZombie = false;
    uid_t user = 0;
    long threads = 0;
    std::size_t residentBytes = 0;
};

/// All processes of the system; empty when it does not tell them.
std::vector<ProcessStatus> allProcesses();

/// Those that descend from a process, itself and zombies left out. Pure.
std::vector<ProcessStatus> descendants(pid_t ancestor, const std::vector<ProcessStatus> &all);

/// Ends all that descends from this process, which has to be who their orphans go to: they are stopped first, so that
/// none starts others meanwhile. `onEnd` hears of the status of each that this process has noted. Returns after a few
/// seconds at the latest.
void endDescendants(void (*onEnd)(pid_t id, int status));

/// Notes the processes that have ended; false when there is none left.
bool noteEnded(void (*onEnd)(pid_t id, int status));

} // namespace terminal
