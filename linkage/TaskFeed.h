#pragma once

#include "linkage/SlotBond.h"

#include <QObject>
#include <boost/signals2/connection.hpp>

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace TC {

class CLinkageManager;

/// Brings the trade service's changes of tasks to the thread on which it was made. What comes from another thread piles up until
/// this one comes to it, and is told at once, after the input that waits here: changes may come faster than a table
/// fills.
class TaskFeed : public QObject {
    Q_OBJECT
public:
    explicit TaskFeed(CLinkageManager &linkage);
    ~TaskFeed() override;

Q_SIGNALS:
    /// Tasks of these instruments have changed.
    void changed(const std::vector<std::string> &stockKeys);

private:
    void queue(const std::vector<std::string> &stockKeys);
    Q_INVOKABLE void tellAfterInput();
    void tell();

    std::shared_ptr<SlotBond<TaskFeed>> mBond;
    std::set<std::string> mUntold; ///< instruments that have changed since changed(); under the bond's lock
    boost::signals2::scoped_connection mConnection;
};

} // namespace TC
