#pragma once

#include <functional>

namespace terminal {

/// Where jobs run one after the other, in the order of posting. Any thread.
class WorkPlace {
public:
    using Job = std::function<void()>;

    virtual ~WorkPlace() = default;
    /// Never waits for jobs.
    virtual void post(Job job) = 0;
    /// Posts a job when a time of milliseconds is over; dropped when the place is closed before.
    virtual void postAfter(int milliseconds, Job job) = 0;
};

} // namespace terminal
