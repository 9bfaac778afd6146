#pragma once

#include "host/Export.h"

#include <atomic>
#include <string>
#include <typeinfo>

namespace TC {

/// Where installed services stand, one place for each class of services. There is one set of places in a process, in the
/// toolkit library: the library, the host and its plug-ins find the same services, however they were built.
class TIMESHARE_EXPORT ServicePlaces {
public:
    /// The place of a class; null stands there until a service is installed. It never moves or goes. Any thread.
    static std::atomic<void *> &of(const std::type_info &type);
    /// The name of a class as it is written, "TC::CStockManager".
    static std::string nameOf(const std::type_info &type);
    /// Ends the program with a message that names the class whose service is missing.
    [[noreturn]] static void endWithout(const std::type_info &type);
};

} // namespace TC
