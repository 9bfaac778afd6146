#pragma once

#include <csignal>
#include <sys/resource.h>

namespace tests {

/// While it lives nothing can be written to a file: each may have no byte.
class FullDisk {
public:
    FullDisk() : mHandler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &mBefore);
        rlimit none = mBefore;
        none.rlim_cur = 0;
        setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &mBefore);
        std::signal(SIGXFSZ, mHandler);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit mBefore{};
    void (*mHandler)(int);
};

} // namespace tests
