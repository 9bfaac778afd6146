#include "terminal/formula/ScriptModelProcess.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <string>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace terminal {
namespace {

constexpr int kKeptErrors = 16384; ///< bytes of the standard error stream
constexpr int kPiece = 65536;
constexpr int kLook = 20; ///< milliseconds between looks at a child that says nothing
constexpr int kLowPriority = 10; ///< models leave the processor to the charts

/// A file descriptor that is closed with it.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : mNumber(number) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    int number() const { return mNumber; }
    bool isOpen() const { return mNumber >= 0; }
    void set(int number) {
        close();
        mNumber = number;
    }
    void close() {
        if (mNumber >= 0) {
            ::close(mNumber);
        }
        mNumber = -1;
    }

private:
    int mNumber;
};

/// A stream between this program and the child.
struct Channel {
    Descriptor ours;
    Descriptor theirs;

    /// A socket: writing to a child that has gone is an error and no signal.
    bool open() {
        int ends[2];
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
            return false;
        }
        ours.set(ends[0]);
        theirs.set(ends[1]);
        return ::fcntl(ours.number(), F_SETFL, O_NONBLOCK) == 0;
    }
};

/// What the child needs, made before the fork: after it only plain system calls are allowed.
struct Launch {
    std::vector<std::string> arguments;
    std::vector<std::string> environment;
    std::vector<char *> argv;
    std::vector<char *> envp;
    std::string folder;
    rlim_t memory = 0;
    rlim_t seconds = 0;
    pid_t parent = 0;

    Launch(const ScriptModelCommand &command, const ScriptModelLimits &limits) {
        const QByteArray file = QFile::encodeName(command.file);
        arguments = {QFile::encodeName(command.interpreter).toStdString(), "-B", "-u", file.toStdString()};
        for (char **entry = environ; *entry; ++entry) {
            environment.emplace_back(*entry);
        }
        environment.emplace_back("PYTHONUTF8=1");
        for (std::string &argument : arguments) {
            argv.push_back(argument.data());
        }
        for (std::string &entry : environment) {
            envp.push_back(entry.data());
        }
        argv.push_back(nullptr);
        envp.push_back(nullptr);
        folder = QFile::encodeName(QFileInfo(command.file).absolutePath()).toStdString();
        memory = static_cast<rlim_t>(limits.memoryBytes);
        seconds = static_cast<rlim_t>(limits.milliseconds) / 1000 + 2;
        parent = ::getpid();
    }
};

void limitTo(int resource, rlim_t most) {
    const rlimit limit{most, most};
    ::setrlimit(static_cast<__rlimit_resource>(resource), &limit);
}

/// In the child. Answers the error number when the program could not be started.
int become(const Launch &launch, const Channel &input, const Channel &output, const Channel &errors,
           int report) {
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != launch.parent) {
        ::_exit(127); // this program went before the line above
    }
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::signal(SIGPIPE, SIG_DFL);
    ::dup2(input.theirs.number(), STDIN_FILENO);
    ::dup2(output.theirs.number(), STDOUT_FILENO);
    ::dup2(errors.theirs.number(), STDERR_FILENO);
    ::dup2(report, STDERR_FILENO + 1);
    ::fcntl(STDERR_FILENO + 1, F_SETFD, FD_CLOEXEC);
    ::close_range(STDERR_FILENO + 2, ~0U, 0);
    limitTo(RLIMIT_CORE, 0);
    limitTo(RLIMIT_AS, launch.memory);
    limitTo(RLIMIT_CPU, launch.seconds);
    ::setpriority(PRIO_PROCESS, 0, kLowPriority);
    if (::chdir(launch.folder.c_str()) != 0) {
        return errno;
    }
    ::execve(launch.argv[0], launch.argv.data(), launch.envp.data());
    return errno;
}

/// Moves what can be read; false at the end of the stream.
bool readSome(int number, QByteArray &piece) {
    piece.resize(kPiece);
    const ssize_t count = ::read(number, piece.data(), kPiece);
    piece.resize(count > 0 ? static_cast<int>(count) : 0);
    return count > 0 || (count < 0 && (errno == EAGAIN || errno == EINTR));
}

/// A child at work.
class Child {
public:
    ~Child() { end(); }

    /// Starts the program; answers 0 or the error number.
    int start(const ScriptModelCommand &command, const ScriptModelLimits &limits) {
        int report[2];
        if (!mInput.open() || !mOutput.open() || !mErrors.open() || ::pipe2(report, O_CLOEXEC) != 0) {
            return errno;
        }
        const Descriptor reading(report[0]);
        Descriptor writing(report[1]);
        const Launch launch(command, limits);
        mId = ::fork();
        if (mId == 0) {
            const int failed = become(launch, mInput, mOutput, mErrors, writing.number());
            const ssize_t told = ::write(STDERR_FILENO + 1, &failed, sizeof failed);
            ::_exit(told > 0 ? 127 : 126);
        }
        if (mId < 0) {
            return errno;
        }
        ::setpgid(mId, mId); // whoever of the two is first
        writing.close();
        mInput.theirs.close();
        mOutput.theirs.close();
        mErrors.theirs.close();
        int failed = 0;
        ssize_t told = 0;
        while ((told = ::read(reading.number(), &failed, sizeof failed)) < 0 && errno == EINTR) {
        }
        return told == static_cast<ssize_t>(sizeof failed) ? failed : 0;
    }

    /// Ends it and what it has started, and answers its status as waitpid() gives it.
    int end() {
        if (mId <= 0) {
            return mStatus;
        }
        ::kill(-mId, SIGKILL);
        ::kill(mId, SIGKILL);
        while (::waitpid(mId, &mStatus, 0) < 0 && errno == EINTR) {
        }
        mId = 0;
        return mStatus;
    }

    /// Whether it has come to its end by itself; its group can still be ended.
    bool isOver() const {
        siginfo_t info{};
        return ::waitid(P_PID, static_cast<id_t>(mId), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
               info.si_pid == mId;
    }

    void write(const QByteArray &input) {
        if (!mInput.ours.isOpen()) {
            return;
        }
        const ssize_t count = ::send(mInput.ours.number(), input.constData() + mWritten,
                                     static_cast<size_t>(input.size() - mWritten), MSG_NOSIGNAL);
        if (count > 0) {
            mWritten += static_cast<int>(count);
        }
        // A model that reads no more than it wants is none of our business.
        if (mWritten == input.size() || (count < 0 && errno != EAGAIN && errno != EINTR)) {
            mInput.ours.close();
        }
    }

    Channel mInput;
    Channel mOutput;
    Channel mErrors;

private:
    pid_t mId = 0;
    int mStatus = 0;
    int mWritten = 0;
};

/// Waits until the child, or who wants it ended, has something to say.
void waitForNews(const Child &child, int wake, int milliseconds) {
    pollfd news[] = {{child.mInput.ours.number(), POLLOUT, 0},
                     {child.mOutput.ours.number(), POLLIN, 0},
                     {child.mErrors.ours.number(), POLLIN, 0},
                     {wake, POLLIN, 0}};
    ::poll(news, std::size(news), milliseconds);
}

/// Reads what stands in the standard error stream, whose end counts.
void readErrors(Child &child, QByteArray &kept) {
    constexpr int kMostPieces = 16; // more than a socket holds
    for (int i = 0; i < kMostPieces && child.mErrors.ours.isOpen(); ++i) {
        QByteArray piece;
        if (!readSome(child.mErrors.ours.number(), piece)) {
            child.mErrors.ours.close();
        }
        if (piece.isEmpty()) {
            break;
        }
        kept = (kept + piece).right(kKeptErrors);
    }
}

} // namespace

ScriptModelProcess::ScriptModelProcess() : mWake(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

ScriptModelProcess::~ScriptModelProcess() {
    ::close(mWake);
}

void ScriptModelProcess::stop() {
    mStopped = true;
    ::eventfd_write(mWake, 1);
}

ScriptModelExit ScriptModelProcess::run(const ScriptModelCommand &command, const ScriptModelLimits &limits,
                                        const OutputReader &onOutput) {
    ScriptModelExit exit;
    const auto ended = [&exit](ScriptModelExit::Way way) {
        exit.way = way;
        return exit;
    };
    if (mStopped) {
        return ended(ScriptModelExit::Stopped);
    }
    Child child;
    exit.status = child.start(command, limits);
    if (exit.status != 0) {
        return ended(ScriptModelExit::NotStarted);
    }
    QElapsedTimer time;
    time.start();
    qint64 received = 0;
    QByteArray piece;
    bool over = false;
    while (true) {
        // What it wrote before its end is there to be read once its end is seen.
        over = over || child.isOver();
        child.write(command.input);
        readErrors(child, exit.errors);
        piece.clear();
        if (child.mOutput.ours.isOpen() && !readSome(child.mOutput.ours.number(), piece)) {
            child.mOutput.ours.close();
        }
        received += piece.size();
        if (mStopped) {
            return ended(ScriptModelExit::Stopped);
        }
        if (received > limits.outputBytes) {
            return ended(ScriptModelExit::TooMuchOutput);
        }
        if (!piece.isEmpty() && !onOutput(piece)) {
            return ended(ScriptModelExit::Refused);
        }
        if (time.elapsed() >= limits.milliseconds) {
            return ended(ScriptModelExit::TimedOut);
        }
        if (!piece.isEmpty()) {
            continue;
        }
        if (over) {
            break;
        }
        const qint64 left = limits.milliseconds - time.elapsed();
        waitForNews(child, mWake, static_cast<int>(std::clamp<qint64>(left, 0, kLook)));
    }
    const int status = child.end();
    exit.status = WIFEXITED(status) ? WEXITSTATUS(status) : WTERMSIG(status);
    return ended(WIFEXITED(status) ? ScriptModelExit::Finished : ScriptModelExit::Killed);
}

QString defaultPython() {
    const QString system = QStringLiteral("/usr/bin/python3");
    return QFileInfo(system).isExecutable() ? system
                                            : QStandardPaths::findExecutable(QStringLiteral("python3"));
}

} // namespace terminal
