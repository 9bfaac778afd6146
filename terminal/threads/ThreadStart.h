#pragma once

#include <QCoreApplication>
#include <QString>
#include <QThread>

namespace terminal {

/// Starts a thread; false when the system has none left.
inline bool startThread(QThread &thread) {
    thread.start();
    return thread.isRunning() || thread.isFinished();
}

/// What is told when no thread could be started.
inline QString noThreadText() {
    return QCoreApplication::translate("ThreadStart", "系统无法启动新的线程，请关闭其他程序后重试");
}

} // namespace terminal
