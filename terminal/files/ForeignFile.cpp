#include "terminal/files/ForeignFile.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QProcessEnvironment>

namespace terminal {
namespace {

constexpr int kPatience =
    60000; ///< milliseconds, for a machine that is busy; processor time has a limit of its own
constexpr int kMostText = 256 * 1000 * 1000; ///< bytes
constexpr int kNotConfined = 3; ///< exit status

QString programPath() {
    return QCoreApplication::applicationDirPath() + QStringLiteral("/timeshare-reader");
}

/// Feeds a started process and takes its text until it ends. False when it has to be ended.
bool exchange(QProcess &process, const QByteArray &content, QByteArray &text) {
    QElapsedTimer since;
    since.start();
    process.write(content);
    process.closeWriteChannel();
    while (process.state() != QProcess::NotRunning) {
        const int left = kPatience - static_cast<int>(since.elapsed());
        if (left <= 0 || text.size() > kMostText) {
            return false;
        }
        process.waitForReadyRead(left);
        text += process.readAllStandardOutput();
    }
    text += process.readAllStandardOutput();
    return true;
}

} // namespace

ForeignText readForeign(const QString &parser, const QByteArray &content) {
    QProcess process;
    QProcessEnvironment nothing; // of ours does it need
    nothing.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    process.setProcessEnvironment(nothing);
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(programPath(), {parser});
    if (!process.waitForStarted()) {
        return {QStringLiteral("%1 cannot be started").arg(programPath()), {}};
    }
    ForeignText result;
    const bool ended = exchange(process, content, result.text);
    if (!ended) {
        process.kill();
        process.waitForFinished(-1);
    }
    const bool isWhole = ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    if (!isWhole) {
        result.text.clear();
        result.error =
            ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == kNotConfined
                ? QStringLiteral("this system cannot confine its reader")
                : QStringLiteral("its content cannot be read");
    }
    return result;
}

} // namespace terminal
