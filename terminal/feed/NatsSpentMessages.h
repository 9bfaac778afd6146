#pragma once

#include <QtGlobal>

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

    /// Takes one over; with 256 of them, or a megabyte, all are given back.
    void add(__natsMsg *message);
    /// Gives back those that are held.
    void giveBack();
    size_t held() const;

private:
    mutable std::mutex mLock; ///< guards what follows
    std::vector<__natsMsg *> mHeld;
    qint64 mBytes = 0; ///< of what they carry
};

} // namespace terminal
