#pragma once

#include "host/Export.h"

namespace TC {

/// The index user configuration: switches of the chart that outlive the program. Always read, changed and
/// written back whole, through SingletonManager::getIndexUserConfig().
struct UserConfigRecord {
    bool mOverlaySector = false; ///< setSector overlays the sector
    unsigned char mShowGradient = 1; ///< gradient under the price line
    bool mShowVwap = false; ///< the trade-data formula is shown
    int mFilterStock = 0; ///< repeated instruments are filtered; changes only while mShowVwap is on
};

/// Read and write access to the index user configuration.
class TIMESHARE_EXPORT UserConfigInterface {
public:
    virtual ~UserConfigInterface() = default;
    /// A copy of the record.
    virtual UserConfigRecord read() const = 0;
    /// Stores a changed copy.
    virtual void write(const UserConfigRecord &record) = 0;
};

} // namespace TC
