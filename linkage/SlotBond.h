#pragma once

#include <memory>
#include <mutex>

namespace TC {

/// What the slots of a service's signals hold of an object. They may run on any thread, also while the object goes,
/// since disconnecting does not wait for them; through this they reach it as long as it lives.
template <class Object> class SlotBond {
public:
    /// Shared by the object, which ends it first thing in its destructor, and by its slots.
    static std::shared_ptr<SlotBond> make(Object *object) {
        return std::shared_ptr<SlotBond>(new SlotBond(object));
    }

    /// Calls `use` with the object, unless it has gone. Under a lock: `use` must not wait for anything.
    template <class Use> void with(Use use) {
        const std::lock_guard<std::mutex> hold(mLock);
        if (mObject) {
            use(*mObject);
        }
    }
    /// Waits for a call that is under way; there is none afterwards.
    void end() {
        const std::lock_guard<std::mutex> hold(mLock);
        mObject = nullptr;
    }

private:
    explicit SlotBond(Object *object) : mObject(object) {}

    std::mutex mLock;
    Object *mObject;
};

} // namespace TC
