// Logs that cannot be written: none of them reaches who logs.

#include "chartdata/RequestLog.h"

#include "chartdata/LogThread.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <boost/format.hpp>
#include <log4cxx/fileappender.h>
#include <log4cxx/logger.h>
#include <log4cxx/patternlayout.h>

#include <atomic>
#include <future>
#include <memory>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace TC;

namespace {

constexpr int kLongEnough = 30000; // milliseconds

/// A file log of a host while it lives.
class FileLog {
public:
    explicit FileLog(const std::string &path) {
        const auto layout = std::make_shared<log4cxx::PatternLayout>(LOG4CXX_STR("%m%n"));
        mAppender = std::make_shared<log4cxx::FileAppender>(layout, path, true);
        const log4cxx::LoggerPtr logger = log4cxx::Logger::getLogger("KVStdFile");
        logger->setLevel(log4cxx::Level::getInfo());
        logger->setAdditivity(false);
        logger->addAppender(mAppender);
    }
    ~FileLog() {
        flushLog(kLongEnough);
        log4cxx::Logger::getLogger("KVStdFile")->removeAppender(mAppender);
    }
    FileLog(const FileLog &) = delete;
    FileLog &operator=(const FileLog &) = delete;

private:
    log4cxx::AppenderPtr mAppender;
};

void logText(const std::string &text) {
    logTraffic(nullptr, "f", "s", boost::format("%1%") % text);
}

} // namespace

TEST(RequestLog, ALineIsInTheFileWhenTheCallReturns) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("host.log");
    const FileLog log(path.toStdString());
    logText("one");
    flushLog(kLongEnough);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "[0] [f] one\n");
}

TEST(RequestLog, ALineIsHeardAsSoonAsAnyAppenderMayBeTold) {
    const log4cxx::LoggerPtr logger = log4cxx::Logger::getLogger("KVStdFile");
    logger->setLevel(log4cxx::Level::getInfo());
    logText("nobody hears it");
    ASSERT_TRUE(flushLog(kLongEnough));
    ASSERT_FALSE(isTrafficHeard());
    const QTemporaryDir folder;
    const auto layout = std::make_shared<log4cxx::PatternLayout>(LOG4CXX_STR("%m%n"));
    for (const log4cxx::LoggerPtr &to : {logger, log4cxx::Logger::getRootLogger()}) {
        const QString path = folder.filePath("any.log");
        const auto appender = std::make_shared<log4cxx::FileAppender>(layout, path.toStdString(), false);
        logger->setAdditivity(true);
        to->addAppender(appender);
        EXPECT_TRUE(isTrafficHeard());
        logText("one");
        ASSERT_TRUE(flushLog(kLongEnough));
        logText("two");
        ASSERT_TRUE(flushLog(kLongEnough));
        logger->setLevel(log4cxx::Level::getWarn());
        EXPECT_FALSE(isTrafficHeard());
        logger->setLevel(log4cxx::Level::getInfo());
        EXPECT_TRUE(isTrafficHeard());
        to->removeAppender(appender);
        logText("three");
        ASSERT_TRUE(flushLog(kLongEnough));
        EXPECT_FALSE(isTrafficHeard());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), "[0] [f] one\n[0] [f] two\n");
    }
}

TEST(RequestLog, AFullDiskLosesLinesThatAreCounted) {
    const FileLog log("/dev/full");
    const qint64 before = lostLogLines();
    for (int i = 0; i < 3; ++i) {
        EXPECT_NO_THROW(logText("into the void"));
    }
    ASSERT_TRUE(flushLog(kLongEnough));
    EXPECT_EQ(lostLogLines() - before, 3);
}

TEST(RequestLog, APipeThatNobodyReadsHoldsNobodyUp) {
    const QTemporaryDir folder;
    const std::string path = folder.filePath("pipe").toStdString();
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const int reader = open(path.c_str(), O_RDWR | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    const qint64 before = lostLogLines();
    {
        const FileLog log(path);
        QElapsedTimer time;
        time.start();
        for (int i = 0; i < 1200; ++i) {
            logText(std::string(1000, 'x')); // a pipe holds 64 of them, the queue 1000
        }
        EXPECT_LT(time.elapsed(), 20000);
        EXPECT_FALSE(flushLog(0));
        EXPECT_GT(lostLogLines(), before);
        std::string sink(65536, ' ');
        while (!flushLog(1)) {
            EXPECT_NE(read(reader, sink.data(), sink.size()), 0);
        }
    }
    close(reader);
}

TEST(RequestLog, APipeWhoseReaderHasGoneEndsNothing) {
    const QTemporaryDir folder;
    const std::string path = folder.filePath("pipe").toStdString();
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const int reader = open(path.c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    const FileLog log(path);
    close(reader);
    const qint64 before = lostLogLines();
    logText("to nobody");
    ASSERT_TRUE(flushLog(kLongEnough));
    EXPECT_EQ(lostLogLines() - before, 1);
}

TEST(LogThread, LinesAreWrittenInOrderFromAnyThread) {
    auto *const thread = new LogThread; // as it is meant to be
    std::atomic<int> written{0};
    std::vector<std::thread> writers;
    for (int i = 0; i < 4; ++i) {
        writers.emplace_back([&] {
            for (int line = 0; line < 200; ++line) {
                thread->write([&] { ++written; });
            }
        });
    }
    for (std::thread &writer : writers) {
        writer.join();
    }
    EXPECT_TRUE(thread->flush(kLongEnough));
    EXPECT_EQ(written, 800);
    EXPECT_EQ(thread->lost(), 0);
}

TEST(LogThread, AStalledLogHoldsUpOneCallerOnceAndGoesOnAfterwards) {
    auto *const thread = new LogThread;
    std::promise<void> release;
    std::atomic<int> written{0};
    thread->write([waits = release.get_future().share()] { waits.wait(); });
    for (int i = 1; i < LogThread::kMostWaiting + 5; ++i) {
        thread->write([&] { ++written; });
    }
    EXPECT_EQ(thread->lost(), 5);
    release.set_value();
    ASSERT_TRUE(thread->flush(kLongEnough));
    EXPECT_EQ(written, LogThread::kMostWaiting - 1);
    thread->write([&] { ++written; });
    ASSERT_TRUE(thread->flush(kLongEnough));
    EXPECT_EQ(written, LogThread::kMostWaiting);
}

TEST(LogThread, ALineThatLogsItselfDoesNotWaitForItself) {
    auto *const thread = new LogThread;
    bool isWritten = false;
    thread->write([&] { thread->write([&] { isWritten = true; }); });
    ASSERT_TRUE(thread->flush(kLongEnough));
    EXPECT_TRUE(isWritten);
}
