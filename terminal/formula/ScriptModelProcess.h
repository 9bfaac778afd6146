#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <functional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace terminal {

/// How far a script model may go.
struct ScriptModelLimits {
    int milliseconds = 60000; ///< of real time for one run
    qint64 outputBytes = 64 << 20; ///< of results
    qint64 memoryBytes = 2LL << 30; ///< of address space of each process, and resident of all
    int processes = 32; ///< at a time
    int openFiles = 256; ///< of each process
    qint64 fileBytes = 256 << 20; ///< of each file that it writes
};

/// A Python file to run.
struct ScriptModelCommand {
    QString interpreter; ///< program
    QString file;
    QByteArray input; ///< for its standard input
};

/// How a run ended.
struct ScriptModelExit {
    enum Way {
        Finished, ///< with `status`
        Killed, ///< by the signal `status`, not of ours
        NotStarted, ///< `status` is the error number
        TimedOut,
        TooMuchOutput,
        TooManyProcesses,
        TooMuchMemory, ///< of all processes together
        Refused, ///< the reader of the output wanted no more
        Stopped, ///< by stop()
    };
    Way way = Finished;
    int status = 0;
    QByteArray errors; ///< the end of what it wrote to the standard error stream
};

/// One run of a Python file under a supervisor, a process of its own. Whatever way the run ends, and also when this program
/// is killed, nothing that the file has started is left behind, in whatever session. It has its file's folder as its
/// working directory, and of the environment what modelEnvironment() lets through.
class ScriptModelProcess {
public:
    /// Receives pieces of output; answering false ends the run.
    using OutputReader = std::function<bool(const QByteArray &)>;

    ScriptModelProcess();
    ~ScriptModelProcess();
    ScriptModelProcess(const ScriptModelProcess &) = delete;
    ScriptModelProcess &operator=(const ScriptModelProcess &) = delete;

    /// Runs the file to its end, once; blocks.
    ScriptModelExit run(const ScriptModelCommand &command, const ScriptModelLimits &limits,
                        const OutputReader &onOutput);
    /// Ends the run, before it began or while it is under way. Any thread; does not wait.
    void stop();
    bool isStopped() const { return mStopped; }

private:
    std::atomic<bool> mStopped{false};
    int mWake; ///< becomes readable with stop()
};

/// What of an environment, entries as "NAME=value", a model gets: paths, languages and the zone, and nothing else; and
/// that Python reads and writes UTF-8. Pure.
std::vector<std::string> modelEnvironment(const char *const *environment);

/// The Python to use when none is set: the system's, or else the first on the path; empty when there is none.
QString defaultPython();

} // namespace terminal
