#pragma once

namespace terminal {

/// timeshare-feed from start to end; answers its exit status. SIGINT and SIGTERM end it in order.
int runFeed(int argc, char **argv);

} // namespace terminal
