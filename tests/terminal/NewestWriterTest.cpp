#include "terminal/config/NewestWriter.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <future>
#include <thread>
#include <vector>

using terminal::NewestWriter;

namespace {

class NewestWriterTest : public ::testing::Test {
protected:
    QString path() const { return mFolder.path() + "/sub/file"; }
    QByteArray content() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
    }

    QTemporaryDir mFolder;
};

} // namespace

TEST_F(NewestWriterTest, WhatWaitsIsWrittenBeforeItGoes) {
    {
        NewestWriter writer(path());
        writer.write("one");
        writer.write("two");
    }
    EXPECT_EQ(content(), "two");
    EXPECT_EQ(QDir(mFolder.path() + "/sub").entryList(QDir::Files), QStringList("file"));
}

TEST_F(NewestWriterTest, WithoutATextNothingIsWritten) {
    {
        NewestWriter writer(path());
        EXPECT_TRUE(writer.waitUntilWritten());
    }
    EXPECT_EQ(content(), "<missing>");
}

TEST_F(NewestWriterTest, AnOlderTextNeverComesAfterANewerOne) {
    constexpr int kTexts = 60;
    NewestWriter writer(path());
    int last = -1;
    for (int i = 0; i < kTexts; ++i) {
        writer.write(QByteArray::number(i));
        if (i % 20 == 19) {
            ASSERT_TRUE(writer.waitUntilWritten());
            EXPECT_EQ(content(), QByteArray::number(i));
        }
        bool isNumber = false;
        const int found = content().toInt(&isNumber);
        if (isNumber) {
            EXPECT_GE(found, last);
            last = found;
        }
    }
}

TEST_F(NewestWriterTest, WhatAnyThreadHasBroughtIsWrittenWhenItIsWaitedFor) {
    NewestWriter writer(path());
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&writer, i] {
            writer.write(QByteArray::number(i));
            writer.waitUntilWritten();
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    const QByteArray before = content();
    EXPECT_TRUE(before.size() == 1 && before >= "0" && before <= "3") << before.constData();
    writer.write("last");
    ASSERT_TRUE(writer.waitUntilWritten());
    EXPECT_EQ(content(), "last");
}

TEST_F(NewestWriterTest, WhatHasFailedIsToldOnceAndWrittenWhenItIsBroughtAgain) {
    QFile blocker(mFolder.path() + "/sub"); // a file where the folder should be
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    NewestWriter writer(path());
    writer.write("one");
    EXPECT_FALSE(writer.waitUntilWritten());
    EXPECT_FALSE(writer.waitUntilWritten()) << "it is not on the disk yet";
    EXPECT_EQ(writer.takeTroubles().size(), 1);
    EXPECT_TRUE(writer.takeTroubles().isEmpty());
    ASSERT_TRUE(blocker.remove());
    writer.write("one");
    EXPECT_TRUE(writer.waitUntilWritten());
    EXPECT_EQ(content(), "one");
}

TEST_F(NewestWriterTest, WhoBringsATextDoesNotWaitForTheDiskAndOnlyTheNewestOfThoseThatWaitIsWritten) {
    std::promise<void> begun;
    std::promise<void> disk;
    std::future<void> isReady = disk.get_future();
    QStringList written;
    NewestWriter writer(path(), [&](const QString &, const QByteArray &text) {
        if (written.isEmpty()) {
            begun.set_value();
            isReady.wait();
        }
        written.append(QString::fromLatin1(text));
        return QString();
    });
    writer.write("one");
    begun.get_future().wait();
    for (const char *text : {"two", "three", "four"}) {
        writer.write(text); // would never return if it waited
    }
    disk.set_value();
    EXPECT_TRUE(writer.waitUntilWritten());
    EXPECT_EQ(written, QStringList({"one", "four"}));
    writer.write("four");
    EXPECT_TRUE(writer.waitUntilWritten());
    EXPECT_EQ(written.size(), 2) << "it is there";
}

TEST_F(NewestWriterTest, WhatWaitsForTheDiskStandsBesideTheFileUntilItIsThere) {
    const auto waiting = [this] {
        QFile file(NewestWriter::waitingPath(path()));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
    };
    std::promise<void> disk;
    std::shared_future<void> isReady = disk.get_future().share();
    NewestWriter writer(path(), [&](const QString &path, const QByteArray &text) {
        isReady.wait();
        return NewestWriter::save(path, text);
    });
    writer.write("one");
    EXPECT_EQ(waiting(), "one");
    EXPECT_EQ(content(), "<missing>");
    writer.write("two");
    EXPECT_EQ(waiting(), "two");
    disk.set_value();
    ASSERT_TRUE(writer.waitUntilWritten());
    EXPECT_EQ(waiting(), "<missing>");
    EXPECT_EQ(content(), "two");
    EXPECT_EQ(QDir(mFolder.path() + "/sub").entryList(QDir::Files), QStringList("file"));
}

TEST_F(NewestWriterTest, WhatCannotBeWrittenGoesOnWaitingBesideTheFile) {
    ASSERT_TRUE(QDir().mkpath(path())); // a folder in place of the file
    NewestWriter writer(path());
    writer.write("one");
    EXPECT_FALSE(writer.waitUntilWritten());
    QFile waiting(NewestWriter::waitingPath(path()));
    ASSERT_TRUE(waiting.open(QIODevice::ReadOnly));
    EXPECT_EQ(waiting.readAll(), "one");
}
