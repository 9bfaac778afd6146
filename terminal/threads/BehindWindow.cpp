#include "terminal/threads/BehindWindow.h"

#include <sys/resource.h>

namespace terminal {

void leaveProcessor(int niceness) {
    // Of this thread alone, and more than the program's own: one that is told to go before others does so as a whole.
    ::setpriority(PRIO_PROCESS, 0, ::getpriority(PRIO_PROCESS, 0) + niceness);
}

} // namespace terminal
