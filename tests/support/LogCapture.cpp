#include "tests/support/LogCapture.h"

#include "chartdata/RequestLog.h"

#include <log4cxx/appenderskeleton.h>
#include <log4cxx/logger.h>
#include <log4cxx/spi/loggingevent.h>

#include <mutex>

// The macros of the log want its own names, and put some into the enclosing namespace.
using namespace log4cxx;

class CapturingAppender : public AppenderSkeleton {
public:
    DECLARE_LOG4CXX_OBJECT(CapturingAppender)
    BEGIN_LOG4CXX_CAST_MAP()
    LOG4CXX_CAST_ENTRY(CapturingAppender)
    LOG4CXX_CAST_ENTRY_CHAIN(AppenderSkeleton)
    END_LOG4CXX_CAST_MAP()

    void append(const spi::LoggingEventPtr &event, helpers::Pool &) override {
        std::lock_guard<std::mutex> hold(mGuard);
        mLines.append(QString::fromStdString(event->getMessage()));
        mSource = QString::fromLatin1(event->getLocationInformation().getFileName());
        mLevel = event->getLevel()->toInt();
    }
    void close() override {}
    bool requiresLayout() const override { return false; }

    mutable std::mutex mGuard;
    QStringList mLines;
    QString mSource;
    int mLevel = 0;
};

IMPLEMENT_LOG4CXX_OBJECT(CapturingAppender)

namespace tests {
namespace {

LoggerPtr chartLog() {
    return Logger::getLogger("KVStdFile");
}

void waitForLines() {
    constexpr int kLong = 30000; // milliseconds
    TC::flushLog(kLong);
}

} // namespace

struct LogCapture::Private {
    std::shared_ptr<CapturingAppender> appender = std::make_shared<CapturingAppender>();
};

LogCapture::LogCapture() : mCapture(std::make_unique<Private>()) {
    waitForLines(); // those of what was logged before it
    chartLog()->setLevel(Level::getInfo());
    chartLog()->setAdditivity(false);
    chartLog()->addAppender(mCapture->appender);
}

LogCapture::~LogCapture() {
    waitForLines();
    chartLog()->removeAppender(mCapture->appender);
}

QStringList LogCapture::lines() const {
    waitForLines();
    std::lock_guard<std::mutex> hold(mCapture->appender->mGuard);
    return mCapture->appender->mLines;
}

QStringList LogCapture::with(const QString &text) const {
    return lines().filter(text);
}

QString LogCapture::lastSource() const {
    waitForLines();
    std::lock_guard<std::mutex> hold(mCapture->appender->mGuard);
    return mCapture->appender->mSource;
}

int LogCapture::lastLevel() const {
    waitForLines();
    std::lock_guard<std::mutex> hold(mCapture->appender->mGuard);
    return mCapture->appender->mLevel;
}

void LogCapture::clear() {
    waitForLines();
    std::lock_guard<std::mutex> hold(mCapture->appender->mGuard);
    mCapture->appender->mLines.clear();
}

} // namespace tests
