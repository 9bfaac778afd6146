#pragma once

#include <functional>

namespace terminal {

constexpr int kNoMemoryLeft = 4; ///< exit status

/// Runs the program within two guards and answers its exit status.
///
/// What it throws becomes a line on the standard error stream. Memory is kept back for the time when the system has no
/// more: then it is given back, and the program goes on; when that is used up as well, the program ends with a line and
/// kNoMemoryLeft, at once, as a kill would end it: what has been written to the store and the configuration is there.
int runGuarded(const std::function<int()> &program);

/// Whether what was kept back has been needed: time to save and to start again. Any thread.
bool isMemoryShort();

} // namespace terminal
