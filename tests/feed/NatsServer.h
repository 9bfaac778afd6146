#pragma once

#include "tests/feed/Eventually.h"
#include "tests/feed/ServerProcess.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUrl>

namespace tests {

/// A NATS server with streams on a free loopback port. Started again it has the same port and what it kept.
class NatsServer {
public:
    static QString program() {
        return QStandardPaths::findExecutable(
            QStringLiteral("nats-server"),
            {QStringLiteral("/usr/sbin"), QStringLiteral("/usr/bin"), QStringLiteral("/usr/local/bin")});
    }

    /// `options` are the server's own.
    bool start(const QStringList &options = {}) {
        for (const QString &old : QDir(mFolder.path()).entryList({QStringLiteral("*.ports")})) {
            QFile::remove(mFolder.filePath(old));
        }
        const QString store = mFolder.filePath(QStringLiteral("js"));
        mProcess.start(program(),
                       QStringList{"-a", "127.0.0.1", "-p", mPort == 0 ? "-1" : QString::number(mPort), "-js",
                                   "-sd", store, "--ports_file_dir", mFolder.path(), "-m", "-1"} +
                           options,
                       mFolder.filePath(QStringLiteral("log")));
        return eventually([this] { return readPorts(); });
    }
    void kill() { mProcess.end(SIGKILL); }
    void freeze() { mProcess.send(SIGSTOP); }
    void thaw() { mProcess.send(SIGCONT); }

    QString url() const { return QStringLiteral("nats://127.0.0.1:%1").arg(mPort); }
    int monitorPort() const { return mMonitorPort; }
    QString pathOf(const char *name) const { return mFolder.filePath(QString::fromLatin1(name)); }
    QByteArray log() const {
        QFile file(pathOf("log"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    bool readPorts() {
        QFile file(mFolder.filePath(QStringLiteral("nats-server_%1.ports").arg(mProcess.pid())));
        if (!file.open(QIODevice::ReadOnly)) {
            return false;
        }
        const QJsonObject ports = QJsonDocument::fromJson(file.readAll()).object();
        mPort = QUrl(ports["nats"].toArray()[0].toString()).port(0);
        mMonitorPort = QUrl(ports["monitoring"].toArray()[0].toString()).port(0);
        return mPort != 0;
    }

    QTemporaryDir mFolder;
    ServerProcess mProcess;
    int mPort = 0;
    int mMonitorPort = 0;
};

} // namespace tests

/// Ends a test that needs the server where there is none.
#define TIMESHARE_NEEDS_NATS()                                                                                 \
    if (tests::NatsServer::program().isEmpty()) {                                                              \
        GTEST_SKIP() << "nats-server is not installed";                                                        \
    }
