#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <functional>

#include <sys/types.h>

namespace terminal {

/// How far a script model may go.
struct ScriptModelLimits {
    int milliseconds = 60000; ///< of real time for one run
    qint64 outputBytes = 64 << 20; ///< of results
    qint64 memoryBytes = 2LL << 30; ///< of address space
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
        Refused, ///< the reader of the output wanted no more
        Stopped, ///< by stop()
    };
    Way way = Finished;
    int status = 0;
    QByteArray errors; ///< the end of what it wrote to the standard error stream
};

/// One run of a Python file as a child process in a process group of its own. Whatever way the run ends, and also when
/// this program does, nothing of the group is left behind. The child has its file's folder as its working directory.
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

/// The Python to use when none is set: the system's, or else the first on the path; empty when there is none.
QString defaultPython();

} // namespace terminal
