#pragma once

#include <atomic>
#include <memory>

namespace log4cxx {
class Logger;
}

namespace TC {

/// Whether a logger has an appender, told without asking the log: one that stalls holds up who asks it.
///
/// The log is looked at by its own thread. What that found holds until an appender is added anywhere, which the log tells.
class AppenderWatch {
public:
    using LoggerPtr = std::shared_ptr<log4cxx::Logger>;

    /// Hears of added appenders from now on, for the rest of the program: it is never destroyed.
    AppenderWatch();
    AppenderWatch(const AppenderWatch &) = delete;
    AppenderWatch &operator=(const AppenderWatch &) = delete;

    /// Looks for appenders of the logger and of all above it. May wait for the log.
    void look(const LoggerPtr &logger);
    /// False when the last look has found none and none was added since. Any thread, waits for nothing.
    bool mayBeHeard() const noexcept { return mLookedAt != mAdded; }
    void countAdded() noexcept { ++mAdded; }

private:
    std::atomic<int> mAdded{0};
    std::atomic<int> mLookedAt{-1}; ///< mAdded when there was none; -1 before
};

} // namespace TC
