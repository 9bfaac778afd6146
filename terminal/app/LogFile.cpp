#include "terminal/app/LogFile.h"

#include "chartdata/RequestLog.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <log4cxx/fileappender.h>
#include <log4cxx/level.h>
#include <log4cxx/logger.h>
#include <log4cxx/logmanager.h>
#include <log4cxx/patternlayout.h>

#include <exception>
#include <memory>

#include <sys/stat.h>

namespace terminal {
namespace {

constexpr int kLongestEnd = 1000; ///< milliseconds that the end of the program waits for the log

QString logWords(const char *text) {
    return QCoreApplication::translate("LogFile", text);
}

/// Why a path cannot take a log; empty when it can.
QString refusal(const QString &path) {
    QDir().mkpath(QFileInfo(path).path());
    struct stat found {};
    if (::stat(QFile::encodeName(path).constData(), &found) == 0 && !S_ISREG(found.st_mode)) {
        return logWords(QT_TRANSLATE_NOOP("LogFile", "不是普通文件"));
    }
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Append) ? QString() : file.errorString();
}

QString openAppender(const QString &path) {
    try {
        const auto layout = std::make_shared<log4cxx::PatternLayout>(
            LOG4CXX_STR("%d{yyyy-MM-dd HH:mm:ss.SSS} [%t] %-5p %c %F:%L %m%n"));
        const log4cxx::LoggerPtr root = log4cxx::Logger::getRootLogger();
        root->addAppender(std::make_shared<log4cxx::FileAppender>(layout, path.toStdString(), false));
        root->setLevel(log4cxx::Level::getInfo());
        return {};
    } catch (const std::exception &error) {
        return QString::fromLocal8Bit(error.what());
    }
}

void switchOff() {
    try {
        // Set up all the same: the library would else look for a configuration in the current folder.
        log4cxx::Logger::getRootLogger()->setLevel(log4cxx::Level::getOff());
    } catch (const std::exception &) { // nothing is written either way
        return;
    }
}

} // namespace

QString openLogFile(const QString &path) {
    QString reason = refusal(path);
    if (reason.isEmpty()) {
        reason = openAppender(path);
    }
    if (reason.isEmpty()) {
        return {};
    }
    switchOff();
    return logWords(QT_TRANSLATE_NOOP("LogFile", "日志文件 %1 无法写入（%2），本次运行不记日志"))
        .arg(path, reason);
}

void closeLogFile() {
    if (!TC::flushLog(kLongestEnd)) {
        return;
    }
    try {
        log4cxx::LogManager::shutdown();
    } catch (const std::exception &) { // what was left to write is lost with the program
        return;
    }
}

} // namespace terminal
