#include "chartdata/AppenderWatch.h"

#include <log4cxx/logger.h>
#include <log4cxx/logmanager.h>
#include <log4cxx/spi/hierarchyeventlistener.h>
#include <log4cxx/spi/loggerrepository.h>

namespace TC {
namespace {

using log4cxx::helpers::Class;

class AddedAppenders : public log4cxx::spi::HierarchyEventListener {
public:
    explicit AddedAppenders(AppenderWatch &watch) : mWatch(watch) {}

    void addAppenderEvent(const log4cxx::Logger *, const log4cxx::Appender *) override { mWatch.countAdded(); }
    void removeAppenderEvent(const log4cxx::Logger *, const log4cxx::Appender *) override {}

    // Nobody makes one by its name.
    const Class &getClass() const override { return getStaticClass(); }
    bool instanceof (const Class &) const override { return false; }
    const void *cast(const Class &) const override { return nullptr; }

private:
    AppenderWatch &mWatch;
};

} // namespace

AppenderWatch::AppenderWatch() {
    log4cxx::LogManager::getLoggerRepository()->addHierarchyEventListener(
        std::make_shared<AddedAppenders>(*this));
}

void AppenderWatch::look(const LoggerPtr &logger) {
    const int added = mAdded;
    for (LoggerPtr at = logger; at; at = at->getParent()) {
        if (!at->getAllAppenders().empty()) {
            return;
        }
    }
    mLookedAt = added;
}

} // namespace TC
