#pragma once

#include <boost/format/format_fwd.hpp>

#include <string>

namespace TC {

/// \file
/// The log of the chart view: logger "KVStdFile", information level. Only request traffic, clearing and failed
/// look-ups are logged. Any thread.

/// Writes one line: "[<address of the object>] [<qualified function>] " and the text. `function` and `file`, the
/// source file's name, have to be literals: the log keeps their addresses.
void logTraffic(const void *object, const char *function, const char *file, const boost::format &text);

} // namespace TC
