#include "host/Version.h"

#define TIMESHARE_TEXT_OF(number) #number
#define TIMESHARE_TEXT(number) TIMESHARE_TEXT_OF(number)

namespace TC {

const char *libraryVersion() {
    return TIMESHARE_TEXT(TIMESHARE_VERSION_MAJOR) "." TIMESHARE_TEXT(
        TIMESHARE_VERSION_MINOR) "." TIMESHARE_TEXT(TIMESHARE_VERSION_PATCH);
}

} // namespace TC
