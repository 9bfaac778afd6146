#include "terminal/files/ForeignFile.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>

#include <array>
#include <cerrno>
#include <csignal>
#include <optional>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace terminal {
namespace {

constexpr int kEndPatience = 1000; ///< milliseconds after its last word
constexpr int kPatience =
    60000; ///< milliseconds, for a machine that is busy; processor time has a limit of its own
constexpr int kMostText = 256 * 1000 * 1000; ///< bytes
constexpr int kNotConfined = 3; ///< exit status

QString programPath() {
    return QCoreApplication::applicationDirPath() + QStringLiteral("/timeshare-reader");
}

/// The reader as a process, and the stream to and from it. It ends with this object.
class Reader {
public:
    ~Reader() { end(); }

    /// Answers 0 or the error number.
    int start(const QString &path, const QString &parser) {
        int ends[2];
        // A socket: writing to a reader that has gone is an error and no signal.
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
            return errno;
        }
        mStream = ends[0];
        const int theirs = ends[1];
        ::fcntl(mStream, F_SETFL, O_NONBLOCK);
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_adddup2(&actions, theirs, STDIN_FILENO);
        ::posix_spawn_file_actions_adddup2(&actions, theirs, STDOUT_FILENO);
        ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        QByteArray program = QFile::encodeName(path);
        QByteArray argument = parser.toUtf8();
        char language[] = "LC_ALL=C"; // all that it needs of an environment
        char *const arguments[] = {program.data(), argument.data(), nullptr};
        char *const environment[] = {language, nullptr};
        const int error = ::posix_spawn(&mId, program.constData(), &actions, nullptr, arguments, environment);
        ::posix_spawn_file_actions_destroy(&actions);
        ::close(theirs);
        mId = error == 0 ? mId : 0;
        return error;
    }

    /// Feeds it and takes its text until it says no more. False when it has to be ended.
    bool exchange(const QByteArray &content, QByteArray &text) {
        QElapsedTimer since;
        since.start();
        int written = 0;
        bool isFed = false;
        for (;;) {
            if (!isFed) {
                const ssize_t count = ::send(mStream, content.constData() + written,
                                             static_cast<size_t>(content.size() - written), MSG_NOSIGNAL);
                written += count > 0 ? static_cast<int>(count) : 0;
                isFed = written == content.size() || (count < 0 && errno != EAGAIN && errno != EINTR);
                if (isFed) {
                    ::shutdown(mStream, SHUT_WR);
                }
            }
            pollfd news{mStream, static_cast<short>(isFed ? POLLIN : POLLIN | POLLOUT), 0};
            const int left = kPatience - static_cast<int>(since.elapsed());
            if (left <= 0 || text.size() > kMostText || (::poll(&news, 1, left) < 0 && errno != EINTR)) {
                return false;
            }
            if ((news.revents & (POLLIN | POLLHUP | POLLERR)) != 0 && !take(text)) {
                return true;
            }
        }
    }

    /// Waits for its end, which is near when it says no more, and ends it when it is not; its exit status, or nothing when
    /// it has not ended by itself.
    std::optional<int> end() {
        if (mStream >= 0) {
            ::close(mStream);
            mStream = -1;
        }
        if (mId <= 0) {
            return std::nullopt;
        }
        int status = 0;
        pid_t ended = 0;
        for (int waited = 0; ended == 0 || (ended < 0 && errno == EINTR); ++waited) {
            if (waited == kEndPatience) {
                kill();
            }
            ended = ::waitpid(mId, &status, WNOHANG);
            if (ended == 0) {
                ::usleep(1000);
            }
        }
        mId = 0;
        return ended > 0 && WIFEXITED(status) ? std::make_optional(WEXITSTATUS(status)) : std::nullopt;
    }
    void kill() const { ::kill(mId, SIGKILL); }

private:
    /// False at the end of the text.
    bool take(QByteArray &text) const {
        std::array<char, 65536> piece{};
        const ssize_t count = ::read(mStream, piece.data(), piece.size());
        if (count > 0) {
            text.append(piece.data(), static_cast<int>(count));
        }
        return count > 0 || (count < 0 && (errno == EAGAIN || errno == EINTR));
    }

    pid_t mId = 0;
    int mStream = -1;
};

} // namespace

ForeignText readForeign(const QString &parser, const QByteArray &content, const QString &program) {
    Reader reader;
    const QString path = program.isEmpty() ? programPath() : program;
    const int error = reader.start(path, parser);
    if (error != 0) {
        return {QStringLiteral("%1 cannot be started: %2").arg(path, qt_error_string(error)), false, {}};
    }
    ForeignText result;
    if (!reader.exchange(content, result.text)) {
        reader.kill();
    }
    const std::optional<int> status = reader.end();
    if (status != 0) {
        result.text.clear();
        result.isFaultOfFile = status != kNotConfined;
        result.error = result.isFaultOfFile ? QStringLiteral("its content cannot be read")
                                            : QStringLiteral("this system cannot confine its reader");
    }
    return result;
}

} // namespace terminal
