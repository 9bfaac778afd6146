#include "chartdata/RequestLog.h"

#include <boost/format.hpp>
#include <log4cxx/logger.h>

namespace TC {

void logTraffic(const void *object, const char *function, const char *file, const boost::format &text) {
    const log4cxx::LoggerPtr logger = log4cxx::Logger::getLogger("KVStdFile");
    if (!logger->isInfoEnabled()) {
        return;
    }
    const boost::format prefix = boost::format("[%1%] [%2%] ") % reinterpret_cast<long long>(object) % function;
    logger->forcedLog(log4cxx::Level::getInfo(), prefix.str() + text.str(),
                      log4cxx::spi::LocationInfo(file, file, function, 0));
}

} // namespace TC
