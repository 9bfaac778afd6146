#pragma once

namespace GZ {

/// Seconds that the clocks of the exchanges are ahead of UTC, all year: UTC+8, whatever the zone of the machine.
constexpr int kExchangeOffset = 8 * 3600;

} // namespace GZ
