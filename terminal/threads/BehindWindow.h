#pragma once

namespace terminal {

/// How much the threads that work for the window leave the processor to it: where there are not enough processors, what the user
/// sees and touches goes first. Mild, as they hold locks that it waits for.
constexpr int kBehindWindow = 4;

/// Makes the calling thread leave the processor to others, beyond what it does already: the higher the niceness, the more. Where
/// the system refuses, nothing changes.
void leaveProcessor(int niceness = kBehindWindow);

} // namespace terminal
