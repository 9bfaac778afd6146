#pragma once

#include <sys/resource.h>

namespace tests {

/// While it lives no file can be opened: the program has as many open as it may.
class NoMoreFiles {
public:
    NoMoreFiles() {
        getrlimit(RLIMIT_NOFILE, &mBefore);
        rlimit none = mBefore;
        none.rlim_cur = 0; // those that are open stay so
        setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoMoreFiles() { setrlimit(RLIMIT_NOFILE, &mBefore); }
    NoMoreFiles(const NoMoreFiles &) = delete;
    NoMoreFiles &operator=(const NoMoreFiles &) = delete;

private:
    rlimit mBefore{};
};

} // namespace tests
