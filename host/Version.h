#pragma once

#include "host/Export.h"

/// \file
/// The release that these headers belong to, and the interface: programs that were built against one release run with
/// every other of the same interface number. The build reads both numbers here.

#define TIMESHARE_INTERFACE 1
#define TIMESHARE_VERSION_MAJOR 0
#define TIMESHARE_VERSION_MINOR 2
#define TIMESHARE_VERSION_PATCH 0

namespace TC {

/// The release of the library that the program runs with, such as "0.2.0".
TIMESHARE_EXPORT const char *libraryVersion();

} // namespace TC
