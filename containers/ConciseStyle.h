#pragma once

#include "host/services/CConfigService.h"

namespace TC {

/// Whether the host has chosen the concise style; without a configuration it has not.
inline bool isConcise() {
    const CConfig *config = getConfig();
    return config && config->conciseStyle();
}

} // namespace TC
