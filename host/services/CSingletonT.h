#pragma once

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <typeinfo>

namespace TC {

/// Access to the one object of a host service. The host installs it before it creates a view and keeps it
/// alive until the last view has gone; installing is not owning.
template <class T> class CSingletonT {
public:
    /// The installed service. Ends the program with a message when there is none.
    static T &instance() {
        T *service = slot().load(std::memory_order_acquire);
        if (!service) {
            std::fprintf(stderr, "host service %s is not installed\n", typeid(T).name());
            std::abort();
        }
        return *service;
    }
    /// Installs a service, or removes it with null. Answers what was installed before.
    static T *install(T *service) { return slot().exchange(service, std::memory_order_acq_rel); }

private:
    static std::atomic<T *> &slot() {
        static std::atomic<T *> service{nullptr};
        return service;
    }
};

} // namespace TC
