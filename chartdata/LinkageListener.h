#pragma once

#include <boost/signals2/connection.hpp>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace TC {

class CLinkageManager;

/// Hears which instruments' trades have changed, for an object that may go while the signal is running: disconnecting
/// does not wait for it, so the signal reaches the object through a bond that is cut under a lock of its own.
///
/// What changes on the user-interface thread is told at once. What changes on another is kept until it is asked for,
/// since the view model belongs to that thread.
class LinkageListener {
public:
    using Hear = std::function<void(const std::vector<std::string> &)>; ///< instrument keys

    LinkageListener(CLinkageManager &linkage, Hear hear);
    /// The same as cut().
    ~LinkageListener();
    LinkageListener(const LinkageListener &) = delete;
    LinkageListener &operator=(const LinkageListener &) = delete;

    /// Nothing is told afterwards. Waits for what is being told.
    void cut();
    /// What has changed on other threads since the last call.
    std::vector<std::string> takeUntold();

private:
    struct Bond;
    std::shared_ptr<Bond> mBond; ///< what the signal holds
    boost::signals2::connection mConnection;
};

} // namespace TC
