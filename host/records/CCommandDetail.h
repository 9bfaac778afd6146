#pragma once

#include <string>

namespace kvservice {

/// The command that an order, a deal or a task came from.
struct CCommandDetail {
    int mCommandId = 0;
    std::string mStrategyName; ///< UTF-8, empty when it was given by hand
    int mCancelDisabled = 0; ///< 1 disables cancelling
};

} // namespace kvservice
