#pragma once

#include "host/services/CConfigService.h"

namespace TC {

/// Changes the settings that outlive the program, which are read, changed and written whole. What they have become.
template <class Change> UserConfigRecord changeSettings(UserConfigInterface &settings, Change change) {
    UserConfigRecord record = settings.read();
    change(record);
    settings.write(record);
    return record;
}

} // namespace TC
