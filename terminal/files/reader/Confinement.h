#pragma once

#include <cstddef>

namespace reader {

constexpr std::size_t kMostMemory = 1024UL * 1024 * 1024; ///< bytes of address space
constexpr unsigned kMostSeconds = 20; ///< of processor time

/// Takes from this process, for good, all that reading needs not: it opens no file, no connection and no process any more,
/// writes to no file, and ends when it uses more memory or processor time than the limits. What it has open it may read
/// and write. False when the system does not do that.
bool confine();

} // namespace reader
