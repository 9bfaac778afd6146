#pragma once

#include "host/Export.h"

#include <QtGlobal>

#include <boost/format/format_fwd.hpp>

namespace TC {

/// \file
/// The log of the chart view: logger "KVStdFile", information level. Only request traffic, clearing and failed
/// look-ups are logged. Any thread. All that is logged goes through here.
///
/// A log never throws, and neither blocks nor ends the program: the lines are written on a thread of their own, which
/// is waited for unless the log stalls. What cannot be written is lost and counted.

/// Whether anything may become of a line: false once the log is set up and has no appender that would be told. Texts that
/// are logged often need not be made then.
TIMESHARE_EXPORT bool isTrafficHeard() noexcept;
/// Writes one line: "[<address of the object>] [<qualified function>] " and the text. `function` and `file`, the
/// source file's name, have to be literals: the log keeps their addresses.
TIMESHARE_EXPORT void logTraffic(const void *object, const char *function, const char *file,
                                 const boost::format &text) noexcept;

/// Lines that could not be written so far.
TIMESHARE_EXPORT qint64 lostLogLines() noexcept;
/// Waits until all lines are written; false when the log stalls for longer than this.
TIMESHARE_EXPORT bool flushLog(int milliseconds) noexcept;

} // namespace TC
