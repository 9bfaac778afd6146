#pragma once

#include <string>

namespace TC {

/// One account in the configuration of the user.
struct CAccount {
    /// The account's id, as the records of the trade service name it.
    std::string key() const { return mKey; }

    std::string mKey;
    std::string mName; ///< UTF-8
};

} // namespace TC
