#include "terminal/formula/ScriptModelProcess.h"

#include "terminal/supervisor/Protocol.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <iterator>
#include <optional>

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace terminal {
namespace {

constexpr int kKeptErrors = 16384; ///< bytes of the standard error stream
constexpr int kPiece = 65536;
constexpr int kLook = 20; ///< milliseconds between looks at a child that says nothing
constexpr int kLongestEnd = 5000; ///< milliseconds that the supervisor has to end all

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

QByteArray supervisorPath() {
    return QFile::encodeName(QCoreApplication::applicationDirPath() + QStringLiteral("/timeshare-supervisor"));
}

/// What the child needs, made before the fork: after it only plain system calls are allowed.
struct Launch {
    std::vector<std::string> arguments;
    std::vector<std::string> environment;
    std::vector<char *> argv;
    std::vector<char *> envp;
    std::string folder;

    Launch(const ScriptModelCommand &command, const ScriptModelLimits &limits) {
        constexpr int kSpareSeconds = 2; // of a processor, so that the clock on the wall ends it first
        arguments = {supervisorPath().toStdString(),
                     std::to_string(limits.memoryBytes),
                     std::to_string(limits.milliseconds / 1000 + kSpareSeconds),
                     std::to_string(limits.processes),
                     std::to_string(limits.openFiles),
                     std::to_string(limits.fileBytes),
                     QFile::encodeName(command.interpreter).toStdString(),
                     "-B",
                     "-u",
                     QFile::encodeName(command.file).toStdString()};
        environment = modelEnvironment(environ);
        for (std::string &argument : arguments) {
            argv.push_back(argument.data());
        }
        for (std::string &entry : environment) {
            envp.push_back(entry.data());
        }
        argv.push_back(nullptr);
        envp.push_back(nullptr);
        folder = QFile::encodeName(QFileInfo(command.file).absolutePath()).toStdString();
    }
};

/// In the child: the descriptors become 0, 1, 2 and so on, and no other stays open.
template <size_t Count> void keepOnly(std::array<int, Count> descriptors) {
    for (int &each : descriptors) {
        each = ::fcntl(each, F_DUPFD, static_cast<int>(Count)); // out of the way of those that come
    }
    for (size_t i = 0; i < Count; ++i) {
        ::dup2(descriptors[i], static_cast<int>(i));
    }
    ::close_range(static_cast<unsigned>(Count), ~0U, 0);
}

/// In the child. Answers the error number when the supervisor could not be started.
int become(const Launch &launch) {
    ::setpgid(0, 0);
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::signal(SIGPIPE, SIG_DFL);
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
        int lifeline[2];
        if (!mInput.open() || !mOutput.open() || !mErrors.open() || ::pipe2(report, O_CLOEXEC) != 0) {
            return errno;
        }
        mReport.set(report[0]);
        Descriptor writing(report[1]);
        if (::pipe2(lifeline, O_CLOEXEC) != 0) {
            return errno;
        }
        const Descriptor watched(lifeline[0]);
        mLifeline.set(lifeline[1]);
        const Launch launch(command, limits);
        mId = ::fork();
        if (mId == 0) {
            keepOnly(std::array<int, kLifelineDescriptor + 1>{mInput.theirs.number(), mOutput.theirs.number(),
                                                              mErrors.theirs.number(), writing.number(),
                                                              watched.number()});
            const int failed = become(launch);
            const ssize_t told = ::write(kReportDescriptor, &failed, sizeof failed);
            ::_exit(told > 0 ? 127 : 126);
        }
        if (mId < 0) {
            return errno;
        }
        writing.close();
        mInput.theirs.close();
        mOutput.theirs.close();
        mErrors.theirs.close();
        return readReport().value_or(ECHILD);
    }

    /// Ends it and what it has started, and answers its status as waitpid() gives it.
    int end() {
        if (mId <= 0) {
            return mStatus;
        }
        mLifeline.close();
        ::kill(mId, SIGCONT); // the model may have stopped its supervisor
        if (!waitForEnd()) {
            ::kill(mId, SIGKILL);
        }
        while (::waitpid(mId, &mStatus, 0) < 0 && errno == EINTR) {
        }
        mId = 0;
        return mStatus;
    }

    /// What the supervisor has told next; nothing when it has ended without.
    std::optional<int> readReport() {
        int number = 0;
        ssize_t count = 0;
        while ((count = ::read(mReport.number(), &number, sizeof number)) < 0 && errno == EINTR) {
        }
        return count == static_cast<ssize_t>(sizeof number) ? std::make_optional(number) : std::nullopt;
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
    /// False when it takes too long.
    bool waitForEnd() const {
        QElapsedTimer time;
        time.start();
        while (!isOver()) {
            if (time.elapsed() > kLongestEnd) {
                return false;
            }
            ::poll(nullptr, 0, 1);
        }
        return true;
    }

    Descriptor mReport;
    Descriptor mLifeline; ///< closed, also by the end of this program, it ends the tree
    pid_t mId = 0; ///< of the supervisor
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
    const int reason = child.readReport().value_or(eEndOfProgram);
    if (reason != eEndOfProgram) {
        return ended(reason == eEndTooManyProcesses ? ScriptModelExit::TooManyProcesses
                                                    : ScriptModelExit::TooMuchMemory);
    }
    exit.status = WIFEXITED(status) ? WEXITSTATUS(status) : WTERMSIG(status);
    return ended(WIFEXITED(status) ? ScriptModelExit::Finished : ScriptModelExit::Killed);
}

std::vector<std::string> modelEnvironment(const char *const *environment) {
    static const char *const kNames[] = {"PATH", "HOME",   "USER",  "LOGNAME",    "LANG",       "LANGUAGE",
                                         "TZ",   "TMPDIR", "TZDIR", "PYTHONPATH", "PYTHONHOME", "VIRTUAL_ENV"};
    std::vector<std::string> kept;
    for (; environment && *environment; ++environment) {
        const std::string entry(*environment);
        const std::string name = entry.substr(0, entry.find('='));
        const bool isListed = std::any_of(std::begin(kNames), std::end(kNames),
                                          [&name](const char *each) { return name == each; });
        if (isListed || name.compare(0, 3, "LC_") == 0) {
            kept.push_back(entry);
        }
    }
    kept.emplace_back("PYTHONUTF8=1");
    return kept;
}

QString defaultPython() {
    const QString system = QStringLiteral("/usr/bin/python3");
    return QFileInfo(system).isExecutable() ? system
                                            : QStandardPaths::findExecutable(QStringLiteral("python3"));
}

} // namespace terminal
