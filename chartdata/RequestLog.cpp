#include "chartdata/RequestLog.h"

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

/// The logger once the thread has asked for it: to ask for it sets the log up, which may read files.
std::atomic<const log4cxx::LoggerPtr *> readyLogger{nullptr};

const log4cxx::LoggerPtr &logger() {
    static const auto *const made = new log4cxx::LoggerPtr(log4cxx::Logger::getLogger("KVStdFile"));
    (*made)->isInfoEnabled();
    readyLogger = made;
    return *made;
}

} // namespace

void logTraffic(const void *object, const char *function, const char *file,
                const boost::format &text) noexcept {
    try {
        const log4cxx::LoggerPtr *const ready = readyLogger;
        if (ready && !(*ready)->isInfoEnabled()) {
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
            if (logger()->isInfoEnabled()) {
                log4cxx::helpers::Pool pool;
                logger()->callAppenders(event, pool);
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
