#pragma once

#include "host/services/CConfigService.h"
#include "host/services/ServiceContext.h"

namespace TC {

/// Whether the host has chosen the concise style; without a configuration it has not.
inline bool isConcise(const ServiceContext &services) {
    const CConfig *config = services.get<CConfigService>().config();
    return config && config->conciseStyle();
}

} // namespace TC
