#pragma once

#include <QString>

namespace terminal {

class TerminalServices;

/// Adds the days that the store lacks on a thread of its own, and lets the market run then. Meanwhile the event loop turns, and
/// what takes long is told in a dialog with a stop button. Answers an empty text or what went wrong; the quitting of the
/// application stops it.
QString fillBehind(TerminalServices &services);

} // namespace terminal
