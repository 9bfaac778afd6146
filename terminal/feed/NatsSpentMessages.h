#pragma once

#include <mutex>
#include <vector>

struct __natsMsg;

namespace terminal {

/// Messages that have been read. The library frees each on a thread of its own, which it wakes for that: given back many at a
/// time they wake it once. Any thread.
class NatsSpentMessages {
public:
    NatsSpentMessages() = default;
    ~NatsSpentMessages() { giveBack(); }
    NatsSpentMessages(const NatsSpentMessages &) = delete;
    NatsSpentMessages &operator=(const NatsSpentMessages &) = delete;

    /// Takes one over.
    void add(__natsMsg *message);
    /// Gives back those that are held.
    void giveBack();

private:
    std::mutex mLock; ///< guards what follows
    std::vector<__natsMsg *> mHeld;
};

} // namespace terminal
