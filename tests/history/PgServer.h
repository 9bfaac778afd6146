#pragma once

#include "terminal/history/PgConnection.h"
#include "tests/feed/Eventually.h"
#include "tests/feed/ServerProcess.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tests {

/// A PostgreSQL server on a free loopback port, as a user that it takes. Started again it has the same port and what it kept.
class PgServer {
public:
    /// Of those that belong to the server; empty where it is not installed.
    static QString program(const char *name) {
        const QStringList versions =
            QDir(QStringLiteral("/usr/lib/postgresql")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        return versions.isEmpty() ? QString()
                                  : QStandardPaths::findExecutable(
                                        QString::fromLatin1(name),
                                        {QStringLiteral("/usr/lib/postgresql/%1/bin").arg(versions.last())});
    }
    static bool isInstalled() {
        return !program("postgres").isEmpty() && (getuid() != 0 || getpwnam("postgres") != nullptr);
    }

    /// Makes a new cluster and starts it; `options` are the server's own.
    bool start(const QStringList &options = {}) {
        mOptions = options;
        if (!QFile::exists(pathOf("data"))) {
            giveToServer(mFolder.path());
            QFile secret(pathOf("secret"));
            if (!secret.open(QIODevice::WriteOnly) || secret.write("owner-secret") < 0) {
                return false;
            }
            secret.close();
            giveToServer(pathOf("secret"));
            ServerProcess making;
            if (!launch(making, program("initdb"),
                        {"-D", pathOf("data"), "-U", "owner", "-A", "scram-sha-256", "--pwfile",
                         pathOf("secret"), "-N", "-E", "UTF8", "--locale=C.UTF-8"}) ||
                making.wait() != 0) {
                return false;
            }
        }
        return restart();
    }
    /// Makes a copy of a running server and starts it as one that follows it, by a role of that one.
    bool follow(const PgServer &primary, const char *role, const char *password) {
        giveToServer(mFolder.path());
        ServerProcess copying;
        return launch(copying, program("pg_basebackup"),
                      {"-R", "-D", pathOf("data"), "-h", "127.0.0.1", "-p", QString::number(primary.mPort),
                       "-U", QString::fromLatin1(role), "-c", "fast", "--no-sync"},
                      {QStringLiteral("PGPASSWORD=%1").arg(QLatin1String(password))}) &&
               copying.wait() == 0 && restart();
    }
    bool restart() {
        mPort = mPort == 0 ? freePort() : mPort;
        QStringList words{"-D", pathOf("data"), "-p", QString::number(mPort), "-h", "127.0.0.1", "-k", "", "-c",
                          "fsync=off", "-c", "log_statement=all", "-c", "log_connections=on",
                          // in its folder, which goes with the test however the server ends
                          "-c", "dynamic_shared_memory_type=mmap"};
        for (const QString &option : mOptions) {
            words << "-c" << option;
        }
        launch(mProcess, program("postgres"), words);
        return eventually([this] { return admin("postgres").run("SELECT 1").isNone(); });
    }
    /// Ends it at once, with all connections, as when its machine fails.
    void kill() { mProcess.end(SIGQUIT); }
    /// Stops all of its processes; they go on with thaw().
    void freeze() { send(SIGSTOP); }
    void thaw() { send(SIGCONT); }

    /// A connection of the one that owns all, to a database.
    class Admin {
    public:
        Admin(int port, const char *database)
            : mConnection(
                  {{{"127.0.0.1", port}}, {{"user", "owner"}, {"dbname", database}}, "owner-secret", {}, {}},
                  "", std::chrono::seconds(30)) {}
        terminal::HistoryFailure run(const char *statement, const terminal::PgConnection::Values &values = {}) {
            bool isNew = false;
            const terminal::HistoryFailure failure = mConnection.connect(isNew);
            return failure.isNone() ? mConnection.run(statement, values) : failure;
        }
        /// The first value of an answer, which is a text; null when there is none.
        QByteArray ask(const char *statement) {
            bool isNew = false;
            terminal::PgRows rows;
            const bool isGood =
                mConnection.connect(isNew).isNone() && mConnection.ask(statement, {}, rows).isNone();
            return isGood && rows.count() > 0 ? rows.text(0, 0) : QByteArray();
        }

    private:
        terminal::PgConnection mConnection;
    };
    Admin admin(const char *database = "history") const { return Admin(mPort, database); }

    /// An address with the loopback and this port, as a user writes it.
    QString url(const char *user, const char *rest = "") const {
        return QStringLiteral("postgres://%1@127.0.0.1:%2/history%3")
            .arg(QString::fromLatin1(user))
            .arg(mPort)
            .arg(QString::fromLatin1(rest));
    }
    int port() const { return mPort; }
    QString pathOf(const char *name) const { return mFolder.filePath(QString::fromLatin1(name)); }
    QByteArray log() const {
        QFile file(pathOf("log"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static void giveToServer(const QString &path) {
        const passwd *user = getuid() == 0 ? getpwnam("postgres") : nullptr;
        if (user && chown(QFile::encodeName(path).constData(), user->pw_uid, user->pw_gid) != 0) {
            ADD_FAILURE() << qPrintable(path) << " cannot be given to the server";
        }
    }

private:
    bool launch(ServerProcess &process, const QString &path, const QStringList &arguments,
                const QStringList &environment = {}) const {
        if (getuid() != 0) {
            return process.start(path, arguments, pathOf("log"), environment);
        }
        return process.start(QStandardPaths::findExecutable(QStringLiteral("setpriv")),
                             QStringList{"--reuid=postgres", "--regid=postgres", "--init-groups", "--pdeathsig",
                                         "SIGQUIT", path} +
                                 arguments,
                             pathOf("log"), environment);
    }
    void send(int signal) const {
        const QString pid = QString::number(mProcess.pid());
        QFile children(QStringLiteral("/proc/%1/task/%1/children").arg(pid));
        mProcess.send(signal);
        if (children.open(QIODevice::ReadOnly)) {
            for (const QByteArray &child : children.readAll().simplified().split(' ')) {
                if (child.toInt() > 0) {
                    ::kill(child.toInt(), signal);
                }
            }
        }
    }
    static int freePort() {
        const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        bind(socket, reinterpret_cast<sockaddr *>(&address), size);
        getsockname(socket, reinterpret_cast<sockaddr *>(&address), &size);
        ::close(socket);
        return ntohs(address.sin_port);
    }

    QTemporaryDir mFolder;
    QStringList mOptions;
    ServerProcess mProcess;
    int mPort = 0;
};

} // namespace tests

/// Ends a test that needs the server where there is none.
#define TIMESHARE_NEEDS_POSTGRES()                                                                             \
    if (!tests::PgServer::isInstalled()) {                                                                     \
        GTEST_SKIP() << "postgresql is not installed";                                                         \
    }
