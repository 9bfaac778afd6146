#include "terminal/files/FileClient.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <future>
#include <thread>

using TC::EFileType;

namespace {

/// What was handed over from whatever thread.
class Lines {
public:
    TC::CFileClient::LineHandler handler() {
        return [this](const QString &line) {
            std::lock_guard<std::mutex> hold(mLock);
            mLines.append(line);
            mThread = std::this_thread::get_id();
            return 2;
        };
    }
    QStringList all() {
        std::lock_guard<std::mutex> hold(mLock);
        return mLines;
    }
    std::thread::id thread() {
        std::lock_guard<std::mutex> hold(mLock);
        return mThread;
    }

private:
    std::mutex mLock;
    QStringList mLines;
    std::thread::id mThread;
};

class FileClientTest : public testing::Test {
protected:
    QString write(const QString &name, const QByteArray &content) {
        const QString path = mFolder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return path;
    }
    QTemporaryDir mFolder;
    terminal::FileClient mClient;
    QSignalSpy mEnds{&mClient, &TC::CFileClient::sigReadFinished};
};

} // namespace

TEST_F(FileClientTest, LinesComeInOrderOnAThreadOfItsOwnAndThenTheEnd) {
    Lines lines;
    int seq = -7;
    mClient.readFileByLine(seq, EFileType::CommaSeparated, write("a.csv", "a\nb\nc\n"), lines.handler());
    EXPECT_EQ(seq, 1);
    EXPECT_TRUE(mEnds.isEmpty());
    ASSERT_TRUE(mEnds.wait());
    EXPECT_EQ(mEnds.takeFirst(), (QVariantList{1, true, QString()}));
    EXPECT_EQ(lines.all(), (QStringList{"a", "b", "c"}));
    EXPECT_NE(lines.thread(), std::this_thread::get_id());
}

TEST_F(FileClientTest, ReadsWaitForEachOtherAndHaveNumbersOfTheirOwn) {
    Lines lines;
    int first = 0, second = 0;
    mClient.readFileByLine(first, EFileType::CommaSeparated, write("a.csv", "a\n"), lines.handler());
    mClient.readFileByLine(second, EFileType::Spreadsheet, write("b.xls", "b\tc\n"), lines.handler());
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 2);
    ASSERT_TRUE(QTest::qWaitFor([&] { return mEnds.size() == 2; }));
    EXPECT_EQ(mEnds[0], (QVariantList{1, true, QString()}));
    EXPECT_EQ(mEnds[1], (QVariantList{2, true, QString()}));
    EXPECT_EQ(lines.all(), (QStringList{"a", "b\tc"}));
}

TEST_F(FileClientTest, FileThatCannotBeReadEndsWithTheReason) {
    Lines lines;
    int seq = 0;
    const QString path = mFolder.filePath("none.csv");
    mClient.readFileByLine(seq, EFileType::CommaSeparated, path, lines.handler());
    ASSERT_TRUE(mEnds.wait());
    EXPECT_EQ(mEnds.takeFirst(), (QVariantList{1, false, path + ": cannot be read: there is no such file"}));
    EXPECT_TRUE(lines.all().isEmpty());
}

TEST_F(FileClientTest, StoppedInTheMiddleItTellsNothingAndReadsNoMore) {
    std::promise<void> begun;
    int taken = 0;
    int seq = 0;
    mClient.readFileByLine(seq, EFileType::CommaSeparated, write("a.csv", "a\nb\nc\n"), [&](const QString &) {
        if (++taken == 1) {
            begun.set_value();
        }
        while (!mClient.isStopping()) {
            std::this_thread::yield();
        }
        return 2;
    });
    Lines never;
    mClient.readFileByLine(seq, EFileType::CommaSeparated, write("b.csv", "b\n"), never.handler());
    begun.get_future().wait();
    mClient.stop();
    EXPECT_EQ(taken, 1);
    mClient.readFileByLine(seq, EFileType::CommaSeparated, write("c.csv", "c\n"), never.handler());
    EXPECT_EQ(seq, 3);
    QCoreApplication::processEvents();
    EXPECT_TRUE(never.all().isEmpty());
    EXPECT_TRUE(mEnds.isEmpty());
}

TEST_F(FileClientTest, HandlerIsLetGoWhenItsFileIsRead) {
    auto held = std::make_shared<int>(0);
    int seq = 0;
    mClient.readFileByLine(seq, EFileType::CommaSeparated, write("a.csv", "a\n"),
                           [held](const QString &) { return 2; });
    ASSERT_TRUE(mEnds.wait());
    EXPECT_TRUE(QTest::qWaitFor([&] { return held.use_count() == 1; }));
}
