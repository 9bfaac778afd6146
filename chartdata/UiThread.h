#pragma once

#include <QCoreApplication>
#include <QThread>

namespace TC {

/// Whether the caller is on the user-interface thread; nobody is where there is no application.
inline bool isUserInterfaceThread() {
    const QCoreApplication *application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread();
}

} // namespace TC
