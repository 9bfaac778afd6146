#pragma once

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace tests {

/// A child process that tells its steps and waits after each until it is let go on.
class ChildProcess {
public:
    /// Runs in the child; `step` returns when the parent lets it.
    using Work = std::function<void(const std::function<void()> &step)>;

    explicit ChildProcess(const Work &work) {
        int steps[2];
        int goes[2];
        if (pipe(steps) != 0 || pipe(goes) != 0) {
            return;
        }
        mPid = fork();
        if (mPid == 0) {
            close(steps[0]);
            close(goes[1]);
            work([&] {
                char go = 0;
                if (write(steps[1], "s", 1) != 1 || read(goes[0], &go, 1) != 1) {
                    _exit(1);
                }
            });
            _exit(0);
        }
        close(steps[1]);
        close(goes[0]);
        mSteps = steps[0];
        mGoes = goes[1];
    }
    ~ChildProcess() {
        kill();
        close(mSteps);
        close(mGoes);
    }
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    /// False when the child has ended instead of making the step.
    bool waitForStep() {
        char step = 0;
        return read(mSteps, &step, 1) == 1;
    }
    void letGo() { EXPECT_EQ(write(mGoes, "g", 1), 1); }
    void kill() {
        if (mPid > 0) {
            ::kill(mPid, SIGKILL);
            waitpid(mPid, nullptr, 0);
            mPid = 0;
        }
    }

private:
    pid_t mPid = 0;
    int mSteps = -1;
    int mGoes = -1;
};

} // namespace tests
