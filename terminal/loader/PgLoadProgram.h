#pragma once

namespace terminal {

/// The program timeshare-load. Answers the exit status: 0 when all files are loaded, 1 when some are not, 2 when it could not begin.
int runLoad(int argc, char **argv);

} // namespace terminal
