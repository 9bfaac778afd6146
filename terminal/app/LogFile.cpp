#include "terminal/app/LogFile.h"

#include <QDir>
#include <QFileInfo>

#include <log4cxx/fileappender.h>
#include <log4cxx/level.h>
#include <log4cxx/logger.h>
#include <log4cxx/logmanager.h>
#include <log4cxx/patternlayout.h>

#include <memory>

namespace terminal {

void openLogFile(const QString &path) {
    // Set up here first: the library would else look for a configuration in the current folder.
    const log4cxx::LoggerPtr root = log4cxx::Logger::getRootLogger();
    const QFileInfo file(path);
    QDir().mkpath(file.path());
    if (!QFileInfo(file.path()).isWritable() || (file.exists() && !file.isWritable())) {
        root->setLevel(log4cxx::Level::getOff());
        return;
    }
    const auto layout = std::make_shared<log4cxx::PatternLayout>(
        LOG4CXX_STR("%d{yyyy-MM-dd HH:mm:ss.SSS} [%t] %-5p %c %F:%L %m%n"));
    root->addAppender(std::make_shared<log4cxx::FileAppender>(layout, path.toStdString(), false));
    root->setLevel(log4cxx::Level::getInfo());
}

void closeLogFile() {
    log4cxx::LogManager::shutdown();
}

} // namespace terminal
