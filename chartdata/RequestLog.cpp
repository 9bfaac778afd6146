#include "chartdata/RequestLog.h"

#include "chartdata/AppenderWatch.h"
#include "chartdata/LogThread.h"

#include <boost/format.hpp>
#include <log4cxx/helpers/transcoder.h>
#include <log4cxx/logger.h>
#include <log4cxx/spi/loggingevent.h>

#include <atomic>
#include <memory>
#include <string>

namespace TC {
namespace {

/// Never destroyed: its thread may stand in the log when the program ends.
LogThread &logThread() {
    static LogThread *const thread = new LogThread;
    return *thread;
}

/// The logger, and who hears it.
struct Log {
    log4cxx::LoggerPtr logger = log4cxx::Logger::getLogger("KVStdFile");
    AppenderWatch watch;
};

/// The log once the thread has asked for it: to ask for it sets it up, which may read files.
std::atomic<const Log *> readyLog{nullptr};

/// Never destroyed either.
Log &openLog() {
    static Log *const log = new Log;
    log->logger->isInfoEnabled();
    readyLog = log;
    return *log;
}

} // namespace

bool isTrafficHeard() noexcept {
    try {
        const Log *const log = readyLog;
        return !log || (log->watch.mayBeHeard() && log->logger->isInfoEnabled());
    } catch (...) {
        return true; // what becomes of a line is found out on the thread
    }
}

void logTraffic(const void *object, const char *function, const char *file,
                const boost::format &text) noexcept {
    try {
        if (!isTrafficHeard()) {
            return;
        }
        const boost::format prefix =
            boost::format("[%1%] [%2%] ") % reinterpret_cast<long long>(object) % function;
        const std::string line = prefix.str() + text.str();
        LOG4CXX_DECODE_CHAR(decoded, line);
        // Made here: it notes time and thread.
        const auto event = std::make_shared<log4cxx::spi::LoggingEvent>(
            LOG4CXX_STR("KVStdFile"), log4cxx::Level::getInfo(), decoded,
            log4cxx::spi::LocationInfo(file, file, function, 0));
        logThread().write([event] {
            Log &log = openLog();
            log.watch.look(log.logger);
            if (log.logger->isInfoEnabled()) {
                log4cxx::helpers::Pool pool;
                log.logger->callAppenders(event, pool);
            }
        });
    } catch (...) {
        logThread().countLost();
    }
}

qint64 lostLogLines() noexcept {
    return logThread().lost();
}

bool flushLog(int milliseconds) noexcept {
    return logThread().flush(milliseconds);
}

} // namespace TC
