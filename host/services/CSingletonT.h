#pragma once

#include "host/services/ServicePlaces.h"

#include <atomic>
#include <typeinfo>

namespace TC {

class ServiceContext;

/// Access to the one object of a host service. The host installs it before it creates a view and keeps it
/// alive until the last view has gone; installing is not owning.
template <class T> class CSingletonT {
public:
    /// The installed service. Ends the program with a message when there is none.
    static T &instance() {
        void *service = place().load(std::memory_order_acquire);
        if (!service) {
            ServicePlaces::endWithout(typeid(T));
        }
        return *static_cast<T *>(service);
    }
    /// Whether there is one.
    static bool isInstalled() { return place().load(std::memory_order_acquire) != nullptr; }
    /// Installs a service, or removes it with null. Answers what was installed before.
    static T *install(T *service) {
        return static_cast<T *>(place().exchange(service, std::memory_order_acq_rel));
    }

private:
    friend class ServiceContext;

    /// Looked up once in each binary.
    static std::atomic<void *> &place() {
        static std::atomic<void *> &place = ServicePlaces::of(typeid(T));
        return place;
    }
};

} // namespace TC
