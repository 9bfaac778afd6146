#pragma once

#include <atomic>

namespace TC {

/// A count that one thread may write while another reads it; it is read and written like an int. Nothing else is ordered
/// by it.
class SharedCount {
public:
    SharedCount(int count = 0) : mCount(count) {}
    SharedCount(const SharedCount &other) : mCount(int(other)) {}
    SharedCount &operator=(const SharedCount &other) { return *this = int(other); }
    SharedCount &operator=(int count) {
        mCount.store(count, std::memory_order_relaxed);
        return *this;
    }
    operator int() const { return mCount.load(std::memory_order_relaxed); }

private:
    std::atomic<int> mCount;
};

} // namespace TC
