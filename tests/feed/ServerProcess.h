#pragma once

#include <QStringList>

#include <csignal>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace tests {

/// A program that runs beside the test and ends with it.
class ServerProcess {
public:
    ServerProcess() = default;
    ~ServerProcess() { end(SIGKILL); }
    ServerProcess(const ServerProcess &) = delete;
    ServerProcess &operator=(const ServerProcess &) = delete;

    /// `output` takes what it prints; empty for nobody. `environment` is added, as NAME=VALUE.
    bool start(const QString &program, const QStringList &arguments, const QString &output = {},
               const QStringList &environment = {}) {
        std::vector<std::string> words{program.toStdString()};
        for (const QString &argument : arguments) {
            words.push_back(argument.toStdString());
        }
        std::vector<char *> list;
        for (std::string &word : words) {
            list.push_back(word.data());
        }
        list.push_back(nullptr);
        std::vector<std::string> added;
        for (const QString &variable : environment) {
            added.push_back(variable.toStdString());
        }
        const std::string path = output.isEmpty() ? "/dev/null" : output.toStdString();
        mPid = fork();
        if (mPid == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            if (!freopen(path.c_str(), "a", stdout) || dup2(STDOUT_FILENO, STDERR_FILENO) < 0) {
                _exit(126);
            }
            for (std::string &variable : added) {
                putenv(variable.data());
            }
            execv(list[0], list.data());
            _exit(127);
        }
        return mPid > 0;
    }
    pid_t pid() const { return mPid; }
    void send(int signal) const {
        if (mPid > 0) {
            kill(mPid, signal);
        }
    }
    /// Sends a signal and waits for the end; answers the exit status, -1 when it ended otherwise.
    int end(int signal) {
        if (mPid <= 0) {
            return -1;
        }
        kill(mPid, signal);
        kill(mPid, SIGCONT);
        return wait();
    }
    int wait() {
        int status = 0;
        waitpid(mPid, &status, 0);
        mPid = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t mPid = 0;
};

} // namespace tests
