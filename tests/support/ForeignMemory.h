#pragma once

namespace tests {

/// Under AddressSanitizer: SQLite takes its memory from the C library itself, past the sanitizer. It is not ours to
/// examine, and its many small pieces are a fifth of the time of the tests over a store. To be called before the first
/// store is opened; does nothing where SQLite is missing or runs already, and nothing in other builds.
void letSqliteAllocateUnwatched();

} // namespace tests
