#pragma once

namespace terminal {

/// The terminal as a program: reads the command line, opens the services, and shows the window or writes the picture.
/// Answers the exit status: 0, or 2 after one line on the standard error stream that says what is wrong.
int runTerminal(int argc, char **argv);

} // namespace terminal
