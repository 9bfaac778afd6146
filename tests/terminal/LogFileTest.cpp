#include "terminal/app/LogFile.h"

#include "terminal/app/LogWatch.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

using namespace terminal;

namespace {

class LogFileTest : public ::testing::Test {
protected:
    ~LogFileTest() override { closeLogFile(); }
    QString path(const char *name) const { return mFolder.filePath(QString::fromLatin1(name)); }

    QTemporaryDir mFolder;
};

} // namespace

TEST_F(LogFileTest, AFileThatCanBeWrittenIsOpened) {
    EXPECT_EQ(openLogFile(path("new/folder/a.log")).toStdString(), "");
    EXPECT_TRUE(QFile::exists(path("new/folder/a.log")));
}

TEST_F(LogFileTest, ADeviceIsRefused) {
    ASSERT_EQ(symlink("/dev/full", path("a.log").toLocal8Bit().constData()), 0);
    EXPECT_TRUE(openLogFile(path("a.log")).contains("不是普通文件"));
}

TEST_F(LogFileTest, APipeThatNobodyReadsIsRefused) {
    ASSERT_EQ(mkfifo(path("a.log").toLocal8Bit().constData(), 0600), 0);
    EXPECT_TRUE(openLogFile(path("a.log")).contains("不是普通文件"));
}

TEST_F(LogFileTest, AFolderThatCannotBeMadeIsToldWithItsPath) {
    QFile file(path("in the way"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_TRUE(openLogFile(path("in the way/a.log")).contains(path("in the way/a.log")));
    EXPECT_FALSE(openLogFile(mFolder.path()).isEmpty()) << "a folder";
}

TEST(LogWatch, LostLinesAreToldOnce) {
    qint64 lost = 0;
    QList<FormulaError> told;
    LogWatch watch([&] { return lost; }, [&](const FormulaError &error) { told.append(error); });
    watch.look();
    EXPECT_TRUE(told.isEmpty());
    for (lost = 7; lost < 10; ++lost) {
        watch.look();
    }
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told[0].text.contains("7")) << qPrintable(told[0].text);
}
