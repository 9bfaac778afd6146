#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <utility>

namespace terminal {

/// Functions that are called when something changes, on the thread of the change. Any thread may add, remove and call;
/// none of the functions may do so itself.
class Listeners {
public:
    using Listener = std::function<void()>;

    int add(Listener listener) {
        std::lock_guard<std::mutex> hold(mLock);
        mListeners.emplace(++mLastId, std::move(listener));
        return mLastId;
    }
    /// The function is not called after this has returned.
    void remove(int id) {
        std::lock_guard<std::mutex> hold(mLock);
        mListeners.erase(id);
    }
    void call() const {
        std::lock_guard<std::mutex> hold(mLock); // kept, so that nobody is gone who is called
        for (const auto &entry : mListeners) {
            entry.second();
        }
    }

private:
    mutable std::mutex mLock; ///< guards what follows
    std::map<int, Listener> mListeners;
    int mLastId = 0;
};

} // namespace terminal
