#pragma once

namespace TC {

/// The host's record of the panel that a view lies in.
struct CPanelInfo {
    int mId = 0;
    bool mAutoChangePeriod = false; ///< the host switches periods by itself
};

} // namespace TC
