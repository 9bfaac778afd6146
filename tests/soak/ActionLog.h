#pragma once

#include <QString>

#include <cstdio>

namespace tests {

/// Lines of a file that tells what was done, also after a crash. A program beside this one writes them: a disk that is at
/// work does not hold the thread up whose waiting is measured.
class ActionLog {
public:
    /// Begins the file anew.
    explicit ActionLog(const QString &path);
    /// Waits until all is written.
    ~ActionLog();
    ActionLog(const ActionLog &) = delete;
    ActionLog &operator=(const ActionLog &) = delete;

    void write(const QString &line);

private:
    std::FILE *const mWriter; ///< null when it could not be started
};

} // namespace tests
