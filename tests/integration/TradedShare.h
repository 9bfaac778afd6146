#pragma once

#include <string>

namespace tests {

/// Key of a share that the accounts of the demonstration trade every day.
inline const std::string kTradedShare = "SH600000";

} // namespace tests
